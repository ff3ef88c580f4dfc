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

    // The name of a window, and at its end what is used of it, with the bar below.
    component Quota: Item {
        id: quota

        required property string name
        required property string used
        required property real percent
        property color ink

        width: parent.width
        implicitHeight: bar.y + bar.height

        FigureText {
            id: nameText

            width: Math.min(implicitWidth, parent.width - usedText.width - 8)
            text: quota.name
            font: OstrelFont.system(card.isNarrow ? 9.5 : 11)
            color: OstrelTheme.ink2
        }
        FigureText {
            id: usedText

            objectName: "used"
            anchors.right: parent.right
            width: Math.min(implicitWidth, parent.width)
            text: quota.used
            font: OstrelFont.system(card.isNarrow ? 9.5 : 11, Font.Medium)
            color: quota.ink
        }
        ShareBar {
            id: bar

            objectName: "bar"
            anchors.top: nameText.bottom
            anchors.topMargin: 6
            width: parent.width
            name: quota.name
            percent: quota.percent
            tint: card.plan.accentColor
        }
    }

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
    Quota {
        objectName: "fiveHour"
        name: "5-Hour Window"
        used: card.plan.fiveHourText
        percent: card.plan.fiveHourPercent
        ink: OstrelTheme.ink1
    }
    Quota {
        objectName: "weekly"
        name: "7-Day Rolling Quota"
        used: card.plan.weeklyText
        percent: card.plan.weeklyPercent
        ink: OstrelTheme.ink2
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
