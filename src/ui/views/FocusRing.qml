import QtQuick
import Korvantis.Screens

// Shows where the keyboard is.
Rectangle {
    property bool shown: false

    anchors.fill: parent
    visible: shown
    color: "transparent"
    radius: 8
    border.width: 1.5
    border.color: OstrelTheme.cpu
}
