import QtQuick
import Korvantis.Screens

// The past of the machine: a chart of one figure, and what each application has used.
PaneView {
    id: pane

    HistoryPaneModel {
        id: historyModel

        store: pane.store
    }

    PaneScroller {
        id: scroller

        anchors.fill: parent
        focus: true
        name: "History"
        spacing: 16

        HistoryControls {
            width: parent.width
            store: pane.store
            history: historyModel
        }
        HistoryChartCard {
            id: chartCard

            width: parent.width
            store: pane.store
            history: historyModel
            onReached: scroller.reveal(chartCard)
        }
        HistoryLedgerCard {
            width: parent.width
            history: historyModel
        }
    }
}
