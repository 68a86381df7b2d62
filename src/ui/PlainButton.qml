import QtQuick
import Brindle.Ui

// A button that looks like its label and nothing more; it dims while it is pressed. Return presses the one that has the
// keyboard, and a ring shows which that is.
Item {
    id: root

    property string label
    property bool isEnabled: true
    property bool isCheckable: false
    property bool isChecked: false
    readonly property alias isPointed: pointer.hovered
    property real pressedOpacity: 0.7
    property real ringRadius: 12
    readonly property bool isPressed: tap.pressed
    default property alias content: face.data

    signal triggered

    Accessible.role: root.isCheckable ? Accessible.PageTab : Accessible.Button
    Accessible.name: root.label
    Accessible.checkable: root.isCheckable
    Accessible.checked: root.isChecked
    Accessible.selectable: root.isCheckable
    Accessible.selected: root.isChecked
    Accessible.focusable: root.isEnabled
    Accessible.onPressAction: root.press()

    activeFocusOnTab: root.isEnabled
    Keys.onReturnPressed: root.press()
    Keys.onEnterPressed: root.press()

    function press() {
        if (root.isEnabled)
            root.triggered();
    }

    Item {
        id: face
        anchors.fill: parent
        opacity: root.isEnabled && root.isPressed ? root.pressedOpacity : 1
    }

    HoverHandler {
        id: pointer
    }

    FocusRing {
        anchors.fill: parent
        radius: root.ringRadius
        visible: root.activeFocus
    }
    TapHandler {
        id: tap
        enabled: root.isEnabled
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: root.press()
    }
}
