import QtQuick
import QtTest
import Korvantis.Screens
import ScreenTests
import "ShownTexts.js" as Shown

Item {
    id: stage

    width: 1040
    height: 680

    Loader {
        id: loader

        anchors.fill: parent
        active: false
        sourceComponent: InsightsPaneView {
            store: Fixture.store
        }
    }

    InsightsTestCase {
        name: "InsightsRules"
        stage: stage
        loader: loader

        // Rules

        function test_theTwoDefaultLimitsAreListedAndCanBeRemoved() {
            compare(view("limits").count, 2);
            const first = view("limits").itemAt(0);
            compare(findChild(first, "appName").text, "Google Chrome");
            compare(findChild(first, "rule").text, "Memory (MB) > 4096 for 5 min");
            compare(first.Accessible.name, "Google Chrome, Memory (MB) > 4096 for 5 min");
            compare(String(findChild(first, "trash").ink), String(OstrelTheme.strainRed));
            clickOn(findChild(first, "trash"));
            compare(Fixture.limits, "Xcode/CPU %/250/5");
            clickOn(findChild(view("limits").itemAt(0), "trash"));
            compare(Fixture.limits, "");
            compare(view("limitList").visible, false);
        }
        function test_theKeyboardGoesOnAfterARemovedRule() {
            findChild(view("limits").itemAt(0), "trash").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            verify(findChild(view("limits").itemAt(0), "trash").visualFocus);
            keyClick(Qt.Key_Space);
            compare(Fixture.limits, "");
            verify(view("appPicker").activeFocus);
        }
        function test_addRuleWithNothingSelectedIsForTheFirstApp() {
            compare(view("appPicker").displayText, "Select Running App...");
            compare(view("figurePicker").displayText, "CPU %");
            compare(view("figurePicker").width, 145);
            compare(limitInput().text, "150");
            compare(limitInput().placeholderText, "150");
            compare(view("minutesStepper").text, "5 min");
            clickOn(view("addRule"));
            compare(Fixture.limits, defaults + " application1/CPU %/150/5");
            compare(view("limits").count, 3);
            compare(view("appPicker").displayText, "Select Running App...");
        }
        function test_addRuleOnAnEmptySnapshotDoesNothing() {
            Fixture.setApplications(0);
            tick();
            clickOn(view("addRule"));
            compare(Fixture.limits, defaults);
            compare(view("briefStatus").visible, false);
        }
        function test_aLimitTypedAs150Point7ShowsAs150() {
            typeLimit("150.7");
            clickOn(view("addRule"));
            compare(Fixture.limits, defaults + " application1/CPU %/150.7/5");
            compare(findChild(view("limits").itemAt(2), "rule").text, "CPU % > 150 for 5 min");
            compare(limitInput().text, "150.7");
        }
        function test_aRuleIsPutTogetherWithThePointer() {
            clickOn(view("appPicker"));
            tryVerify(() => view("appPicker").popup.opened);
            mouseClick(view("appPicker").popup.contentItem.itemAtIndex(2));
            tryVerify(() => !view("appPicker").popup.visible);
            compare(view("appPicker").displayText, "application2");
            clickOn(view("figurePicker"));
            tryVerify(() => view("figurePicker").popup.opened);
            compare(view("figurePicker").popup.contentItem.count, 4);
            mouseClick(view("figurePicker").popup.contentItem.itemAtIndex(3));
            typeLimit("12");
            clickOn(findChild(view("minutesStepper"), "stepUp"));
            compare(view("minutesStepper").text, "6 min");
            clickOn(view("addRule"));
            compare(Fixture.limits, defaults + " application2/Energy (W)/12/6");
        }
        function test_aRuleIsPutTogetherWithTheKeyboard() {
            view("appPicker").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Down);
            compare(view("appPicker").displayText, "application1");
            keyClick(Qt.Key_Tab);
            verify(view("figurePicker").activeFocus);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Tab);
            verify(limitInput().activeFocus);
            limitInput().selectAll();
            for (const digit of "512")
                keyClick(digit);
            keyClick(Qt.Key_Tab);
            verify(view("minutesStepper").visualFocus);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Tab);
            verify(view("addRule").visualFocus);
            keyClick(Qt.Key_Space);
            compare(Fixture.limits, defaults + " application1/Memory (MB)/512/4");
        }
        function test_theStepperStopsAt1AndAt60() {
            const stepper = view("minutesStepper");
            stepper.forceActiveFocus(Qt.TabFocusReason);
            compare(stepper.Accessible.role, Accessible.SpinBox);
            compare(stepper.Accessible.name, "Minutes: 5 min");
            for (let press = 0; press < 7; ++press)
                keyClick(Qt.Key_Down);
            compare(stepper.value, 1);
            compare(findChild(stepper, "stepDown").enabled, false);
            for (let press = 0; press < 70; ++press)
                keyClick(Qt.Key_Up);
            compare(stepper.value, 60);
            compare(stepper.text, "60 min");
            compare(findChild(stepper, "stepUp").enabled, false);
        }
        function test_whatIsNoNumberGivesWayToTheLastLimitWhenTheTypingIsOver() {
            typeLimit("77");
            keyClick(Qt.Key_Backspace);
            keyClick(Qt.Key_Backspace);
            compare(limitInput().text, "");
            keyClick(Qt.Key_Return);
            compare(limitInput().text, "7");
            keyClick("x");
            compare(limitInput().text, "7x");
            clickOn(view("addRule"));
            compare(limitInput().text, "7");
            compare(Fixture.limits, defaults + " application1/CPU %/7/5");
        }
        function test_aHalfTypedLimitSurvivesTicks() {
            typeLimit("12.");
            limitInput().cursorPosition = 1;
            Fixture.setInsights(2);
            Fixture.setApplications(5);
            tick();
            tick();
            compare(limitInput().text, "12.");
            compare(limitInput().cursorPosition, 1);
            verify(limitInput().activeFocus);
            keyClick("9");
            compare(limitInput().text, "192.");
        }
        function test_theFieldStaysUnderTheEyesWhileFindingsArriveAboveIt() {
            stage.height = 1200;
            Fixture.redraw(stage);
            waitForRendering(stage);
            typeLimit("1");
            compare(scroller().contentY, 0);
            const y = onScreen(view("limitField"));
            stage.height = 500;
            waitForRendering(stage);
            scrollTo(view("limitField"));
            const scrolled = onScreen(view("limitField"));
            Fixture.setInsights(4);
            tick();
            compare(onScreen(view("limitField")), scrolled);
            Fixture.setInsights(9);
            tick();
            compare(onScreen(view("limitField")), scrolled);
            verify(y > 0);
        }
        function test_anOpenMenuKeepsItsAppsAndItsPlaceThroughTicks() {
            clickOn(view("appPicker"));
            const popup = view("appPicker").popup;
            tryVerify(() => popup.opened);
            compare(popup.contentItem.count, 4);
            const entry = popup.contentItem.itemAtIndex(3);
            const y = onScreen(view("appPicker"));
            Fixture.setGroups(2, "other");
            Fixture.setInsights(3);
            tick();
            verify(popup.opened);
            compare(popup.contentItem.count, 4);
            compare(popup.contentItem.itemAtIndex(3), entry);
            compare(onScreen(view("appPicker")), y);
            keyClick(Qt.Key_Escape);
            tryVerify(() => !popup.visible);
            compare(view("appPicker").count, 3);
        }
        function test_theSelectedAppStaysSelectedWhenTheListChanges() {
            clickOn(view("appPicker"));
            tryVerify(() => view("appPicker").popup.opened);
            mouseClick(view("appPicker").popup.contentItem.itemAtIndex(3));
            tryVerify(() => !view("appPicker").popup.visible);
            compare(view("appPicker").displayText, "application3");
            Fixture.setApplications(6);
            tick();
            compare(view("appPicker").displayText, "application3");
            Fixture.setApplications(2);
            tick();
            compare(view("appPicker").displayText, "Select Running App...");
            Fixture.setApplications(4);
            tick();
            compare(view("appPicker").displayText, "application3");
            clickOn(view("addRule"));
            compare(Fixture.limits, defaults + " application3/CPU %/150/5");
        }
        function test_aLongMenuScrollsWithinTheWindow() {
            Fixture.setApplications(100);
            tick();
            clickOn(view("appPicker"));
            const popup = view("appPicker").popup;
            tryVerify(() => popup.opened);
            compare(popup.contentItem.count, 101);
            verify(popup.height <= 288);
            const top = popup.contentItem.mapToItem(stage, 0, 0).y;
            verify(top >= 0 && top + popup.contentItem.height <= stage.height);
            keyClick(Qt.Key_Escape);
        }
        function test_theEditorsStateIsLostWhenTheViewGoesAway() {
            typeLimit("99");
            clickOn(findChild(view("minutesStepper"), "stepUp"));
            view("figurePicker").forceActiveFocus();
            keyClick(Qt.Key_Down);
            view("appPicker").forceActiveFocus();
            keyClick(Qt.Key_Down);
            reopen();
            compare(limitInput().text, "150");
            compare(view("minutesStepper").text, "5 min");
            compare(view("figurePicker").displayText, "CPU %");
            compare(view("appPicker").displayText, "Select Running App...");
            compare(Fixture.limits, defaults);
        }
        function test_theRulesSayTheirWordsInTheirInks() {
            compare(Shown.faultsIn(view("limitsCard"), [["CUSTOM APP THRESHOLD RULES", OstrelTheme.ink2, OstrelFont.system(11, Font.Bold, 0.6)], ["Google Chrome", OstrelTheme.ink1, OstrelFont.system(12.5, Font.Medium)], ["Memory (MB) > 4096 for 5 min", OstrelTheme.ink2, OstrelFont.system(11.5)], ["App", OstrelTheme.ink3], ["Metric", OstrelTheme.ink3], ["Limit:", OstrelTheme.ink3], ["5 min", OstrelTheme.ink1], ["Add Rule", OstrelTheme.cpu]]), "");
            compare(findChild(view("limits").itemAt(0), "trash").symbol, "trash");
        }
    }
}
