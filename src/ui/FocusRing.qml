import QtQuick
import Brindle.Ui

// Shows what has the keyboard. Only Tab brings it there, so it needs no telling how.
Rectangle {
    color: "transparent"
    border.width: 1.5
    border.color: Theme.white(0.5)
}
