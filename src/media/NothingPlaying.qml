import QtQuick
import Brindle.Ui

// The player without a song.
Item {
    id: root

    Accessible.role: Accessible.StaticText
    Accessible.name: title.text
    Accessible.description: hint.text

    Column {
        anchors.centerIn: parent
        width: parent.width
        spacing: 5

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "waveform"
            size: 26
            colour: Theme.white(0.4)
        }
        Label {
            id: title
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: "Nothing playing"
            size: 17
        }
        Label {
            id: hint
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: "Start playback in Music, Spotify, a browser, or another media app."
            size: 11
            weight: Font.Medium
            color: Theme.secondary
            maximumLineCount: 2
            wrapMode: Text.WordWrap
        }
    }
}
