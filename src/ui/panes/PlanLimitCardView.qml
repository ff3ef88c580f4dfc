import QtQuick
import Korvantis.Screens

// One subscription plan: how much of its two windows is used, and how many tokens went.
CardFrame {
    id: card

    required property planCard plan
    // In the panel the plan's name goes below the tool's, and the windows get smaller letters.
    readonly property bool isNarrow: width < 290

    padding: isNarrow ? 12 : 16
    spacing: 12
    Accessible.role: Accessible.Grouping
    Accessible.name: plan.tool + ", " + plan.planName + ", " + plan.paceText

    Item {
        readonly property real lineHeight: Math.max(tool.implicitHeight, pace.implicitHeight)

        width: parent.width
        implicitHeight: card.isNarrow ? planName.y + planName.height : lineHeight

        FigureText {
            id: tool

            objectName: "tool"
            y: (parent.lineHeight - height) / 2
            width: Math.min(implicitWidth, Math.max(0, pace.x - 8))
            text: card.plan.tool
            font: OstrelFont.system(14, Font.DemiBold)
        }
        ChipView {
            id: planName

            readonly property real room: (card.isNarrow ? parent.width : pace.x - 8) - x

            objectName: "planName"
            x: card.isNarrow ? 0 : tool.width + 8
            y: card.isNarrow ? parent.lineHeight + 5 : (parent.lineHeight - height) / 2
            width: Math.min(implicitWidth, Math.max(0, room))
            visible: room > 30
            text: card.plan.planName
        }
        ChipView {
            id: pace

            objectName: "pace"
            anchors.right: parent.right
            y: (parent.lineHeight - height) / 2
            width: Math.min(implicitWidth, parent.width)
            text: card.plan.paceText
            font: OstrelFont.system(10, Font.DemiBold)
            ink: card.plan.paceColor
            ground: Qt.alpha(card.plan.paceColor, 0.16)
            sidePadding: 7
            topAndBottomPadding: 2.5
        }
    }
    PlanQuotaView {
        objectName: "fiveHour"
        width: parent.width
        name: "5-Hour Window"
        used: card.plan.fiveHourText
        percent: card.plan.fiveHourPercent
        ink: OstrelTheme.ink1
        tint: card.plan.accentColor
        fontSize: card.isNarrow ? 9.5 : 11
    }
    PlanQuotaView {
        objectName: "weekly"
        width: parent.width
        name: "7-Day Rolling Quota"
        used: card.plan.weeklyText
        percent: card.plan.weeklyPercent
        ink: OstrelTheme.ink2
        tint: card.plan.accentColor
        fontSize: card.isNarrow ? 9.5 : 11
    }
    Item {
        width: parent.width
        implicitHeight: Math.max(today.implicitHeight, week.implicitHeight)

        FigureText {
            id: today

            objectName: "today"
            width: Math.min(implicitWidth, Math.max(0, week.x - 8))
            text: card.plan.todayText
            font: OstrelFont.system(10.5)
            fontSizeMode: Text.HorizontalFit
            minimumPointSize: 5
            color: OstrelTheme.ink3
        }
        FigureText {
            id: week

            objectName: "week"
            anchors.right: parent.right
            width: Math.min(implicitWidth, parent.width)
            text: card.plan.weekText
            font: OstrelFont.system(10.5)
            color: OstrelTheme.ink3
        }
    }
}
