// Its components are made elsewhere, which Qt 6.4 refuses to bound ones; so their use of the ids here goes unchecked.
// qmllint disable unqualified

import QtQuick
import Brindle.Ui
import Brindle.Media

// What plays, and small cards of everyday information beside it. Each block can be off.
Item {
    id: root

    required property MediaPresenter media
    required property Clock clock
    // Whether it can be seen and worked; otherwise nothing ticks.
    required property bool isShown
    property bool showPlayer: true
    property bool showClock: true
    property bool showWeather: false

    readonly property mediaLayout blocks: root.media.layout(Qt.size(root.width, root.height), root.showPlayer, root.showClock, root.showWeather)
    readonly property bool isInUse: root.isShown && (hover.hovered || player.isScrubbing)

    // A hand is on it, or has left it.
    signal interactionChanged(bool isInteracting)

    onIsInUseChanged: root.interactionChanged(root.isInUse)
    Component.onDestruction: {
        if (root.isInUse)
            root.interactionChanged(false);
    }

    Rectangle {
        anchors.fill: parent
        visible: root.showPlayer || root.showClock || root.showWeather
        radius: 22
        color: Theme.white(0.055)
    }

    Loader {
        id: player

        readonly property bool isScrubbing: item !== null && (item as PlayerView).isScrubbing

        active: root.showPlayer
        x: root.blocks.player.x
        y: root.blocks.player.y
        width: root.blocks.player.width
        height: root.blocks.player.height

        sourceComponent: PlayerView {
            media: root.media
            clock: root.clock
            isShown: root.isShown
        }
    }

    Stage {
        id: cards
        subject: root.media.cards(root.blocks)
    }
    Repeater {
        model: cards
        delegate: StageActor {
            id: stack

            // As it was last, when it is on its way out.
            readonly property var place: stack.content
            readonly property real away: 24 * (1 - stack.progress)

            stage: cards
            motion: root.media.blockMotion
            x: stack.place.clock.x + (stack.place.hasCardsBeside ? stack.away : 0)
            y: stack.place.clock.y + (stack.place.hasCardsBeside ? 0 : stack.away)
            width: stack.place.clock.width
            height: stack.place.clock.height

            ClockCard {
                anchors.fill: parent
                media: root.media
                clock: root.clock
                isShown: root.isShown && stack.isPresent
            }
        }
    }

    HoverHandler {
        id: hover
    }
}
