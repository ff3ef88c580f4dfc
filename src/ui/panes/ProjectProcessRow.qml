import QtQuick
import Korvantis.Screens

// One process of a project.
Item {
    id: view

    required property ProcessesListRow delegate
    readonly property processesRow row: delegate.row

    FigureText {
        id: pid

        x: 42
        width: ProcessesMetrics.pid
        anchors.verticalCenter: parent.verticalCenter
        text: view.row.pidText
        font: OstrelFont.monospaced(10.5)
        color: OstrelTheme.ink3
    }
    FigureText {
        id: name

        anchors.left: pid.right
        anchors.leftMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(Math.ceil(implicitWidth), view.width * 0.25)
        text: view.row.title
        font: OstrelFont.system(11.5)
        elide: Text.ElideMiddle
    }
    FigureText {
        anchors.left: name.right
        anchors.leftMargin: 10
        anchors.right: memory.left
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        text: view.row.subtitle
        font: OstrelFont.monospaced(10.5)
        color: OstrelTheme.ink3
        maximumLineCount: 1
    }
    RowFigure {
        id: memory

        anchors.right: stop.left
        anchors.rightMargin: 10
        text: view.row.memoryText
        font: OstrelFont.monospaced(11)
        color: OstrelTheme.ink2
    }
    RowButton {
        id: stop

        objectName: "stop"
        delegate: view.delegate
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        text: "Stop"
        padding: 3
        hoverInk: OstrelTheme.strainRed
        Accessible.name: "Stop " + view.row.title + ", " + view.row.pidText
        onClicked: delegate.stop()
    }
}
