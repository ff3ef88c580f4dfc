import QtQuick
import QtQuick.Controls.Basic
import Korvantis.Screens

// One of the lists to choose from, with the number of things in it.
TabButton {
    id: pill

    required property string badge
    required property bool isSelected

    component Count: Rectangle {
        id: capsule

        required property string text
        required property color ink

        width: Math.max(height, label.implicitWidth + 10)
        height: 15
        radius: height / 2
        color: Qt.alpha(OstrelTheme.cpu, 0.25)

        Text {
            id: label

            anchors.centerIn: parent
            text: capsule.text
            textFormat: Text.PlainText
            font: OstrelFont.monospaced(10, Font.Bold)
            color: capsule.ink
        }
    }

    padding: 7
    leftPadding: 12
    rightPadding: 12
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    // Screen readers are told the role of the type, whatever is said here; what is chosen is told below.
    checkable: false
    Accessible.role: Accessible.PageTab
    Accessible.name: badge === "" ? text : text + ", " + badge
    Accessible.selected: isSelected
    Accessible.onPressAction: clicked()

    contentItem: Row {
        spacing: 6

        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: pill.text
            textFormat: Text.PlainText
            font: OstrelFont.system(12, pill.isSelected ? Font.DemiBold : Font.Medium)
            color: pill.isSelected ? OstrelTheme.ink1 : OstrelTheme.ink2
        }
        Count {
            objectName: "badge"
            visible: text !== ""
            anchors.verticalCenter: parent.verticalCenter
            text: pill.badge
            ink: pill.isSelected ? OstrelTheme.ink1 : OstrelTheme.ink2
        }
    }
    background: Rectangle {
        radius: height / 2
        color: pill.isSelected ? OstrelTheme.elevatedCard : pill.hovered ? Qt.alpha(OstrelTheme.elevatedCard, 0.55) : OstrelTheme.cardBackground
        border.width: 1
        border.color: pill.isSelected ? OstrelTheme.subtleBorder : OstrelTheme.hairline

        FocusRing {
            radius: height / 2
            shown: pill.visualFocus
        }
    }
}
