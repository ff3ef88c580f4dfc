import QtQuick
import Korvantis.Screens

// A number that asks for attention.
Rectangle {
    id: badge

    required property string count
    property color ink: OstrelTheme.ink1

    width: label.implicitWidth + 10
    height: label.implicitHeight + 2
    radius: height / 2
    color: Qt.alpha(OstrelTheme.heat, 0.24)

    Text {
        id: label

        objectName: "count"
        anchors.centerIn: parent
        text: badge.count
        textFormat: Text.PlainText
        font: OstrelFont.system(9.5, Font.Bold)
        color: badge.ink
    }
}
