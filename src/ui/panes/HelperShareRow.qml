import QtQuick
import Korvantis.Screens

// What the helpers of one role use together.
Item {
    id: view

    required property ProcessesListRow delegate
    readonly property processesRow row: delegate.row

    FigureText {
        id: role

        x: ProcessesMetrics.indent - ProcessesMetrics.cardPadding
        anchors.verticalCenter: parent.verticalCenter
        text: view.row.title
        font: OstrelFont.system(11.5)
        color: OstrelTheme.ink2
    }
    FigureText {
        anchors.left: role.right
        anchors.leftMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        text: view.row.countText
        font: OstrelFont.monospaced(10.5)
        color: OstrelTheme.ink3
    }
    FigureText {
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        text: view.row.memoryText + " · " + view.row.cpuText
        font: OstrelFont.monospaced(11)
    }
}
