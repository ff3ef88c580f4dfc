pragma ComponentBehavior: Bound

import QtQuick
import Korvantis.Screens

// What is wrong now, what was found lately, the user's own limits, and the phone briefs.
PaneView {
    id: pane

    InsightsPaneModel {
        id: insights

        store: pane.store
    }

    PaneScroller {
        id: scroller

        property InsightCardView pressedCard: null

        objectName: "insightsScroller"
        name: "Insights"
        anchors.fill: parent
        spacing: 8
        heldBlock: limits.isBusy ? limitsBlock : pressedCard
        // The answer appears below the button, and that may be below the edge.
        onContentHeightChanged: if (briefs.isAnswering)
            reveal(briefs)

        WhatsWrongSummaryCard {
            objectName: "summary"
            width: parent ? parent.width : 0
            pane: insights
        }
        Item {
            objectName: "findingsHeader"
            width: parent ? parent.width : 0
            height: Math.ceil(clearUnpinned.implicitHeight) + 16

            SectionCaption {
                objectName: "findingsTitle"
                x: 4
                anchors.verticalCenter: parent.verticalCenter
                text: insights.findingsTitle
            }
            QuietButton {
                id: clearUnpinned

                objectName: "clearUnpinned"
                visible: insights.hasFindings
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                text: "Clear Unpinned"
                onClicked: pane.store.clearUnpinnedInsights()
            }
        }
        FrameView {
            objectName: "noFindings"
            visible: !insights.hasFindings
            width: parent ? parent.width : 0
            height: Math.ceil(empty.implicitHeight) + 48
            radius: 12

            EmptyStateView {
                id: empty

                anchors.centerIn: parent
                icon: "sparkles"
                title: "No Active Strain Alerts"
                subtitle: "Korvantis continuously watches for sustained CPU spikes, memory leaks, disk bursts, forgotten dev servers, and custom app thresholds."
            }
        }
        Repeater {
            id: findings

            objectName: "findings"
            model: insights.insights

            InsightCardView {
                width: parent ? parent.width : 0
                onIsPressedChanged: scroller.pressedCard = isPressed ? this : null
                onTogglePin: insights.togglePin(insightID)
                onSnooze: insights.snooze(insightID)
                onDismiss: insights.dismiss(insightID)
            }
            onItemRemoved: (index, item) => {
                const gone = item as InsightCardView;
                if (!gone.activeFocus)
                    return;
                const next = itemAt(Math.min(index, count - 1)) as InsightCardView;
                if (next)
                    next.takeFocus(gone.focusReason);
                else
                    scroller.forceActiveFocus();
            }
        }
        Item {
            id: limitsBlock

            width: parent ? parent.width : 0
            height: limits.implicitHeight + 16

            CustomAppLimitsCard {
                id: limits

                objectName: "limitsCard"
                y: 8
                width: parent.width
                height: implicitHeight
                pane: insights
            }
        }
        RemotePhoneBriefsCard {
            id: briefs

            objectName: "briefsCard"
            width: parent ? parent.width : 0
            pane: insights
            alerts: pane.store.remoteAlerts
        }
    }
}
