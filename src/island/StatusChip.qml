// Its components are made elsewhere, which Qt 6.4 refuses to bound ones; so their use of the ids here goes unchecked.
// qmllint disable unqualified

import QtQuick
import Brindle.Ui
import Brindle.Island

// The current event, small, in the open island's status bar.
LevelReadout {
    id: root

    required property IslandPresenter island
    required property var activity

    Accessible.role: root.activity.hasProgress ? Accessible.ProgressBar : Accessible.StaticText
    label: root.activity.accessibleName
    hasLevel: root.activity.hasProgress
    level: root.activity.progress
    reading: root.activity.accessibleValue

    Row {
        height: parent.height
        spacing: 7

        ChangingSymbol {
            height: parent.height
            width: implicitWidth
            name: root.activity.symbol
            size: 11
            motion: root.island.statusBar.activityMotion
        }
        Label {
            text: root.activity.title
            size: 11
            height: parent.height
            width: Math.min(implicitWidth, root.width * 0.6)
        }
        Label {
            visible: text !== ""
            text: root.activity.detail
            size: 11
            weight: Font.Medium
            color: Theme.secondary
            height: parent.height
            width: Math.min(implicitWidth, root.width * 0.3)
        }
        Loader {
            active: root.activity.hasProgress
            visible: active
            width: active ? 46 : 0
            height: 8
            y: Math.round((parent.height - height) / 2)

            sourceComponent: FluidSystemLevel {
                id: level
                value: root.activity.progress
                motion: root.island.collapsed.levelMotion
                reducesMotion: root.island.reducesMotion
                clock: root.island.clock
                opacity: Math.min(1, entrance.value)
                scale: 0.9 + 0.1 * entrance.value

                Animated {
                    id: entrance
                    from: 0
                    to: 1
                    motion: root.island.statusBar.activityMotion
                }
            }
        }
    }
}
