import QtQuick
import QtQuick.Controls.Basic
import Korvantis.Screens

// The past of the machine: a chart of one figure, and what each application has used.
PaneView {
    id: pane

    // Moves what is shown by so many units, as far as there is more.
    function scrollBy(distance: real) {
        const furthest = Math.max(0, scroller.contentHeight - scroller.height);
        scroller.contentY = Math.max(0, Math.min(furthest, scroller.contentY + distance));
    }

    Keys.onUpPressed: scrollBy(-40)
    Keys.onDownPressed: scrollBy(40)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_PageUp)
            scrollBy(-scroller.height * 0.9);
        else if (event.key === Qt.Key_PageDown)
            scrollBy(scroller.height * 0.9);
        else
            return;
        event.accepted = true;
    }

    HistoryPaneModel {
        id: historyModel

        store: pane.store
    }

    Rectangle {
        anchors.fill: parent
        color: OstrelTheme.canvas
    }
    Flickable {
        id: scroller

        objectName: "historyScroller"
        anchors.fill: parent
        contentWidth: width
        contentHeight: column.height + 32
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: ThinScrollBar {}

        Column {
            id: column

            x: 16
            y: 16
            width: scroller.width - 32
            spacing: 16

            HistoryControls {
                width: parent.width
                store: pane.store
                history: historyModel
            }
            HistoryChartCard {
                width: parent.width
                store: pane.store
                history: historyModel
            }
            HistoryLedgerCard {
                width: parent.width
                history: historyModel
            }
        }
    }
}
