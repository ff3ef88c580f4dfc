import QtQuick
import Korvantis.Screens

// A forgotten development server.
CardHead {
    id: view

    symbol: "server.rack"
    symbolColor: OstrelTheme.amberWarning

    RowFigure {
        width: 92
        text: view.row.idleText
        font: OstrelFont.system(11.5, Font.Medium)
        color: OstrelTheme.ink2
    }
    RowFigure {
        text: view.row.memoryText
    }
    RowButton {
        objectName: "stop"
        delegate: view.delegate
        anchors.verticalCenter: parent.verticalCenter
        text: "Stop"
        fontWeight: Font.DemiBold
        leftPadding: 14
        rightPadding: 14
        ink: "#FFFFFF"
        hoverInk: "#FFFFFF"
        ground: OstrelTheme.cpu
        hoverGround: Qt.darker(OstrelTheme.cpu, 1.15)
        Accessible.name: ["Stop " + view.row.title, ...view.row.ports].join(", ")
        onClicked: delegate.stop()
    }
}
