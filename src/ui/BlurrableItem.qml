// The effect is made elsewhere, which Qt 6.4 refuses to bound components; so its use of the id goes unchecked.
// qmllint disable unqualified

import QtQuick
import Brindle.Ui

// An item that can be blurred, where shaders draw. Elsewhere it stays sharp: opacity and scale have to do.
Item {
    id: root

    // Points.
    property real blurRadius: 0

    layer.enabled: root.blurRadius > 0.05 && GraphicsInfo.api !== GraphicsInfo.Software
        && GraphicsInfo.api !== GraphicsInfo.Unknown
    layer.effect: SoftBlur {
        radius: root.blurRadius
    }
}
