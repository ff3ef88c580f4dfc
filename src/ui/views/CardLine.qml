import QtQuick
import QtQuick.Layouts
import Korvantis.Screens

// One line of a card: a symbol or a dot, a name, and a figure at its end.
RowLayout {
    id: line

    property string symbol
    property color symbolColor: OstrelTheme.ink3
    property string name
    property string figure
    property real fontSize: 11
    property color nameColor: OstrelTheme.ink2
    property color figureColor: OstrelTheme.ink1

    Layout.fillWidth: true
    spacing: 6

    SymbolView {
        visible: line.symbol !== ""
        name: line.symbol
        size: line.fontSize
        tint: line.symbolColor
    }
    FigureText {
        Layout.fillWidth: true
        text: line.name
        font: OstrelFont.system(line.fontSize)
        color: line.nameColor
    }
    FigureText {
        visible: text !== ""
        text: line.figure
        font: OstrelFont.monospaced(line.fontSize)
        color: line.figureColor
    }
}
