import QtQuick
import Korvantis.Screens

// The caption above some rows of a card.
Item {
    required property ProcessesListRow delegate

    SectionCaption {
        x: ProcessesMetrics.indent - ProcessesMetrics.cardPadding
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 4
        text: parent.delegate.row.title
        font: OstrelFont.rounded(9.5, Font.Bold, 0.6)
        color: OstrelTheme.ink3
    }
}
