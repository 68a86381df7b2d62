import QtQuick

// A button that looks like its label and nothing more; it dims while it is pressed.
Item {
    id: root

    property string label
    property bool isEnabled: true
    property bool isCheckable: false
    property bool isChecked: false
    readonly property alias isPointed: pointer.hovered
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

    function press() {
        if (root.isEnabled)
            root.triggered();
    }

    Item {
        id: face
        anchors.fill: parent
        opacity: root.isEnabled && tap.pressed ? 0.7 : 1
    }

    HoverHandler {
        id: pointer
    }
    TapHandler {
        id: tap
        enabled: root.isEnabled
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: root.press()
    }
}
