pragma ComponentBehavior: Bound

import QtQuick
import Brindle.Ui
import Brindle.Media

// What plays. Each song is a view of its own, which comes and goes.
Item {
    id: root

    required property MediaPresenter media
    required property Clock clock
    // Whether it can be seen; otherwise nothing ticks.
    required property bool isShown
    property bool isScrubbing: false

    Stage {
        id: songs
        subject: root.media.player
    }
    Repeater {
        model: songs
        delegate: StageActor {
            id: song

            readonly property var look: root.media.appearance(song.progress)

            stage: songs
            motion: root.media.trackMotion
            enabled: song.isPresent
            width: root.width
            height: root.height
            x: song.look.xOffset
            opacity: song.look.opacity
            scale: song.look.scale

            BlurrableItem {
                anchors.fill: parent
                blurRadius: song.look.blurRadius

                Loader {
                    anchors.fill: parent
                    Component.onCompleted: {
                        if (song.content)
                            setSource("TrackView.qml", { "song": song, "player": root });
                        else
                            setSource("NothingPlaying.qml");
                    }
                }
            }
        }
    }
}
