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

    SettingsTestCase {
        name: "SettingsChoices"
        stage: stage
        themed: themed

        function test_readoutsAreTickedAndUnticked() {
            showTab("Menu Bar");
            verify(view("settings-readout-cpu").isOn);
            verify(!view("settings-readout-gpu").isOn);
            click("settings-readout-gpu");
            click("settings-readout-cpu");
            compare(Fixture.enabledReadouts.join(), "memory,gpu,temperature,power");
            verify(view("settings-readout-gpu").isOn);
            verify(!view("settings-readout-cpu").isOn);
        }
        function test_theReadoutsStandInTheirOrder() {
            showTab("Menu Bar");
            const names = ["cpu", "memory", "gpu", "neuralEngine", "network", "disk", "temperature", "fans", "battery", "power", "agents"];
            let place = -1;
            for (const name of names) {
                const cell = view("settings-readout-" + name);
                const next = cell.y * 10000 + cell.x;
                verify(next > place, name);
                place = next;
            }
        }
        function test_theLastEnabledReadoutCannotBeUnticked() {
            showTab("Menu Bar");
            for (const name of ["cpu", "memory", "temperature"])
                click("settings-readout-" + name);
            compare(Fixture.enabledReadouts.join(), "power");
            verify(view("settings-readout-power").isLast);
            click("settings-readout-power");
            compare(Fixture.enabledReadouts.join(), "power");
            verify(view("settings-readout-power").isOn);
        }
        function test_displayStyleAndColourModeAreChosen() {
            showTab("Menu Bar");
            pick("settings-displayStyle", 1);
            compare(Fixture.store.menuBarSettings.displayStyle, "graph");
            pick("settings-colorMode", 2);
            compare(Fixture.store.menuBarSettings.colorMode, "colour");
        }
        function test_paletteUnitRetentionAndDensityAreChosen() {
            showTab("Appearance");
            const look = Fixture.store.look;
            pick("settings-palette", 3);
            compare(look.palette, "iris");
            pick("settings-temperatureUnit", 1);
            compare(look.temperatureUnit, "fahrenheit");
            pick("settings-retention", 2);
            compare(look.retention, "days365");
            pick("settings-density", 0);
            compare(look.density, "compact");
            click("settings-windowFloats");
            compare(look.windowFloats, true);
        }
        function test_aPickerIsDrivenByTheKeyboard() {
            showTab("Appearance");
            view("settings-retention").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Down);
            compare(Fixture.store.look.retention, "days365");
            keyClick(Qt.Key_Up);
            keyClick(Qt.Key_Up);
            compare(Fixture.store.look.retention, "days30");
        }
        function test_aPickerFollowsTheStore() {
            showTab("Appearance");
            pick("settings-palette", 4);
            Fixture.store.look.palette = "forest";
            compare(view("settings-palette").currentIndex, 0);
            compare(view("settings-palette").displayText, "Forest");
        }
        function test_theIntervalTakesEffectAtOnce() {
            showTab("Appearance");
            click("settings-interval-5");
            compare(Fixture.store.refreshIntervalSeconds, 5);
            verify(view("settings-interval-5").isSelected);
            verify(!view("settings-interval-2").isSelected);
            compare(view("settings-interval-5").symbol, "checkmark.circle.fill");
            compare(view("settings-interval-2").symbol, "");
            click("settings-interval-1");
            compare(Fixture.store.refreshIntervalSeconds, 1);
        }
        function test_changingTheIntervalTo5StartsATimerOf5SecondsAtTheClickAndTheStatusBarShows5s() {
            showTab("Appearance");
            compare(view("tickText").text, "Live 2s tick");
            const timers = Fixture.timerPeriods.length;
            click("settings-interval-5");
            compare(Fixture.timerPeriods.length, timers + 1);
            compare(Fixture.timerPeriods[timers], 5);
            compare(view("tickText").text, "Live 5s tick");
        }
    }
}
