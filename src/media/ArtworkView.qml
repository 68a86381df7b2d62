import QtQuick
import Brindle.Ui

// The picture of a song, or a note in its place. A picture that arrives late fades in.
Item {
    id: root

    required property var track
    required property motion motion

    Rectangle {
        anchors.fill: parent
        visible: presence.value < 1
        radius: 18
        color: Theme.white(0.07)

        Symbol {
            anchors.fill: parent
            name: "music.note"
            size: 38
            colour: Theme.white(0.4)
        }
    }
    RoundedPicture {
        id: picture
        anchors.fill: parent
        radius: 18
        isContinuous: true
        picture: root.track.artwork // qmllint disable type
        opacity: presence.value
    }
    Animated {
        id: presence
        to: picture.hasPicture ? 1 : 0
        motion: root.motion
    }
}
