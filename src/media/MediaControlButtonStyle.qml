import QtQuick
import Brindle.Ui
import Brindle.Media

// A transport control: a symbol on a round ground, which answers the pointer by growing a little.
PlainButton {
    id: root

    required property MediaPresenter media
    required property string symbol
    property real size: 17
    readonly property bool isHovered: hover.hovered
    readonly property buttonStyle style: root.media.controlStyle

    pressedOpacity: 1
    ringRadius: width / 2

    Item {
        anchors.fill: parent
        scale: growth.value

        Rectangle {
            anchors.fill: parent
            radius: width / 2
            color: Theme.white(fill.value)
        }
        ChangingSymbol {
            anchors.fill: parent
            name: root.symbol
            size: root.size
            motion: root.media.playbackMotion
        }
    }
    Animated {
        id: growth
        to: root.style.scale(root.isPressed, root.isHovered)
        motion: root.style.motion
    }
    Animated {
        id: fill
        to: root.style.fill(root.isPressed, root.isHovered)
        motion: root.style.fillMotion
    }
    HoverHandler {
        id: hover
    }
}
