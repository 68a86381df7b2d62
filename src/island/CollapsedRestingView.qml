// Its components are made elsewhere, which Qt 6.4 refuses to bound ones; so their use of the ids here goes unchecked.
// qmllint disable unqualified

import QtQuick
import Brindle.Ui
import Brindle.Island

// The closed island without an event: what plays, or the idle row.
Item {
    id: root

    required property IslandPresenter island

    Stage {
        id: cast
        subject: root.island.collapsed.row
    }
    Repeater {
        model: cast
        delegate: StageActor {
            id: actor
            stage: cast
            motion: root.island.collapsed.mediaMotion
            x: 11
            width: root.width - 22
            height: root.height - 3

            Loader {
                anchors.fill: parent
                sourceComponent: actor.content ? mediaRow : idleRow
            }
            Component {
                id: mediaRow
                Item {
                    Accessible.role: Accessible.StaticText
                    Accessible.name: actor.content.title

                    Stage {
                        id: songs
                        subject: root.island.collapsed.artwork
                    }
                    Repeater {
                        model: songs
                        delegate: StageActor {
                            id: song
                            stage: songs
                            motion: root.island.collapsed.mediaMotion
                            enterScale: 0.82
                            width: 21
                            height: 21
                            y: Math.round((parent.height - height) / 2)

                            CollapsedArtworkView {
                                anchors.fill: parent
                                track: song.content
                            }
                        }
                    }
                    CollapsedAudioWaveform {
                        width: 19
                        height: 20
                        x: parent.width - width
                        y: Math.round((parent.height - height) / 2)
                        isPlaying: actor.content.isPlaying
                        volume: root.island.collapsed.outputVolume
                        reducesMotion: root.island.reducesMotion
                        clock: root.island.clock
                    }
                }
            }
            Component {
                id: idleRow
                Item {
                    Accessible.role: Accessible.StaticText
                    Accessible.name: root.island.collapsed.idleText

                    Row {
                        x: Math.round((parent.width - width) / 2)
                        height: parent.height
                        spacing: 10

                        Symbol {
                            name: root.island.collapsed.idleSymbol
                            size: 11
                            y: Math.round((parent.height - height) / 2)
                        }
                        Label {
                            text: root.island.collapsed.idleText
                            height: parent.height
                        }
                    }
                }
            }
        }
    }
}
