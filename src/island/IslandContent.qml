import QtQuick
import Brindle.Ui
import Brindle.Island

// The closed island's content or the open island's, on its way in or out. The open one is built when it is needed.
BlurrableItem {
    id: root

    required property IslandPresenter island
    required property Stage stage
    required property bool content
    required property bool isPresent
    required property int serial
    required property bool makesEntrance

    readonly property bool isOpen: root.content
    readonly property var look: root.island.surface.appearance(presence.value)

    width: root.isOpen ? root.island.surface.expandedContentWidth : root.island.surface.collapsedContentWidth
    height: root.isOpen ? 300 : root.island.surface.collapsedHeight
    x: Math.round((root.parent.width - width) / 2)
    y: root.look.verticalOffset
    opacity: root.look.opacity
    scale: root.look.scale
    transformOrigin: Item.Top
    blurRadius: root.look.blurRadius

    Animated {
        id: presence
        from: root.makesEntrance ? 0 : 1
        to: root.isPresent ? 1 : 0
        motion: root.isOpen ? root.island.surface.openMotion : root.island.surface.revealMotion
        fallingMotion: root.island.surface.openMotion
        onSettled: {
            if (!root.isPresent)
                root.stage.leave(root.serial);
        }
    }

    Loader {
        anchors.fill: parent
        Component.onCompleted: setSource(root.isOpen ? "ExpandedIslandView.qml" : "CollapsedIslandView.qml", {
            "island": root.island
        })
    }
}
