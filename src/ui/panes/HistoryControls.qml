pragma ComponentBehavior: Bound

import QtQuick
import Korvantis.State
import Korvantis.Screens

// What the history pane charts and how far back, and the way out into files. One row; where a
// wide font leaves no room for that, the ranges go below.
Item {
    id: controls

    required property MonitorStore store
    required property HistoryPaneModel history
    readonly property bool isTight: width < 980
    readonly property bool isOneRow: metricChips.implicitWidth + ending.implicitWidth + 10 <= width

    implicitHeight: isOneRow ? ending.implicitHeight : metricChips.implicitHeight + 10 + ending.implicitHeight

    Row {
        id: metricChips

        objectName: "metricChips"
        y: controls.isOneRow ? (controls.height - height) / 2 : 0
        spacing: controls.isTight ? 3 : 6
        Accessible.role: Accessible.Grouping
        Accessible.name: "Metric"

        Repeater {
            model: controls.history.metrics

            HistoryChip {
                required property historyMetricChoice modelData

                objectName: "metric-" + modelData.name
                text: modelData.label
                isSelected: controls.store.selectedHistoryMetric === modelData.name
                sidePadding: controls.isTight ? 7 : 11
                selectedInk: modelData.color
                ground: OstrelTheme.cardBackground
                selectedGround: Qt.alpha(modelData.color, 0.22)
                edge: OstrelTheme.hairline
                onClicked: controls.store.selectedHistoryMetric = modelData.name
            }
        }
    }

    Row {
        id: ending

        anchors.right: parent.right
        anchors.bottom: parent.bottom
        spacing: controls.isTight ? 6 : 10

        FrameView {
            implicitWidth: rangeChips.implicitWidth + 6
            implicitHeight: rangeChips.implicitHeight + 6

            Row {
                id: rangeChips

                objectName: "rangeChips"
                anchors.centerIn: parent
                Accessible.role: Accessible.Grouping
                Accessible.name: "Range"

                Repeater {
                    model: controls.history.ranges

                    HistoryChip {
                        required property choice modelData

                        objectName: "range-" + modelData.name
                        text: modelData.label
                        isSelected: controls.store.selectedHistoryRange === modelData.name
                        fontSize: 11
                        sidePadding: controls.isTight ? 5 : 9
                        ink: OstrelTheme.ink3
                        onClicked: controls.store.selectedHistoryRange = modelData.name
                    }
                }
            }
        }
        QuietButton {
            objectName: "exportCSV"
            anchors.verticalCenter: parent.verticalCenter
            text: "Export CSV"
            symbol: "square.and.arrow.down"
            fontSize: 11.5
            ink: OstrelTheme.ink1
            ground: OstrelTheme.elevatedCard
            hoverGround: OstrelTheme.rowHover
            cornerRadius: 8
            padding: 8
            leftPadding: controls.isTight ? 9 : 12
            rightPadding: controls.isTight ? 9 : 12
            onClicked: controls.store.exportHistoryCSVs()
        }
    }
}
