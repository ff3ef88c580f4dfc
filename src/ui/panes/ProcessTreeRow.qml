import QtQuick
import Korvantis.Screens

// One process of an opened application.
Item {
    id: view

    required property ProcessesListRow delegate
    readonly property processesRow row: delegate.row

    FigureText {
        id: pid

        x: ProcessesMetrics.indent - ProcessesMetrics.cardPadding
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
        width: Math.max(0, Math.min(Math.ceil(implicitWidth), figures.x - x - role.width - 16 - (view.row.ports.length > 0 ? 56 : 0)))
        text: view.row.title
        font: OstrelFont.system(11.5)
        elide: Text.ElideMiddle
    }
    ChipView {
        id: role

        anchors.left: name.right
        anchors.leftMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        text: view.row.roleText
        font: OstrelFont.system(10, Font.Medium)
        ground: Qt.alpha(OstrelTheme.subtleBorder, 0.7)
    }
    PortChips {
        anchors.left: role.right
        anchors.leftMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        ports: view.row.ports
        room: figures.x - role.x - role.width - 12
    }
    Row {
        id: figures

        anchors.right: stop.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter

        FigureText {
            width: ProcessesMetrics.cpu
            horizontalAlignment: Text.AlignRight
            text: view.row.cpuText
            font: OstrelFont.monospaced(11)
            color: OstrelTheme.ink2
            elide: Text.ElideNone
            Accessible.name: "CPU " + text
        }
        FigureText {
            width: ProcessesMetrics.memory + 4
            horizontalAlignment: Text.AlignRight
            text: view.row.memoryText
            font: OstrelFont.monospaced(11)
            elide: Text.ElideNone
            Accessible.name: "Memory " + text
        }
    }
    RowButton {
        id: stop

        objectName: "stop"
        delegate: view.delegate
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        symbol: "xmark.circle"
        hint: "Stop " + view.row.title + ", " + view.row.pidText
        leftPadding: 5
        rightPadding: 5
        hoverInk: OstrelTheme.strainRed
        onClicked: delegate.stop()
    }
}
