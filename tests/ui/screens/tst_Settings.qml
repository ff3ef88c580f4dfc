import QtQuick
import QtTest
import Korvantis.Screens
import ScreenTests

Item {
    id: stage

    width: 1220
    height: 790

    ThemedContent {
        id: themed

        anchors.fill: parent
        store: Fixture.store
    }

    TestCase {
        id: test

        name: "Settings"
        when: windowShown

        function init() {
            Fixture.reset();
            themed.rebuild();
            Fixture.store.look.themeMode = "dark";
            Fixture.store.showSettingsModal = true;
            tryVerify(() => view("closeSettings") !== null);
            waitForRendering(themed);
        }
        function cleanup() {
            Fixture.store.showSettingsModal = false;
        }

        // The sheet lies in the window's overlay, beside the stage.
        function view(name) {
            let top = stage;
            while (top.parent)
                top = top.parent;
            return findChild(top, name);
        }

        function test_escapeClosesTheSheet() {
            keyClick(Qt.Key_Escape);
            tryCompare(Fixture.store, "showSettingsModal", false);
        }

        function test_theCloseButtonClosesTheSheet() {
            mouseClick(view("closeSettings"));
            tryCompare(Fixture.store, "showSettingsModal", false);
        }

        function test_theSheetOpensAgain() {
            keyClick(Qt.Key_Escape);
            tryCompare(Fixture.store, "showSettingsModal", false);
            Fixture.store.showSettingsModal = true;
            tryVerify(() => view("closeSettings") !== null && view("closeSettings").visible);
        }

        function test_theIntervalTakesEffectAtOnce() {
            mouseClick(view("settings-interval-5"));
            compare(Fixture.store.refreshIntervalSeconds, 5);
            verify(view("settings-interval-5").isSelected);
            verify(!view("settings-interval-2").isSelected);
            mouseClick(view("settings-interval-1"));
            compare(Fixture.store.refreshIntervalSeconds, 1);
        }

        function test_theLookTakesEffectAtOnceAndTheSheetStaysOpen() {
            mouseClick(view("settings-theme-light"));
            compare(Fixture.store.look.themeMode, "light");
            wait(50);
            verify(Fixture.store.showSettingsModal);
            tryVerify(() => view("settings-theme-light") !== null && view("settings-theme-light").visible);
            verify(view("settings-theme-light").isSelected);
        }

        function test_everyControlHasANameAndARole() {
            compare(view("closeSettings").Accessible.name, "Close");
            compare(view("settings-theme-dark").Accessible.name, "Dark Mode");
            compare(view("settings-theme-dark").Accessible.role, Accessible.RadioButton);
            compare(view("settings-theme-dark").Accessible.checked, true);
            compare(view("settings-interval-5").Accessible.name, "5 seconds");
        }
    }
}
