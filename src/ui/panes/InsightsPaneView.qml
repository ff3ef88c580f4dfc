pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Korvantis.Screens

// What is wrong now, and what was found lately.
PaneView {
    id: pane

    InsightsPaneModel {
        id: insights

        store: pane.store
    }

    component Caption: FigureText {
        font: OstrelFont.system(11, Font.Bold, 0.6)
        color: OstrelTheme.ink3
    }

    Rectangle {
        id: summary

        anchors.top: parent.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.margins: 16
        height: words.implicitHeight + 32
        color: OstrelTheme.cardBackground
        radius: 12
        border.width: 1
        border.color: OstrelTheme.hairline

        Column {
            id: words

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            anchors.leftMargin: 16
            anchors.rightMargin: 16
            spacing: 8

            Row {
                spacing: 6

                SymbolView {
                    name: "stethoscope"
                    size: 12
                    tint: OstrelTheme.heat
                    anchors.verticalCenter: parent.verticalCenter
                }
                Caption {
                    text: "WHAT'S WRONG RIGHT NOW"
                    anchors.verticalCenter: parent.verticalCenter
                }
            }
            FigureText {
                objectName: "headline"
                width: parent.width
                text: insights.headline
                font: OstrelFont.system(15)
                wrapMode: Text.Wrap
                elide: Text.ElideNone
            }
        }
    }

    Caption {
        id: findingsCaption

        objectName: "findingsTitle"
        anchors.top: summary.bottom
        anchors.left: parent.left
        anchors.topMargin: 18
        anchors.leftMargin: 20
        text: insights.findingsTitle
    }

    ListView {
        id: list

        objectName: "insightList"
        anchors.top: findingsCaption.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: 16
        anchors.topMargin: 10
        clip: true
        spacing: 8
        model: insights.insights
        activeFocusOnTab: true
        keyNavigationEnabled: true
        boundsBehavior: Flickable.StopAtBounds
        highlightMoveDuration: 0
        Accessible.role: Accessible.List
        Accessible.name: "Insights"
        ScrollBar.vertical: ThinScrollBar {}

        delegate: InsightRowView {
            id: card

            width: ListView.view.width

            FocusRing {
                radius: 12
                shown: card.ListView.isCurrentItem && list.activeFocus
            }
        }
    }

    EmptyStateView {
        visible: list.count === 0
        anchors.centerIn: list
        icon: "sparkles"
        title: "No Active Strain Alerts"
        subtitle: "Korvantis continuously watches for sustained CPU spikes, memory leaks, disk bursts, forgotten dev servers, and custom app thresholds."
    }
}
