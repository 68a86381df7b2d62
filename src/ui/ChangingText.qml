pragma ComponentBehavior: Bound

import QtQuick
import Brindle.Ui

// A short text whose changes are seen: the old one rises and fades, the new one comes from below.
Item {
    id: root

    property alias text: cast.key
    property motion motion
    property real size: 11.5
    property int weight: Font.DemiBold
    property color color: Theme.primary
    property real travel: 5

    implicitWidth: measure.implicitWidth
    implicitHeight: measure.implicitHeight

    Label {
        id: measure
        visible: false
        text: root.text
        size: root.size
        weight: root.weight
    }
    Stage {
        id: cast
    }
    Repeater {
        model: cast
        delegate: StageActor {
            id: actor
            stage: cast
            motion: root.motion
            width: root.width
            height: root.height
            y: Math.round((isPresent ? 1 : -1) * (1 - progress) * root.travel)

            Label {
                text: actor.content
                size: root.size
                weight: root.weight
                color: root.color
                height: parent.height
                width: Math.min(implicitWidth, root.width)
            }
        }
    }
}
