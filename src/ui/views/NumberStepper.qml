pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Korvantis.Screens

// A whole number between two bounds, in steps, shown as `text`. It never changes `value` itself:
// `moved` says what the user wants, and whoever hears it sets what `value` is bound to. Up and Down
// step, a button that is held down repeats.
Control {
    id: stepper

    property int value: 0
    property int from: 0
    property int to: 100
    property int stepSize: 1
    property string text: String(value)

    readonly property bool canDecrease: value > from
    readonly property bool canIncrease: value < to

    signal moved(int value)

    function step(count: int) {
        const wanted = Math.max(from, Math.min(to, value + count * stepSize));
        if (count < 0 ? canDecrease : canIncrease)
            moved(wanted);
    }

    padding: 3
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.5
    Accessible.role: Accessible.SpinBox
    Accessible.name: text
    Accessible.onIncreaseAction: step(1)
    Accessible.onDecreaseAction: step(-1)
    Keys.onUpPressed: step(1)
    Keys.onDownPressed: step(-1)

    component StepButton: AbstractButton {
        id: button

        required property string symbol
        required property string words

        implicitWidth: 24
        implicitHeight: 23
        // The stepper as a whole has the keyboard.
        focusPolicy: Qt.NoFocus
        hoverEnabled: true
        autoRepeat: true
        onPressed: stepper.forceActiveFocus(Qt.MouseFocusReason)
        Accessible.role: Accessible.Button
        Accessible.name: words + ": " + stepper.text
        Accessible.onPressAction: clicked()

        contentItem: Item {
            SymbolView {
                anchors.centerIn: parent
                name: button.symbol
                size: 9
                tint: button.enabled ? OstrelTheme.ink1 : OstrelTheme.ink4
            }
        }
        background: Rectangle {
            radius: 5
            color: button.down ? OstrelTheme.subtleBorder : button.hovered && button.enabled ? OstrelTheme.rowHover : "transparent"
        }
    }

    contentItem: Row {
        spacing: 2

        StepButton {
            objectName: "stepDown"
            symbol: "minus"
            words: "Less"
            enabled: stepper.canDecrease
            onClicked: stepper.step(-1)
        }
        FigureText {
            // As wide as two digits need, so that the buttons don't shift as it counts.
            width: Math.max(54, Math.ceil(implicitWidth) + 6)
            height: parent.height
            text: stepper.text
            font: OstrelFont.monospaced(12)
            horizontalAlignment: Text.AlignHCenter
            elide: Text.ElideNone
            Accessible.ignored: true
        }
        StepButton {
            objectName: "stepUp"
            symbol: "plus"
            words: "More"
            enabled: stepper.canIncrease
            onClicked: stepper.step(1)
        }
    }

    background: Rectangle {
        color: OstrelTheme.cardBackground
        radius: 8
        border.width: stepper.visualFocus ? 1.5 : 1
        border.color: stepper.visualFocus ? OstrelTheme.cpu : OstrelTheme.subtleBorder
    }
}
