import QtQuick
import Korvantis.Screens

// The small tracked capitals above a section.
FigureText {
    font: OstrelFont.system(11, Font.Bold, 0.6)
    color: OstrelTheme.ink2
}
