import QtQuick
import QtQuick.Layouts
import Korvantis.Screens

// A small line that explains.
FigureText {
    Layout.fillWidth: true
    font: OstrelFont.system(11)
    color: OstrelTheme.ink3
    wrapMode: Text.Wrap
    elide: Text.ElideNone
}
