import QtQuick
import Korvantis.Screens

// What the cards of projects, containers and idle servers begin with: a symbol, a name over where
// it is from, and ports. What is put inside stands at the right end.
Item {
    id: head

    required property ProcessesListRow delegate
    required property string symbol
    property color symbolColor: OstrelTheme.ink2
    readonly property processesRow row: delegate.row
    default property alias content: end.data

    SymbolView {
        id: mark

        x: 6
        anchors.verticalCenter: parent.verticalCenter
        name: head.symbol
        size: 17
        tint: head.symbolColor
    }
    NameAndPath {
        id: words

        anchors.left: mark.right
        anchors.leftMargin: 14
        anchors.right: chips.left
        anchors.rightMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        name: head.row.title
        path: head.row.subtitle
    }
    PortChips {
        id: chips

        anchors.right: end.left
        anchors.rightMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        ports: head.row.ports
        room: head.width * 0.3
    }
    Row {
        id: end

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 14
    }
}
