import QtQuick
import QtQuick.Controls.Basic
import Korvantis.Screens

// The tooltip of the control that it stands in.
ToolTip {
    id: hint

    delay: 600
    padding: 7
    font: OstrelFont.system(11)
    // No fading: an idle screen repaints nothing.
    enter: null
    exit: null

    contentItem: Text {
        text: hint.text
        font: hint.font
        color: OstrelTheme.ink1
        textFormat: Text.PlainText
    }

    background: Rectangle {
        color: OstrelTheme.elevatedCard
        radius: 6
        border.width: 1
        border.color: OstrelTheme.subtleBorder
    }
}
