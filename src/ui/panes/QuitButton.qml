import QtQuick
import Korvantis.Screens

// Quits an application at once on its face, and offers both ways to do so behind its arrow.
Rectangle {
    id: button

    required property ProcessesListRow delegate

    implicitWidth: face.implicitWidth + arrow.implicitWidth + 1
    implicitHeight: face.implicitHeight
    color: OstrelTheme.elevatedCard
    radius: 7
    border.width: 1
    border.color: OstrelTheme.subtleBorder

    RowButton {
        id: face

        objectName: "quit"
        delegate: button.delegate
        text: "Quit"
        ink: OstrelTheme.ink2
        leftPadding: 10
        rightPadding: 8
        Accessible.name: "Quit " + delegate.row.title
        onClicked: delegate.quit(false)
    }
    Rectangle {
        x: face.width
        y: 5
        width: 1
        height: parent.height - 10
        color: OstrelTheme.subtleBorder
    }
    RowButton {
        id: arrow

        objectName: "quitMenuButton"
        x: face.width + 1
        height: parent.height
        delegate: button.delegate
        symbol: "chevron.down"
        fontSize: 9
        leftPadding: 6
        rightPadding: 7
        Accessible.name: "Ways to quit " + delegate.row.title
        onClicked: delegate.openQuitMenu(button)

        contentItem: Item {
            implicitWidth: 12
            implicitHeight: 12

            SymbolView {
                anchors.centerIn: parent
                name: arrow.symbol
                size: arrow.fontSize
                tint: arrow.hovered ? arrow.hoverInk : arrow.ink
            }
        }
    }
}
