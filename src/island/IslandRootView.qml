pragma ComponentBehavior: Bound

import QtQuick
import Brindle.Ui
import Brindle.Island

// The whole panel: the black shape at its top centre, and within it the closed or the open island.
Item {
    id: root

    required property IslandPresenter island
    readonly property IslandSurface surface: root.island.surface

    NotchShapeItem {
        id: shape
        anchors.fill: parent
        surface: root.surface

        Accessible.role: root.surface.isExpanded ? Accessible.Pane : Accessible.Button
        Accessible.name: "Velmora"
        Accessible.description: root.surface.isExpanded ? "" : "Opens the island"
        Accessible.onPressAction: root.island.tapped()

        TapHandler {
            gesturePolicy: TapHandler.ReleaseWithinBounds
            onTapped: root.island.tapped()
        }
    }

    // Keeps content within the body; the corners lie in the content's own margins.
    Item {
        id: body
        width: Math.round(root.surface.width - 2 * root.surface.shoulder)
        height: Math.round(root.surface.height)
        x: Math.round((root.width - width) / 2)
        clip: true

        Stage {
            id: cast
            subject: root.surface.subject
        }
        Repeater {
            model: cast
            delegate: IslandContent {
                island: root.island
                stage: cast
            }
        }
    }

    IslandFileDropDelegate {
        anchors.fill: parent
        island: root.island
    }
}
