pragma ComponentBehavior: Bound

import QtQuick
import Brindle.Ui
import Brindle.Island

// The open island: the sidebar, the selected tab beside it, and the status bar above both.
Item {
    id: root

    required property IslandPresenter island

    // A tab tells when a hand is on it and when it has left.
    function interactionChanged(isInteracting: bool) {
        if (isInteracting)
            root.island.viewModel.beginInteraction();
        else
            root.island.viewModel.endInteraction();
    }

    SidebarNavigation {
        id: sidebar
        island: root.island
        x: 10
        y: 42
        width: 54
        height: root.island.expanded.height
        z: 1 // its help lies over the tab
        positionInPanel: Qt.point(Math.round((940 - root.width) / 2) + x, y)
    }

    Stage {
        id: tabs
        subject: root.island.expanded.tab
    }
    Repeater {
        model: tabs
        delegate: StageActor {
            id: tab
            stage: tabs
            motion: root.island.expanded.tabMotion
            enterScale: 0.985
            leaveScale: 1.01
            transformOrigin: tab.isPresent ? Item.Left : Item.Right
            x: 10 + 54
            y: 42
            width: root.width - 2 * 10 - 54
            height: root.island.expanded.height

            Loader {
                id: view

                anchors.fill: parent
                Component.onCompleted: setSource(root.island.expanded.viewOf(tab.content), {
                    "expandedView": root,
                    "isPresent": Qt.binding(() => tab.isPresent)
                })
            }
        }
    }

    ExpandedStatusBar {
        island: root.island
        x: 78
        width: root.width - 78 - 26
        height: 42
    }
}
