import QtQuick
import QtQuick.Controls.Basic
import Korvantis.Screens

// A small button of a symbol, a text or both, that stands out under the pointer only.
AbstractButton {
    id: button

    property string symbol
    property string trailingSymbol
    property string hint
    property real fontSize: 11
    property int fontWeight: Font.Medium
    property color ink: OstrelTheme.ink2
    property color hoverInk: OstrelTheme.ink1
    property color ground: "transparent"
    property color hoverGround: OstrelTheme.elevatedCard
    property real cornerRadius: 7

    padding: 7
    spacing: 5
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    opacity: enabled ? 1 : 0.5
    Accessible.role: Accessible.Button
    Accessible.name: text !== "" ? text : hint
    Accessible.onPressAction: clicked()

    contentItem: Row {
        spacing: button.spacing

        SymbolView {
            visible: button.symbol !== ""
            name: button.symbol
            size: button.fontSize
            tint: button.hovered ? button.hoverInk : button.ink
            anchors.verticalCenter: parent.verticalCenter
        }
        Text {
            visible: text !== ""
            text: button.text
            textFormat: Text.PlainText
            font: OstrelFont.system(button.fontSize, button.fontWeight)
            color: button.hovered ? button.hoverInk : button.ink
            anchors.verticalCenter: parent.verticalCenter
        }
        SymbolView {
            visible: button.trailingSymbol !== ""
            name: button.trailingSymbol
            size: button.fontSize - 2
            tint: button.hovered ? button.hoverInk : button.ink
            anchors.verticalCenter: parent.verticalCenter
        }
    }

    background: Rectangle {
        radius: button.cornerRadius
        color: button.down || button.hovered ? button.hoverGround : button.ground

        FocusRing {
            radius: button.cornerRadius
            shown: button.visualFocus
        }
    }

    HintView {
        visible: button.hint !== "" && button.hovered
        text: button.hint
    }
}
