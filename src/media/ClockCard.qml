import QtQuick
import Brindle.Ui
import Brindle.Media

// The time of day and the day of the week.
Item {
    id: root

    required property MediaPresenter media
    required property Clock clock
    // Whether it can be seen; otherwise nothing ticks.
    required property bool isShown

    readonly property cardLayout look: root.media.cardLayout(Qt.size(root.width, root.height))

    Accessible.role: Accessible.StaticText
    Accessible.name: day.text + " " + time.text

    Timeline {
        id: timeline
        clock: root.clock
        interval: 1
        isRunning: root.isShown && root.visible
    }

    UtilityCardBackground {
        anchors.fill: parent
        style: root.media.cardStyle
    }
    Symbol {
        id: symbol
        name: "clock.fill"
        size: Math.round(root.look.valueSize * (root.look.isBlock ? 0.62 : 0.94))
        colour: Theme.secondary
        x: root.look.isBlock ? Math.round((root.width - width) / 2) : root.look.isLine ? 10 : 13
        y: root.look.isBlock ? texts.y - height - Math.round(root.look.valueSize * 0.3) : Math.round((root.height - height) / 2)
    }
    Item {
        id: texts

        readonly property real leading: root.look.isBlock ? 0 : symbol.x + symbol.width + (root.look.isLine ? 7 : 10)

        x: root.look.isBlock ? 10 : leading
        y: Math.round((root.height - height + (root.look.isBlock ? symbol.height + root.look.valueSize * 0.3 : 0)) / 2)
        width: root.look.isBlock ? root.width - 20 : root.width - leading - 10
        height: root.look.isLine ? time.height : time.height + day.height

        Label {
            id: time
            text: root.media.hourAndMinute(timeline.seconds)
            size: root.look.valueSize
            width: root.look.isLine ? Math.min(implicitWidth, parent.width) : parent.width
            horizontalAlignment: root.look.isBlock ? Text.AlignHCenter : Text.AlignLeft
        }
        Label {
            id: day
            x: root.look.isLine ? time.width + 7 : 0
            y: root.look.isLine ? Math.round((time.height - height) / 2) : time.height
            text: root.media.weekday(timeline.seconds)
            size: Math.max(9.5, Math.round(root.look.valueSize * 0.42))
            weight: Font.Medium
            color: Theme.secondary
            width: parent.width - x
            horizontalAlignment: root.look.isBlock ? Text.AlignHCenter : Text.AlignLeft
        }
    }
}
