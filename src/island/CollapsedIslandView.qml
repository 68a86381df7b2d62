// Its components are made elsewhere, which Qt 6.4 refuses to bound ones; so their use of the ids here goes unchecked.
// qmllint disable unqualified

import QtQuick
import Brindle.Ui
import Brindle.Island

// The closed island: the current event, else what plays, else the idle row.
Item {
    id: root

    required property IslandPresenter island

    Stage {
        id: cast
        subject: root.island.collapsed.subject
    }
    Repeater {
        model: cast
        delegate: StageActor {
            id: actor
            stage: cast
            motion: root.island.surface.activityMotion
            enterScale: 0.96
            leaveScale: actor.content ? 0.98 : 0.96
            x: 4
            width: root.width - 8
            height: root.height

            Loader {
                anchors.fill: parent
                sourceComponent: actor.content ? activityView : restingView

                Component {
                    id: activityView
                    CollapsedActivityView {
                        island: root.island
                        activity: actor.content
                    }
                }
                Component {
                    id: restingView
                    CollapsedRestingView {
                        island: root.island
                    }
                }
            }
        }
    }
}
