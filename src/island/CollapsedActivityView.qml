// Its components are made elsewhere, which Qt 6.4 refuses to bound ones; so their use of the ids here goes unchecked.
// qmllint disable unqualified

import QtQuick
import Brindle.Ui
import Brindle.Island

// A brief event in the closed island: a level with its bar, or a title with its detail.
LevelReadout {
    id: root

    required property IslandPresenter island
    required property var activity

    Accessible.role: root.activity.hasProgress ? Accessible.ProgressBar : Accessible.StaticText
    label: root.activity.accessibleName
    hasLevel: root.activity.hasProgress
    level: root.activity.progress
    reading: root.activity.accessibleValue

    Loader {
        x: 11
        width: root.width - 22
        y: root.activity.hasProgress ? 0 : 3
        height: root.height - (root.activity.hasProgress ? 3 : 10)
        sourceComponent: root.activity.hasProgress ? levelRow : plainRow
    }

    Component {
        id: levelRow
        Item {
            id: row
            ChangingSymbol {
                id: symbol
                width: 16
                height: parent.height
                name: root.activity.symbol
                size: 10.5
                motion: root.island.collapsed.levelMotion
            }
            ChangingText {
                anchors.left: symbol.right
                anchors.leftMargin: 9
                width: Math.min(implicitWidth, row.width - 16 - 9 - 9 - 68 - 9 - 62)
                height: parent.height
                text: root.activity.title
                travel: 0
                motion: root.island.collapsed.mediaMotion
            }
            FluidSystemLevel {
                x: parent.width - width
                y: Math.round((parent.height - height) / 2)
                width: 62
                height: 12
                value: root.activity.progress
                motion: root.island.collapsed.levelMotion
                reducesMotion: root.island.reducesMotion
                clock: root.island.clock
            }
        }
    }
    Component {
        id: plainRow
        Item {
            id: plain
            Column {
                id: words
                y: Math.round((parent.height - height) / 2)
                width: plain.width - 20 - 10 - 28 - 10
                spacing: 1

                Label {
                    text: root.activity.title
                    width: Math.min(implicitWidth, parent.width)
                }
                Label {
                    visible: text !== ""
                    text: root.activity.detail
                    size: 9.5
                    weight: Font.Medium
                    color: Theme.secondary
                    width: Math.min(implicitWidth, parent.width)
                }
            }
            Symbol {
                x: parent.width - width
                y: Math.round((parent.height - height) / 2)
                width: 20
                height: 22
                name: root.activity.symbol
                size: 13
            }
        }
    }
}
