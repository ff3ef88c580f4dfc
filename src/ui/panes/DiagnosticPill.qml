import QtQuick
import Korvantis.Screens

// One figure on the state of the machine, under its name.
Rectangle {
    id: pill

    required property string title
    required property string value
    required property color tint

    implicitWidth: 160
    implicitHeight: words.implicitHeight + 16
    color: OstrelTheme.elevatedCard
    radius: 8

    Column {
        id: words

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: 12
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        FigureText {
            width: parent.width
            text: pill.title
            font: OstrelFont.system(9.5, Font.Medium)
            color: OstrelTheme.ink3
        }
        FigureText {
            objectName: "value"
            width: parent.width
            text: pill.value
            font: OstrelFont.monospaced(12, Font.DemiBold)
            color: pill.tint
        }
    }
}
