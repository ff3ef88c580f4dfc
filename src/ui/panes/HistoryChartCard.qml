import QtQuick
import Korvantis.State
import Korvantis.Screens

// The card of the chart: its caption, how the last export ended, and the figures of the range.
Rectangle {
    id: card

    required property MonitorStore store
    required property HistoryPaneModel history

    // The chart has got the keyboard by a key.
    signal reached

    implicitHeight: chart.y + chart.height + 14
    color: OstrelTheme.cardBackground
    radius: 12
    border.width: 1
    border.color: OstrelTheme.hairline

    SectionCaption {
        id: caption

        objectName: "chartTitle"
        x: 16
        y: 16
        text: card.history.chartTitle
    }
    FigureText {
        objectName: "exportMessage"
        visible: text !== ""
        anchors.right: parent.right
        anchors.rightMargin: 16
        anchors.left: caption.right
        anchors.leftMargin: 16
        anchors.verticalCenter: caption.verticalCenter
        horizontalAlignment: Text.AlignRight
        text: card.store.lastExportStatusMessage
        font: OstrelFont.system(10.5)
        color: OstrelTheme.safeGreen
    }
    FigureText {
        id: average

        objectName: "average"
        anchors.left: caption.left
        anchors.top: caption.bottom
        anchors.topMargin: 8
        text: card.history.averageText
        font: OstrelFont.system(11.5)
        color: OstrelTheme.ink2
    }
    FigureText {
        objectName: "peak"
        anchors.left: average.right
        anchors.leftMargin: 16
        anchors.top: average.top
        anchors.right: parent.right
        anchors.rightMargin: 16
        text: card.history.peakText
        font: OstrelFont.system(11.5)
        color: card.history.color
    }
    HistoryChartView {
        id: chart

        objectName: "chart"
        anchors.top: average.bottom
        anchors.topMargin: 10
        anchors.left: parent.left
        anchors.leftMargin: 16
        anchors.right: parent.right
        anchors.rightMargin: 16
        height: 210
        history: card.history
        onReached: card.reached()
    }
}
