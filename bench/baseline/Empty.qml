import QtQuick

Window {
    width: 940
    height: 300
    visible: true
    color: "transparent"
    flags: Qt.FramelessWindowHint | Qt.WindowStaysOnTopHint | Qt.BypassWindowManagerHint | Qt.NoDropShadowWindowHint
}
