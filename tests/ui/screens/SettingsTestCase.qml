import QtQuick
import QtTest
import Korvantis.Screens
import ScreenTests

// The settings over the window of a fresh launch, and the ways to their parts.
TestCase {
    id: test

    required property Item stage
    required property ThemedContent themed
    readonly property var tabs: ["Menu Bar", "Appearance", "Remote Alerts", "Integrations & MCP"]
    readonly property var alerts: Fixture.store.remoteAlerts

    when: windowShown

    function init() {
        Fixture.resetWithSettings();
        open();
    }
    function cleanup() {
        Fixture.store.showSettingsModal = false;
        stage.width = 1220;
        stage.height = 790;
    }
    // As at a launch, with the sheet over the window.
    function open() {
        themed.rebuild();
        Fixture.store.look.themeMode = "dark";
        Fixture.store.showSettingsModal = true;
        tryVerify(() => view("closeSettings") !== null);
        waitForRendering(themed);
    }
    // The sheet lies in the window's overlay, beside the stage.
    function view(name) {
        let top = stage;
        while (top.parent)
            top = top.parent;
        return findChild(top, name);
    }
    function showTab(title) {
        Fixture.store.selectedSettingsTab = title;
        tryVerify(() => scroller() !== null && scroller().place === title);
        tryVerify(() => scroller().height > 100);
        scroller().wantedY = 0;
    }
    function scroller() {
        return view("settingsScroller");
    }
    // The item of that name, scrolled to where it can be clicked.
    function reach(name) {
        const item = view(name);
        verify(item !== null, name);
        const y = item.mapToItem(scroller().contentItem, 0, 0).y;
        scroller().contentY = Math.max(0, Math.min(y - 30, scroller().contentHeight - scroller().height));
        return item;
    }
    function click(name) {
        mouseClick(reach(name));
    }
    function pick(name, index) {
        const picker = reach(name);
        mouseClick(picker);
        tryVerify(() => picker.popup.opened);
        tryVerify(() => picker.popup.contentItem.itemAtIndex(index) !== null);
        mouseClick(picker.popup.contentItem.itemAtIndex(index));
        tryVerify(() => !picker.popup.opened);
        compare(picker.currentIndex, index);
    }
    function write(name, text) {
        mouseClick(reach(name));
        for (const letter of text)
            keyClick(letter);
    }
    function focused() {
        return test.Window.window.activeFocusItem;
    }
}
