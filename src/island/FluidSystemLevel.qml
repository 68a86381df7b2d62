import QtQuick
import Brindle.Ui
import Brindle.Island

// A level bar whose head is alive. What it says is said by the row that it stands in.
Item {
    id: root

    required property real value
    required property motion motion
    required property bool reducesMotion
    required property Clock clock

    Accessible.ignored: true

    Animated {
        id: level
        to: root.value
        motion: root.motion
    }
    Timeline {
        id: timeline
        clock: root.clock
        interval: bar.interval
        isRunning: !root.reducesMotion
    }
    FluidLevelBar {
        id: bar
        anchors.fill: parent
        anchors.margins: -margin
        value: level.value
        seconds: timeline.seconds
        isLive: !root.reducesMotion
    }
}
