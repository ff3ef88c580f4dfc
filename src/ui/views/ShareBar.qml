import QtQuick
import Korvantis.Screens

// How much of a whole is used: 0 to 100.
Rectangle {
    id: bar

    required property string name
    required property real percent
    property color tint: OstrelTheme.cpu

    implicitHeight: 5
    radius: height / 2
    color: OstrelTheme.elevatedCard
    Accessible.role: Accessible.ProgressBar
    Accessible.name: name

    Rectangle {
        objectName: "filled"
        width: bar.width * bar.percent / 100
        height: bar.height
        radius: height / 2
        color: bar.tint
    }
}
