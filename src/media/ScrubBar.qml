import QtQuick
import Brindle.Ui
import Brindle.Media

// Where the song is, and the slider that takes it elsewhere.
Item {
    id: root

    required property var track
    required property MediaPresenter media
    required property Clock clock
    // Whether it can be seen; otherwise nothing ticks.
    required property bool isShown
    readonly property alias isScrubbing: scrubber.isScrubbing

    implicitHeight: 18

    Timeline {
        id: timeline
        clock: root.clock
        interval: 0.25
        isRunning: root.isShown && root.visible && root.track.isPlaying
    }
    Scrubber {
        id: scrubber
        elapsed: root.track.elapsedAt(timeline.seconds)
        onSeekWanted: seconds => root.media.seek(seconds)
    }

    Label {
        id: widest
        visible: false
        text: root.track.widestLabel(scrubber.shown, elapsed.font)
        size: elapsed.size
        weight: elapsed.weight
    }
    Label {
        id: elapsed
        text: root.media.timeLabel(scrubber.shown)
        size: 9.5
        weight: Font.Medium
        color: Theme.secondary
        width: Math.ceil(widest.implicitWidth)
        height: parent.height
    }
    Label {
        text: root.track.durationLabel
        size: elapsed.size
        weight: elapsed.weight
        color: Theme.secondary
        width: elapsed.width
        height: parent.height
        x: parent.width - width
        horizontalAlignment: Text.AlignRight
    }

    SliderControl {
        id: slider
        x: elapsed.width + 8
        width: parent.width - 2 * x
        height: parent.height
        position: scrubber.shown
        maximumValue: root.track.duration
        stepSize: 5
        inset: 6
        activeFocusOnTab: slider.isMovable

        Accessible.role: slider.isMovable ? Accessible.Slider : Accessible.StaticText
        Accessible.name: "Position"
        Accessible.description: root.track.positionReadOut(scrubber.shown)
        Accessible.focusable: slider.isMovable
        Accessible.onIncreaseAction: slider.step(1)
        Accessible.onDecreaseAction: slider.step(-1)

        onEditingStarted: scrubber.begin()
        onEdited: value => scrubber.move(value)
        onEditingEnded: scrubber.end()
        onEditingCancelled: scrubber.cancel()

        FocusRing {
            anchors.fill: parent
            anchors.leftMargin: -3
            anchors.rightMargin: -3
            radius: height / 2
            visible: slider.activeFocus
        }
        SliderTrack {
            anchors.fill: parent
            inset: slider.inset
            fraction: slider.isMovable ? scrubber.shown / slider.maximumValue : 0
            thumbRadius: slider.isMovable ? thumb.value : 0
        }
        Animated {
            id: thumb
            to: slider.isEditing || hover.hovered ? 6 : 4.5
            motion: root.media.controlStyle.motion
        }
        HoverHandler {
            id: hover
            enabled: slider.isMovable
        }
    }
}
