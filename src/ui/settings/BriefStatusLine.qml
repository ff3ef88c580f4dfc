import QtQuick
import Korvantis.Screens

// How the last phone brief fared; takes no room when there is nothing to tell.
Item {
    id: line

    required property string text
    required property bool isError

    visible: text !== ""
    implicitHeight: label.implicitHeight + 21

    Rectangle {
        width: parent.width
        height: 1
        color: OstrelTheme.hairline
    }
    FigureText {
        id: label

        objectName: "briefStatus"
        x: 20
        y: 11
        width: line.width - 40
        text: line.text
        font: OstrelFont.system(11)
        color: line.isError ? OstrelTheme.strainRed : OstrelTheme.safeGreen
        wrapMode: Text.Wrap
        elide: Text.ElideNone
        Accessible.role: Accessible.AlertMessage
    }
}
