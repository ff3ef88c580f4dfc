import QtQuick
import QtTest
import Korvantis.Screens
import ScreenTests
import "ShownTexts.js" as Shown

// The processes pane in a stage of the usual size, and the ways to its parts.
TestCase {
    id: test

    required property Item stage
    required property ThemedContent root

    when: windowShown

    function init() {
        mouseMove(stage, 1, 1);
        Fixture.reset();
        stage.width = 1220;
        Fixture.setApplications(3);
        show();
    }
    function show() {
        Fixture.tick();
        Fixture.store.selectedPane = "processes";
        root.rebuild();
        waitForRendering(root);
    }
    function showSamples(tab) {
        Fixture.setSampleMachine();
        Fixture.store.selectedProcessSubTab = tab;
        show();
    }
    function view(name) {
        const found = findChild(root, name);
        verify(found !== null, name);
        return found;
    }
    function list() {
        return view("processesList");
    }
    function row(index) {
        list().forceLayout();
        const found = list().itemAtIndex(index);
        verify(found !== null, "row " + index);
        return found;
    }
    function part(index, name) {
        const found = findChild(row(index), name);
        verify(found !== null, name + " of row " + index);
        return found;
    }
    function openQuitMenuOf(index) {
        mouseClick(part(index, "quitMenuButton"));
        waitForRendering(root);
    }
    function toggle(index) {
        mouseClick(row(index), 60, 10);
    }
    function titles() {
        list().forceLayout();
        return [...Array(list().count).keys()].map(index => row(index).row.title);
    }
    // Words, inks and faces

    function expectWords(index, table) {
        compare(Shown.faultsIn(row(index), table), "");
    }
    function textsOf(item) {
        let texts = [];
        for (let index = 0; index < item.children.length; ++index) {
            const child = item.children[index];
            if (child.contentWidth !== undefined && child.truncated !== undefined)
                texts.push(child);
            texts = texts.concat(textsOf(child));
        }
        return texts;
    }
    function overlaps(one, other) {
        const a = one.mapToItem(root, 0, 0);
        const b = other.mapToItem(root, 0, 0);
        const apart = a.x + one.width <= b.x + 0.5 || b.x + other.width <= a.x + 0.5 || a.y + one.height <= b.y + 1.5 || b.y + other.height <= a.y + 1.5;
        return !apart;
    }
    function expectTidy(item, width) {
        const texts = textsOf(item).filter(text => text.visible && text.text !== "" && text.opacity > 0 && text.width > 0);
        for (const text of texts) {
            const left = text.mapToItem(item, 0, 0).x;
            verify(left >= 0 && left + text.width <= item.width, text.text);
            for (const other of texts)
                verify(text === other || !overlaps(text, other), text.text + " over " + other.text);
        }
        verify(item.width <= width - 32);
        return texts;
    }
}
