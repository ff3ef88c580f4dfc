import QtQuick
import QtTest
import Korvantis.Screens
import ScreenTests

// The insights pane in a small stage, and the ways to its parts.
TestCase {
    id: test

    required property Item stage
    required property Loader loader
    readonly property string defaults: "Google Chrome/Memory (MB)/4096/5 Xcode/CPU %/250/5"

    when: windowShown

    function init() {
        mouseMove(stage, 1, 1);
        loader.active = false;
        stage.width = 1040;
        stage.height = 680;
        Fixture.reset();
        Fixture.setApplications(3);
        Fixture.tick();
        show();
    }
    function show() {
        loader.active = true;
        waitForRendering(stage);
    }
    // Leaves the view and comes back to it.
    function reopen() {
        loader.active = false;
        show();
    }
    function tick() {
        Fixture.tick();
        tryVerify(() => !isPolishScheduled(view("findings").parent));
    }
    function view(name) {
        const found = findChild(loader.item, name);
        verify(found !== null, name);
        return found;
    }
    function card(index) {
        return view("findings").itemAt(index);
    }
    function part(index, name) {
        const found = findChild(card(index), name);
        verify(found !== null, name);
        return found;
    }
    function scroller() {
        return view("paneScroller");
    }
    function scrollTo(item) {
        const y = item.mapToItem(scroller().contentItem, 0, 0).y;
        scroller().contentY = Math.max(0, Math.min(y - 60, scroller().contentHeight - scroller().height));
        waitForRendering(stage);
    }
    function clickOn(item) {
        scrollTo(item);
        mouseClick(item);
    }
    function limitInput() {
        return view("limitField").children[0];
    }
    function typeLimit(text) {
        scrollTo(view("limitField"));
        mouseClick(limitInput());
        limitInput().selectAll();
        for (const letter of text)
            keyClick(letter);
    }
    function onScreen(item) {
        return item.mapToItem(stage, 0, 0).y;
    }
}
