import QtQuick
import QtTest
import Korvantis.Screens
import ScreenTests

Item {
    id: stage

    width: 1220
    height: 790

    Component {
        id: windowComponent

        SettingsWindow {
            store: Fixture.store
        }
    }
    Component {
        id: compositionComponent

        SettingsCompositionView {
            width: 1220
            height: 790
            store: Fixture.store
        }
    }

    TestCase {
        name: "SettingsWindow"
        when: windowShown

        function init() {
            Fixture.reset();
            Fixture.store.look.themeMode = "dark";
        }

        function openWindow() {
            const window = createTemporaryObject(windowComponent, stage);
            window.show();
            tryVerify(() => findChild(window.contentItem, "settingsScroller") !== null);
            return window;
        }

        function test_theWindowHasAFixedFrameThatFitsASmallScreen() {
            const window = openWindow();
            compare(window.title, "Korvantis Preferences");
            compare(window.width, 680);
            compare(window.height, 640);
            compare(window.minimumWidth, window.maximumWidth);
            compare(window.minimumHeight, window.maximumHeight);
        }

        function test_theCloseButtonClosesTheWindow() {
            const window = openWindow();
            tryCompare(window, "visible", true);
            mouseClick(findChild(window.contentItem, "closeSettings"));
            tryCompare(window, "visible", false);
        }

        function test_aControlInTheWindowActsAtOnceAndTheLookKeepsThePlace() {
            const window = openWindow();
            Fixture.store.selectedSettingsTab = "Appearance";
            tryVerify(() => findChild(window.contentItem, "settings-theme-light") !== null);
            const button = findChild(window.contentItem, "settings-theme-light");
            waitForRendering(window.contentItem, 300);
            mouseClick(button);
            compare(Fixture.store.look.themeMode, "light");
            wait(50);
            tryVerify(() => findChild(window.contentItem, "settings-theme-light").isSelected);
            compare(window.activeFocusItem.objectName, "settings-theme-light");
        }

        function test_theCompositionShowsTheSettingsInTheMiddleOfADarkenedRootView() {
            Fixture.store.selectedSettingsTab = "Remote Alerts";
            Fixture.store.remoteAlerts.iMessageRecipient = "+1 (555) 019-2834";
            const composition = createTemporaryObject(compositionComponent, stage);
            const close = findChild(composition, "closeSettings");
            verify(close !== null);
            compare(findChild(composition, "settings-iMessageRecipient").text, "+1 (555) 019-2834");
            const modal = close.parent.parent.parent;
            const spot = modal.mapToItem(composition, 0, 0);
            fuzzyCompare(spot.x + modal.width / 2, 610, 1);
            fuzzyCompare(spot.y + modal.height / 2, 395, 1);
        }
    }
}
