import QtQuick

// Blurs its source. Only where shaders draw: the software renderer would show nothing.
ShaderEffect {
    property var source
    // Points.
    property real radius: 0
    readonly property size extent: Qt.size(width, height)

    fragmentShader: "qrc:/qt/qml/Brindle/Ui/softblur.frag.qsb"
}
