import QtQuick
import QtQuick.Layouts
import Korvantis.Screens

// One line of a card: a symbol or a dot, a name that gives way, and a figure at its end that never
// does.
Item {
    id: line

    property string symbol
    property color symbolColor: OstrelTheme.ink3
    // A dot of the symbol's colour in place of a symbol.
    property bool hasDot: false
    property string name
    // Our own words and figures in place of a name: they get smaller where there is no room, and are
    // never cut.
    property bool keepsWords: false
    // How small a name may get before it is cut.
    property real smallestName: keepsWords ? 5 : fontSize
    property string figure
    property real fontSize: 11
    property color nameColor: OstrelTheme.ink2
    property color figureColor: OstrelTheme.ink1
    readonly property real nameX: symbol !== "" ? mark.width + 6 : hasDot ? 12 : 0

    Layout.fillWidth: true
    implicitWidth: nameX + nameText.implicitWidth + 6 + figureText.implicitWidth
    implicitHeight: Math.ceil(Math.max(nameText.implicitHeight, figureText.implicitHeight))

    SymbolView {
        id: mark

        visible: line.symbol !== ""
        anchors.verticalCenter: parent.verticalCenter
        name: line.symbol
        size: line.fontSize
        tint: line.symbolColor
    }
    Rectangle {
        visible: line.hasDot
        anchors.verticalCenter: parent.verticalCenter
        width: 6
        height: 6
        radius: 3
        color: line.symbolColor
    }
    FigureText {
        id: nameText

        readonly property real room: figureText.x - 6 - x
        readonly property bool shrinks: line.smallestName < line.fontSize

        x: line.nameX
        anchors.verticalCenter: parent.verticalCenter
        width: Math.max(0, shrinks ? room : Math.min(implicitWidth, room))
        text: line.name
        font: OstrelFont.system(line.fontSize)
        fontSizeMode: shrinks ? Text.HorizontalFit : Text.FixedSize
        minimumPointSize: line.smallestName
        color: line.nameColor
    }
    FigureText {
        id: figureText

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        text: line.figure
        // Both give way alike.
        width: line.keepsWords ? Math.min(implicitWidth, (line.width - 6 - line.nameX) * implicitWidth / (implicitWidth + nameText.implicitWidth)) : implicitWidth
        fontSizeMode: line.keepsWords ? Text.HorizontalFit : Text.FixedSize
        minimumPointSize: 5
        horizontalAlignment: Text.AlignRight
        elide: Text.ElideNone
        font: OstrelFont.monospaced(line.fontSize)
        color: line.figureColor
    }
}
