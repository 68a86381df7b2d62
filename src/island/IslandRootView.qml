pragma ComponentBehavior: Bound

import QtQuick
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

        onTapped: root.island.tapped()
    }

    IslandBody {
        anchors.fill: parent
        island: root.island
    }

    IslandFileDropDelegate {
        anchors.fill: parent
        island: root.island
    }
}
