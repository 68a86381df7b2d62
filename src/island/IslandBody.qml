pragma ComponentBehavior: Bound

import QtQuick
import Brindle.Ui
import Brindle.Island

// What stands in the black shape: the closed or the open island.
Item {
    id: root

    required property IslandPresenter island
    readonly property IslandSurface surface: root.island.surface

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
}
