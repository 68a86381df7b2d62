import QtQuick
import Brindle.Island
import Brindle.Media

// The media tab.
Item {
    id: root

    required property ExpandedIslandView expandedView
    required property bool isPresent
    readonly property IslandPresenter island: root.expandedView.island

    MediaView {
        anchors.fill: parent
        media: root.island.media
        clock: root.island.clock
        isShown: root.isPresent && root.island.surface.isExpanded
        showPlayer: root.island.media.showPlayer
        showClock: root.island.media.showClock
        onInteractionChanged: isInteracting => root.expandedView.interactionChanged(isInteracting)
    }
}
