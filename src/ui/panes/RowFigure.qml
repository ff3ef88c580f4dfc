import QtQuick
import Korvantis.Screens

// A figure at the right end of a row, in a column of its own.
FigureText {
    anchors.verticalCenter: parent ? parent.verticalCenter : undefined
    width: ProcessesMetrics.memory
    horizontalAlignment: Text.AlignRight
    font: OstrelFont.monospaced(11.5, Font.DemiBold)
    elide: Text.ElideNone
}
