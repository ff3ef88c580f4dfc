import QtQuick
import QtQuick.Controls.Basic
import Korvantis.Screens

// One of several small buttons in a row, of which exactly one is chosen. The arrow keys walk along
// the row.
RadioButton {
    id: chip

    required property bool isSelected
    property real fontSize: 11.5
    property real sidePadding: 11
    property color ink: OstrelTheme.ink2
    property color selectedInk: OstrelTheme.ink1
    property color ground: "transparent"
    property color selectedGround: OstrelTheme.elevatedCard
    property color edge: "transparent"

    leftPadding: sidePadding
    rightPadding: sidePadding
    topPadding: 6
    bottomPadding: 6
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    // Screen readers are told the role of the type, whatever is said here; what is chosen is told below.
    checkable: false
    indicator: null
    Accessible.role: Accessible.RadioButton
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: isSelected
    Accessible.onPressAction: clicked()
    Keys.onRightPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
    Keys.onLeftPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)

    contentItem: Text {
        text: chip.text
        textFormat: Text.PlainText
        // The same weight chosen or not, so that the row never shifts.
        font: OstrelFont.system(chip.fontSize, Font.Medium)
        color: chip.isSelected ? chip.selectedInk : chip.hovered ? OstrelTheme.ink1 : chip.ink
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }

    background: Rectangle {
        radius: 8
        color: chip.isSelected ? chip.selectedGround : chip.ground
        border.width: 1
        border.color: chip.isSelected ? "transparent" : chip.edge

        FocusRing {
            shown: chip.visualFocus
        }
    }
}
