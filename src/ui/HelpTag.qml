import QtQuick
import Brindle.Ui

// A few words on what the pointer rests on.
Rectangle {
    id: root

    property alias text: label.text
    property alias clock: rest.clock
    property alias isPointed: rest.isPointed
    property motion motion

    // What it explains was used.
    function dismiss() {
        rest.dismiss();
    }

    width: Math.ceil(label.implicitWidth) + 16
    height: 22
    radius: 7
    color: Theme.helpGround
    border.color: Theme.white(0.12)
    visible: opacity > 0
    opacity: Math.max(0, Math.min(1, presence.value))

    PointerRest {
        id: rest
    }
    Animated {
        id: presence
        to: rest.hasRested ? 1 : 0
        motion: root.motion
    }
    Label {
        id: label
        anchors.centerIn: parent
        size: 10.5
        weight: Font.Medium
    }
}
