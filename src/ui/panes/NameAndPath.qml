import QtQuick
import Korvantis.Screens

// A name over where it is from.
Item {
    id: words

    required property string name
    required property string path
    property alias nameFont: nameText.font

    implicitHeight: nameText.implicitHeight + (pathText.visible ? pathText.implicitHeight + 2 : 0)

    FigureText {
        id: nameText

        width: parent.width
        text: words.name
        font: OstrelFont.system(13, Font.DemiBold)
        elide: Text.ElideMiddle
    }
    FigureText {
        id: pathText

        visible: text !== ""
        anchors.top: nameText.bottom
        anchors.topMargin: 2
        width: parent.width
        text: words.path
        font: OstrelFont.system(10.5)
        color: OstrelTheme.ink3
        elide: Text.ElideMiddle
    }
}
