pragma ComponentBehavior: Bound

import QtQuick
import Brindle.Ui
import Brindle.Island

// The strip of tabs at the left of the open island, with the way to the settings below.
Item {
    id: root

    required property IslandPresenter island
    property point positionInPanel

    property motion atOnce
    readonly property int pitch: 34 + 10
    readonly property var tabs: rules.tabs
    readonly property int selectedIndex: tabs.findIndex(entry => entry.tab === root.island.selectedTab)

    SidebarRules {
        id: rules
        viewModel: root.island.viewModel
        bounds: Qt.rect(root.positionInPanel.x, root.positionInPanel.y, root.width, root.height)
        // The highlight is under the fingers until they let go; then it swings back.
        onScrollFeedbackChanged: {
            feedback.motion = rules.scrollFeedback === 0 ? rules.settleMotion : root.atOnce;
            feedback.to = rules.scrollFeedback;
        }
    }
    Animated {
        id: feedback
    }
    Animated {
        id: place
        to: Math.max(0, root.selectedIndex) * root.pitch
        motion: root.island.selectionMotion
    }

    Rectangle {
        visible: root.selectedIndex >= 0
        x: Math.round((root.width - width) / 2)
        y: 12 + place.value + feedback.value
        width: 34
        height: 34
        radius: 12
        color: Theme.white(0.1)
        scale: rules.selectedScale(feedback.value)
    }

    Repeater {
        model: root.tabs
        delegate: PlainButton {
            id: button
            required property var modelData
            required property int index
            readonly property bool isSelected: button.index === root.selectedIndex

            x: Math.round((root.width - width) / 2)
            y: 12 + button.index * root.pitch
            width: 34
            height: 34
            label: button.modelData.title
            isCheckable: true
            isChecked: button.isSelected
            scale: button.isSelected ? rules.selectedScale(feedback.value) : 1
            onTriggered: {
                help.dismiss();
                rules.select(button.modelData.tab);
            }

            HelpTag {
                id: help
                x: button.width + 8
                y: Math.round((button.height - height) / 2)
                text: button.label
                clock: root.island.clock
                isPointed: button.isPointed
                motion: root.island.surface.revealMotion
            }

            Symbol {
                anchors.fill: parent
                name: button.modelData.symbol
                size: 14
                colour: button.isSelected ? Theme.primary : Theme.secondary
            }
        }
    }

    PlainButton {
        x: Math.round((root.width - width) / 2)
        y: root.height - 12 - height
        width: 34
        height: 34
        label: "Settings…"
        isEnabled: false

        Symbol {
            anchors.fill: parent
            name: "gearshape"
            size: 13
            colour: Theme.secondary
        }
    }
}
