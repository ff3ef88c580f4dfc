import QtQuick
import Korvantis.Screens

// One finding, and what can be done about it.
FocusScope {
    id: card

    required property string insightID
    required property string iconName
    required property string title
    required property string metricText
    required property string detail
    required property bool isPinned
    required property string pinIconName
    required property string pinHint
    required property bool canSnooze
    required property string description

    readonly property bool isPressed: pinButton.down || snoozeButton.down || dismissButton.down
    // How the keyboard came to the button that takes the card away.
    readonly property int focusReason: snoozeButton.activeFocus ? snoozeButton.focusReason : dismissButton.focusReason

    signal togglePin
    signal snooze
    signal dismiss

    // For the card that follows a dismissed one, so that the keyboard goes on from there.
    function takeFocus(reason: int) {
        dismissButton.forceActiveFocus(reason);
    }

    implicitHeight: Math.max(Math.ceil(words.implicitHeight), 34) + 24
    Accessible.role: Accessible.Grouping
    Accessible.name: description

    HoverHandler {
        id: hover
    }

    Rectangle {
        objectName: "frame"
        anchors.fill: parent
        color: hover.hovered ? OstrelTheme.elevatedCard : OstrelTheme.cardBackground
        radius: 12
        border.width: 1
        border.color: card.isPinned ? Qt.alpha(OstrelTheme.amberWarning, 0.45) : OstrelTheme.hairline
    }
    Rectangle {
        objectName: "badge"
        x: 14
        y: 12
        width: 34
        height: 34
        radius: 17
        color: Qt.alpha(OstrelTheme.heat, 0.18)

        SymbolView {
            anchors.centerIn: parent
            name: card.iconName
            size: 14
            tint: OstrelTheme.heat
        }
    }
    Column {
        id: words

        anchors.left: parent.left
        anchors.leftMargin: 60
        anchors.right: actions.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4

        Item {
            width: parent.width
            height: Math.max(titleText.implicitHeight, metric.implicitHeight)

            FigureText {
                id: titleText

                objectName: "title"
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, parent.width - marks.width - 8)
                text: card.title
                font: OstrelFont.system(13, Font.Bold)
                elide: Text.ElideMiddle
            }
            Row {
                id: marks

                x: titleText.width + 8
                anchors.verticalCenter: parent.verticalCenter
                spacing: 8

                ChipView {
                    id: metric

                    objectName: "metric"
                    visible: text !== ""
                    text: card.metricText
                    font: OstrelFont.monospaced(10.5, Font.DemiBold)
                    ink: OstrelTheme.heat
                    ground: Qt.alpha(OstrelTheme.heat, 0.18)
                    sidePadding: 8
                    radius: height / 2
                }
                SymbolView {
                    objectName: "pinMark"
                    visible: card.isPinned
                    anchors.verticalCenter: parent.verticalCenter
                    name: "pin.fill"
                    size: 10
                    tint: OstrelTheme.amberWarning
                }
            }
        }
        FigureText {
            objectName: "detail"
            width: parent.width
            text: card.detail
            font: OstrelFont.system(12)
            color: OstrelTheme.ink2
            wrapMode: Text.Wrap
            elide: Text.ElideNone
        }
    }
    Row {
        id: actions

        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 6

        QuietButton {
            id: pinButton

            objectName: "pin"
            symbol: card.pinIconName
            hint: card.pinHint
            fontSize: 12
            ink: card.isPinned ? OstrelTheme.amberWarning : OstrelTheme.ink3
            hoverGround: OstrelTheme.subtleBorder
            anchors.verticalCenter: parent.verticalCenter
            onClicked: card.togglePin()
        }
        QuietButton {
            id: snoozeButton

            objectName: "snooze"
            visible: card.canSnooze
            text: "Snooze 24h"
            leftPadding: 10
            rightPadding: 10
            // On a card under the pointer the ground at rest would be the same as the card's.
            ground: hover.hovered ? Qt.alpha(OstrelTheme.subtleBorder, 0.6) : OstrelTheme.elevatedCard
            hoverGround: OstrelTheme.subtleBorder
            anchors.verticalCenter: parent.verticalCenter
            onClicked: card.snooze()
        }
        QuietButton {
            id: dismissButton

            objectName: "dismiss"
            focus: true
            symbol: "xmark"
            hint: "Dismiss Insight"
            ink: OstrelTheme.ink3
            hoverGround: OstrelTheme.subtleBorder
            anchors.verticalCenter: parent.verticalCenter
            onClicked: card.dismiss()
        }
    }
}
