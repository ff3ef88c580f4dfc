pragma ComponentBehavior: Bound

import QtQuick
import Korvantis.Screens

// The chart of the history pane and what it says of the row under the pointer, or of the one that
// the arrow keys have reached.
Item {
    id: view

    required property HistoryPaneModel history
    readonly property historyChartReading reading: chart.reading
    readonly property string summary: history.chartTitle + ". " + history.averageText + ", " + history.peakText

    // It has got the keyboard by a key.
    signal reached

    function clearOfBubble(x: real): real {
        const beside = x + 12;
        return beside + bubble.width <= width ? beside : Math.max(0, x - 12 - bubble.width);
    }

    implicitHeight: 210
    activeFocusOnTab: true
    Accessible.role: Accessible.Chart
    Accessible.name: reading.isShown ? reading.sentence : summary
    Accessible.description: "The arrow keys, Home and End read single values."
    Accessible.focusable: true
    Accessible.focused: activeFocus
    Keys.onLeftPressed: chart.readPrevious()
    Keys.onRightPressed: chart.readNext()
    Keys.onEscapePressed: event => {
        event.accepted = reading.isShown;
        chart.stopReading();
    }
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Home)
            chart.readFirst();
        else if (event.key === Qt.Key_End)
            chart.readLast();
        else
            return;
        event.accepted = true;
    }
    onActiveFocusChanged: {
        if (pointer.hovered)
            return;
        if (activeFocus)
            reached();
        else
            chart.stopReading();
    }

    HistoryChartItem {
        id: chart

        objectName: "historyChart"
        anchors.fill: parent
        series: view.history.series
        color: view.history.color
        unit: view.history.unit
        restingTop: view.history.restingTop
    }
    FocusRing {
        anchors.margins: -5
        shown: view.activeFocus
    }

    HoverHandler {
        id: pointer

        onPointChanged: if (hovered) chart.readAt(point.position.x)
        onHoveredChanged: if (!hovered) chart.stopReading()
    }
    TapHandler {
        onTapped: view.forceActiveFocus(Qt.MouseFocusReason)
    }

    component Mark: Rectangle {
        visible: view.reading.isShown
        x: view.reading.x - width / 2
        width: 9
        height: 9
        radius: 4.5
        border.width: 2
        border.color: OstrelTheme.cardBackground
    }

    Rectangle {
        visible: view.reading.isShown
        x: Math.round(view.reading.x)
        y: chart.plot.y
        width: 1
        height: chart.plot.height
        color: OstrelTheme.ink3
    }
    Mark {
        y: view.reading.peakY - height / 2
        color: Qt.tint(OstrelTheme.cardBackground, Qt.alpha(view.history.color, 0.6))
    }
    Mark {
        y: view.reading.averageY - height / 2
        color: view.history.color
    }
    Rectangle {
        id: bubble

        objectName: "reading"
        visible: view.reading.isShown
        x: Math.round(view.clearOfBubble(view.reading.x))
        y: chart.plot.y + 6
        width: words.implicitWidth + 20
        height: words.implicitHeight + 14
        radius: 8
        color: OstrelTheme.elevatedCard
        border.width: 1
        border.color: OstrelTheme.subtleBorder

        Column {
            id: words

            anchors.centerIn: parent
            spacing: 3

            Text {
                text: view.reading.time
                textFormat: Text.PlainText
                font: OstrelFont.system(10.5, Font.DemiBold)
                color: OstrelTheme.ink1
            }
            Text {
                text: view.reading.average
                textFormat: Text.PlainText
                font: OstrelFont.system(10.5)
                color: OstrelTheme.ink2
            }
            Text {
                text: view.reading.peak
                textFormat: Text.PlainText
                font: OstrelFont.system(10.5)
                color: view.history.color
            }
        }
    }
}
