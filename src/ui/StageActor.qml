import QtQuick
import Brindle.Ui

// One row of a Stage: comes in and goes out by opacity and scale, and takes its leave when it has gone from sight.
Item {
    id: root

    required property Stage stage
    required property var content
    required property bool isPresent
    required property int serial
    required property bool makesEntrance

    property alias motion: presence.motion
    // From 0 (gone) to 1 (there); a spring may go a little beyond.
    readonly property alias progress: presence.value
    property real enterScale: 1
    property real leaveScale: root.enterScale

    opacity: Math.max(0, Math.min(1, root.progress))
    scale: 1 - (1 - (root.isPresent ? root.enterScale : root.leaveScale)) * (1 - root.progress)

    Animated {
        id: presence
        from: root.makesEntrance ? 0 : 1
        to: root.isPresent ? 1 : 0
        onSettled: {
            if (!root.isPresent)
                root.stage.leave(root.serial);
        }
    }
}
