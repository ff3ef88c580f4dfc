import QtQuick
import QtTest
import Korvantis.Screens

Item {
    id: stage

    width: 400
    height: 200

    TextEntry {
        id: entry

        x: 10
        y: 10
        label: "Recipient"
        placeholderText: "Number"
    }
    NumberStepper {
        id: stepper

        property int minutes: 10

        x: 10
        y: 60
        value: minutes
        from: 5
        to: 120
        stepSize: 5
        text: minutes + " min"
        onMoved: value => minutes = value
    }
    SignalSpy {
        id: edits

        target: entry
        signalName: "textEdited"
    }
    SignalSpy {
        id: moves

        target: stepper
        signalName: "moved"
    }

    TestCase {
        name: "FormControls"
        when: windowShown

        function init() {
            stepper.minutes = 10;
            entry.text = "";
            edits.clear();
            moves.clear();
        }

        function test_typingIsToldWithItsText() {
            mouseClick(entry);
            verify(entry.activeFocus);
            keyClick("a");
            keyClick("b");
            compare(entry.text, "ab");
            compare(edits.count, 2);
            compare(edits.signalArguments[1][0], "ab");
        }
        function test_aTextThatIsSetFromOutsideIsNoEdit() {
            entry.text = "set";
            compare(edits.count, 0);
        }
        function test_theFieldSaysWhatItIsFor() {
            const field = entry.children[0];
            compare(field.Accessible.role, Accessible.EditableText);
            compare(field.Accessible.name, "Recipient");
            compare(field.placeholderText, "Number");
        }
        function test_theButtonsStepAndTheStepperItselfChangesNothing() {
            mouseClick(findChild(stepper, "stepUp"));
            compare(stepper.value, 15);
            mouseClick(findChild(stepper, "stepDown"));
            mouseClick(findChild(stepper, "stepDown"));
            compare(stepper.value, 5);
            compare(stepper.text, "5 min");
            compare(moves.count, 3);
            compare(moves.signalArguments[2][0], 5);
        }
        function test_theArrowsStep() {
            stepper.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Up);
            compare(stepper.value, 15);
            keyClick(Qt.Key_Down);
            compare(stepper.value, 10);
        }
        function test_theLastStepEndsAtTheBound() {
            stepper.minutes = 118;
            stepper.forceActiveFocus();
            keyClick(Qt.Key_Up);
            compare(stepper.value, 120);
            keyClick(Qt.Key_Up);
            compare(moves.count, 1);
        }
        function test_aValueBelowTheBoundCanOnlyRise() {
            stepper.minutes = 1;
            compare(findChild(stepper, "stepDown").enabled, false);
            stepper.forceActiveFocus();
            keyClick(Qt.Key_Down);
            compare(stepper.value, 1);
            keyClick(Qt.Key_Up);
            compare(stepper.value, 6);
        }
        function test_aHeldButtonRepeats() {
            const button = findChild(stepper, "stepUp");
            mousePress(button);
            tryVerify(() => stepper.value >= 25);
            mouseRelease(button);
        }
        function test_theStepperIsASpinBox() {
            compare(stepper.Accessible.role, Accessible.SpinBox);
            compare(stepper.Accessible.name, "10 min");
            compare(findChild(stepper, "stepUp").Accessible.name, "More: 10 min");
        }
    }
}
