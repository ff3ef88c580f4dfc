import QtQuick
import Korvantis.Screens

// What a list or a pane shows when it has nothing else to show.
Column {
    id: empty

    required property string icon
    required property string title
    required property string subtitle

    spacing: 8

    SymbolView {
        name: empty.icon
        size: 26
        tint: OstrelTheme.ink3
        anchors.horizontalCenter: parent.horizontalCenter
    }
    FigureText {
        text: empty.title
        font: OstrelFont.system(14, Font.DemiBold)
        anchors.horizontalCenter: parent.horizontalCenter
    }
    FigureText {
        width: Math.min(460, empty.parent ? empty.parent.width - 32 : 460)
        text: empty.subtitle
        font: OstrelFont.system(12)
        color: OstrelTheme.ink3
        wrapMode: Text.WordWrap
        elide: Text.ElideNone
        horizontalAlignment: Text.AlignHCenter
        lineHeight: 1.25
        anchors.horizontalCenter: parent.horizontalCenter
    }
}
