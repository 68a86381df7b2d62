import QtQuick
import Brindle.Ui

// The ground of a small card.
Rectangle {
    id: root

    required property buttonStyle style
    property bool isPressed: false
    property bool isHovered: false

    radius: 13
    color: Theme.white(fill.value)

    Animated {
        id: fill
        to: root.style.fill(root.isPressed, root.isHovered)
        motion: root.style.fillMotion
    }
}
