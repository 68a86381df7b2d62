pragma ComponentBehavior: Bound

import QtQuick
import Brindle.Ui

// A symbol whose changes are seen: the old one shrinks away while the new one grows into its place.
Item {
    id: root

    property alias name: cast.key
    property motion motion
    property real size: 12
    property color colour: Theme.primary

    implicitWidth: extent.implicitWidth
    implicitHeight: extent.implicitHeight

    Symbol {
        id: extent
        visible: false
        size: root.size
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
            enterScale: 0.6
            anchors.fill: parent

            Symbol {
                anchors.fill: parent
                name: actor.content
                size: root.size
                colour: root.colour
            }
        }
    }
}
