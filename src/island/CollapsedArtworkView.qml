import QtQuick
import Brindle.Ui

// The picture of what plays, or a note in its place.
Item {
    id: root

    required property var track

    Rectangle {
        anchors.fill: parent
        visible: !picture.hasPicture
        radius: 6
        color: Theme.white(0.08)

        Symbol {
            anchors.fill: parent
            name: "music.note"
            size: 9
            colour: Theme.secondary
        }
    }
    RoundedPicture {
        id: picture
        anchors.fill: parent
        radius: 6
        picture: root.track.picture // qmllint disable type
    }
}
