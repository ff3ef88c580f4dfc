import QtQuick
import QtQuick.Layouts
import Korvantis.Screens

// One of the largest applications, and a way to quit it.
RowLayout {
    id: line

    required property cardRow row

    readonly property bool hasKeyboard: button.activeFocus
    readonly property int focusReason: button.focusReason

    signal quit
    signal buttonPressed(bool isPressed)

    // For the row that follows one that left, so that the keyboard goes on from there.
    function takeFocus(reason: int) {
        button.forceActiveFocus(reason);
    }

    spacing: 6

    AppIconView {
        bundlePath: line.row.icon
        fallbackSymbol: "app.fill"
        size: 18
    }
    CardLine {
        name: line.row.name
        figure: line.row.figure
    }
    QuietButton {
        id: button

        objectName: "quit-" + line.row.name
        symbol: "xmark.circle.fill"
        hint: "Quit " + line.row.name
        padding: 2
        onDownChanged: line.buttonPressed(down)
        onClicked: line.quit()
    }
}
