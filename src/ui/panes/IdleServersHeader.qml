import QtQuick
import Korvantis.Screens

// What stands above the forgotten servers: what they are, and a way to stop all of them.
Rectangle {
    id: header

    signal stopAll

    implicitHeight: words.height + 24
    color: OstrelTheme.cardBackground
    radius: ProcessesMetrics.cardRadius
    border.width: 1
    border.color: OstrelTheme.hairline

    Column {
        id: words

        anchors.left: parent.left
        anchors.leftMargin: 18
        anchors.right: stopAll.left
        anchors.rightMargin: 18
        anchors.verticalCenter: parent.verticalCenter
        spacing: 3

        FigureText {
            width: parent.width
            text: "Forgotten Dev Servers"
            font: OstrelFont.system(14, Font.Bold)
        }
        FigureText {
            width: parent.width
            text: "These local dev servers have been listening with near-zero traffic and can be safely stopped to reclaim memory."
            font: OstrelFont.system(11.5)
            color: OstrelTheme.ink2
            wrapMode: Text.WordWrap
            elide: Text.ElideNone
        }
    }
    QuietButton {
        id: stopAll

        objectName: "stopAll"
        anchors.right: parent.right
        anchors.rightMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        symbol: "stop.circle.fill"
        text: "Stop All Idle Servers"
        fontSize: 12
        fontWeight: Font.DemiBold
        leftPadding: 12
        rightPadding: 12
        ink: OstrelTheme.strainRed
        hoverInk: OstrelTheme.strainRed
        ground: Qt.alpha(OstrelTheme.strainRed, 0.12)
        hoverGround: Qt.alpha(OstrelTheme.strainRed, 0.24)
        onClicked: header.stopAll()
    }
}
