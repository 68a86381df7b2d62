import QtQuick
import Brindle.Ui
import Brindle.Media

// One song: its picture, what it is, where it is, and the transport controls.
Item {
    id: root

    required property StageActor song
    required property PlayerView player
    readonly property MediaPresenter media: root.player.media
    readonly property var track: root.song.content
    readonly property playerLayout look: root.media.playerLayout(Qt.size(root.width, root.height))

    // The song's own scrub; a song on its way out is in nobody's hand.
    Binding {
        target: root.player
        property: "isScrubbing"
        value: position.isScrubbing
        when: root.song.isPresent
        restoreMode: Binding.RestoreNone
    }

    ArtworkView {
        x: root.look.artwork.x
        y: root.look.artwork.y
        width: root.look.artwork.width
        height: root.look.artwork.height
        track: root.track
        motion: root.media.artworkMotion
    }

    Item {
        x: root.look.column.x
        y: root.look.column.y
        width: root.look.column.width
        height: root.look.column.height

        Column {
            width: parent.width

            Accessible.role: Accessible.StaticText
            Accessible.name: root.track.readOut
            Accessible.description: root.track.status

            Label {
                text: root.track.title
                size: 21
                weight: Font.Bold
                width: Math.min(implicitWidth, parent.width)
            }
            Label {
                visible: root.look.showsArtist
                text: root.track.artist
                size: 11
                weight: Font.Medium
                color: Theme.white(0.72)
                width: Math.min(implicitWidth, parent.width)
            }
            Item {
                visible: root.look.showsStatus
                width: parent.width
                height: 22

                RoundedPicture {
                    id: icon
                    visible: hasPicture
                    width: 13
                    height: 13
                    y: Math.round((parent.height - height) / 2) + 1
                    radius: 3
                    picture: root.track.sourceIcon // qmllint disable type
                }
                ChangingText {
                    x: icon.visible ? icon.width + 6 : 0
                    y: 1
                    width: Math.min(implicitWidth, parent.width - x)
                    height: parent.height
                    text: root.track.status
                    size: 9.5
                    weight: Font.Medium
                    color: Theme.secondary
                    travel: 0
                    motion: root.media.playbackMotion
                }
            }
        }

        ScrubBar {
            id: position
            width: parent.width
            y: controls.y - height - 4
            track: root.track
            media: root.media
            clock: root.player.clock
            isShown: root.player.isShown && root.song.isPresent
        }

        Row {
            id: controls
            anchors.horizontalCenter: parent.horizontalCenter
            y: parent.height - height
            height: 42
            spacing: 16

            MediaControlButtonStyle {
                anchors.verticalCenter: parent.verticalCenter
                width: 36
                height: 36
                media: root.media
                label: "Previous"
                symbol: "backward.fill"
                onTriggered: root.media.previousTrack()
            }
            MediaControlButtonStyle {
                width: 42
                height: 42
                media: root.media
                label: root.track.isPlaying ? "Pause" : "Play"
                symbol: root.track.isPlaying ? "pause.fill" : "play.fill"
                size: 27
                onTriggered: root.media.togglePlayback()
            }
            MediaControlButtonStyle {
                anchors.verticalCenter: parent.verticalCenter
                width: 36
                height: 36
                media: root.media
                label: "Next"
                symbol: "forward.fill"
                onTriggered: root.media.nextTrack()
            }
        }
    }
}
