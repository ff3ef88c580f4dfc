import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Korvantis.Screens

// One of several large buttons of which exactly one is chosen.
RadioButton {
    id: button

    required property bool isSelected
    property string symbol

    padding: 10
    leftPadding: 14
    rightPadding: 14
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    // Screen readers are told the role of the type, whatever is said here; what is chosen is told below.
    checkable: false
    indicator: null
    Accessible.role: Accessible.RadioButton
    Accessible.name: text
    Accessible.checked: isSelected
    Accessible.onPressAction: clicked()

    contentItem: RowLayout {
        spacing: 7

        Item {
            Layout.fillWidth: true
        }
        SymbolView {
            visible: button.symbol !== ""
            name: button.symbol
            size: 12
            tint: button.isSelected ? OstrelTheme.cpu : OstrelTheme.ink3
        }
        Text {
            // The same with and without a symbol, so that it never shifts.
            Layout.preferredHeight: 16
            verticalAlignment: Text.AlignVCenter
            text: button.text
            textFormat: Text.PlainText
            font: OstrelFont.system(12, button.isSelected ? Font.DemiBold : Font.Medium)
            color: button.isSelected ? OstrelTheme.ink1 : OstrelTheme.ink2
        }
        Item {
            Layout.fillWidth: true
        }
    }

    background: Rectangle {
        radius: 9
        color: button.hovered ? OstrelTheme.elevatedCard : OstrelTheme.cardBackground
        border.width: button.isSelected ? 1.5 : 1
        border.color: button.isSelected ? OstrelTheme.cpu : OstrelTheme.hairline

        FocusRing {
            anchors.margins: 3
            radius: 7
            shown: button.visualFocus
        }
    }
}
