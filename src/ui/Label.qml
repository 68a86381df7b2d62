import QtQuick
import Brindle.Ui

// Plain text in the interface font; `size` in points.
Text {
    property real size: 11.5
    property int weight: Font.DemiBold

    color: Theme.primary
    font: Theme.font(size, weight)
    textFormat: Text.PlainText
    maximumLineCount: 1
    elide: Text.ElideRight
    verticalAlignment: Text.AlignVCenter
    Accessible.ignored: true
}
