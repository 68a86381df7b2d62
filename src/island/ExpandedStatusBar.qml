// Its components are made elsewhere, which Qt 6.4 refuses to bound ones; so their use of the ids here goes unchecked.
// qmllint disable unqualified

import QtQuick
import Brindle.Ui
import Brindle.Island

// The line along the top of the open island: the current event or the time, and the battery.
Item {
    id: root

    required property IslandPresenter island
    readonly property StatusBar bar: root.island.statusBar

    Stage {
        id: cast
        subject: root.bar.leading
    }
    Repeater {
        model: cast
        delegate: StageActor {
            id: leading
            stage: cast
            motion: root.bar.activityMotion
            enterScale: leading.content ? 0.94 : 1
            transformOrigin: Item.Left
            y: leading.content ? Math.round(-14 * (1 - leading.progress)) : 0
            width: root.width - battery.width - 10 - 12 - 10
            height: root.height

            Loader {
                anchors.fill: parent
                sourceComponent: leading.content ? chip : time

                Component {
                    id: chip
                    StatusChip {
                        island: root.island
                        activity: leading.content
                    }
                }
                Component {
                    id: time
                    Item {
                        Accessible.role: Accessible.StaticText
                        Accessible.name: clockText.text

                        Timeline {
                            id: timeline
                            clock: root.island.clock
                            interval: 60
                        }
                        ChangingText {
                            id: clockText
                            height: parent.height
                            width: implicitWidth
                            text: root.bar.clockText(timeline.seconds)
                            size: 10.5
                            motion: root.bar.batteryMotion
                        }
                    }
                }
            }
        }
    }

    Item {
        id: battery
        width: symbol.x + symbol.width
        height: root.height
        x: root.width - width

        Accessible.role: Accessible.StaticText
        Accessible.name: root.bar.batteryName

        Animated {
            id: plug
            to: root.bar.isACConnected ? 1 : 0
            motion: root.bar.batteryMotion
        }
        Symbol {
            id: bolt
            y: Math.round((parent.height - height) / 2)
            x: Math.round((1 - plug.value) * (width + 7))
            visible: opacity > 0
            opacity: Math.max(0, Math.min(1, plug.value))
            scale: 0.6 + 0.4 * plug.value
            name: "bolt.fill"
            size: 11
        }
        ChangingText {
            id: percentage
            x: bolt.width + 7
            width: implicitWidth
            height: parent.height
            text: root.bar.batteryText
            size: 11
            motion: root.bar.batteryMotion
        }
        Symbol {
            id: symbol
            x: percentage.x + percentage.width + 7
            y: Math.round((parent.height - height) / 2)
            name: root.bar.batterySymbol
            size: 15
            colour: root.bar.isACConnected ? Theme.charging : Theme.primary
            glow: root.bar.isCharging ? Qt.rgba(Theme.charging.r, Theme.charging.g, Theme.charging.b, 0.24) : "transparent"
            glowRadius: 7
        }
    }
}
