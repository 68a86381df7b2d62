import QtQuick
import Brindle.Ui
import Brindle.Island

// Bars that move with the sound's level, or a mark for a pause.
Item {
    id: root

    required property bool isPlaying
    required property real volume
    required property bool reducesMotion
    required property Clock clock

    Accessible.role: Accessible.Indicator
    Accessible.name: root.isPlaying ? "Audio playing" : "Audio paused"

    AudioBars {
        id: bars
        anchors.fill: parent
        visible: root.isPlaying
        volume: root.volume
        seconds: root.reducesMotion ? 0 : timeline.seconds
    }
    Symbol {
        anchors.fill: parent
        visible: !root.isPlaying
        name: "pause.fill"
        size: 10.5
        colour: Theme.secondary
    }
    Timeline {
        id: timeline
        clock: root.clock
        interval: bars.interval
        isRunning: root.isPlaying && !root.reducesMotion
    }
}
