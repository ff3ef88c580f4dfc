import QtQuick
import Korvantis.Screens

// A listening port and who holds it.
Item {
    id: view

    required property ProcessesListRow delegate
    readonly property processesRow row: delegate.row

    FigureText {
        id: port

        x: 6
        width: 62
        anchors.verticalCenter: parent.verticalCenter
        text: view.row.ports.length > 0 ? view.row.ports[0] : ""
        font: OstrelFont.monospaced(13, Font.Bold)
    }
    NameAndPath {
        anchors.left: port.right
        anchors.leftMargin: 12
        anchors.right: end.left
        anchors.rightMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        name: view.row.title
        path: view.row.subtitle
        nameFont: OstrelFont.system(12.5, Font.DemiBold)
    }
    Row {
        id: end

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 14

        ChipView {
            objectName: "idle"
            visible: text !== ""
            anchors.verticalCenter: parent.verticalCenter
            text: view.row.idleText
            ground: Qt.alpha(OstrelTheme.amberWarning, 0.24)
        }
        RowFigure {
            width: ProcessesMetrics.pid
            text: view.row.pidText
            font: OstrelFont.monospaced(10.5)
            color: OstrelTheme.ink3
        }
        RowFigure {
            text: view.row.memoryText
            font: OstrelFont.monospaced(11.5)
            color: OstrelTheme.ink2
        }
        RowButton {
            objectName: "stop"
            delegate: view.delegate
            anchors.verticalCenter: parent.verticalCenter
            text: "Stop"
            ink: OstrelTheme.strainRed
            hoverInk: OstrelTheme.strainRed
            ground: Qt.alpha(OstrelTheme.strainRed, 0.12)
            hoverGround: Qt.alpha(OstrelTheme.strainRed, 0.24)
            Accessible.name: "Stop " + view.row.title + ", " + view.row.pidText
            onClicked: delegate.stop()
        }
    }
}
