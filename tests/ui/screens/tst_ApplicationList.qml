import QtQuick
import QtTest
import Korvantis.Screens
import ScreenTests

Item {
    id: stage

    width: 1220
    height: 790

    ThemedContent {
        id: root

        anchors.fill: parent
        store: Fixture.store
    }

    SignalSpy {
        id: frames

        target: test.Window.window
        signalName: "frameSwapped"
    }

    TestCase {
        id: test

        name: "ApplicationList"
        when: windowShown

        function init() {
            Fixture.reset();
            stage.width = 1220;
            Fixture.setGroups(3);
            Fixture.tick();
            Fixture.store.selectedPane = "processes";
            root.rebuild();
            waitForRendering(root);
        }

        function list() {
            return findChild(root, "applicationList");
        }
        function row(index) {
            list().forceLayout();
            const found = list().itemAtIndex(index);
            verify(found !== null, "row " + index);
            return found;
        }
        function openQuitMenuOf(index) {
            mouseClick(findChild(row(index), "rowAction"));
            waitForRendering(root);
        }

        function test_theApplicationsAreListedHighestFirst() {
            compare(list().count, 3);
            compare(row(0).name, "application3");
            compare(row(0).cpuText, "3.0%");
            compare(row(0).memoryText, "3 MB");
            compare(row(0).countText, "1 process");
        }

        function test_aTickBringsNewFigures() {
            Fixture.setGroups(4);
            Fixture.tick();
            compare(list().count, 4);
            compare(row(0).name, "application4");
        }

        function test_aRowOpensOnAClickAndShowsItsProcesses() {
            mouseClick(row(0), 60, 10);
            compare(list().count, 4);
            verify(row(0).isExpanded);
            verify(!row(1).isGroup);
            compare(row(1).pidText, "PID 1003");
            mouseClick(row(0), 60, 10);
            compare(list().count, 3);
        }

        function test_openedRowsSurviveAChangeOfPane() {
            mouseClick(row(0), 60, 10);
            Fixture.store.selectedPane = "history";
            Fixture.store.selectedPane = "processes";
            waitForRendering(root);
            compare(list().count, 4);
        }

        function test_typingFiltersTheList() {
            const field = findChild(root, "searchField");
            field.forceActiveFocus();
            keyClick("2");
            compare(Fixture.store.processSearchText, "2");
            compare(list().count, 1);
            compare(row(0).name, "application2");
            mouseClick(findChild(field, "clearSearch"));
            compare(Fixture.store.processSearchText, "");
            compare(list().count, 3);
        }

        function test_escapeClearsTheFilter() {
            const field = findChild(root, "searchField");
            field.forceActiveFocus();
            keyClick("2");
            keyClick(Qt.Key_Escape);
            compare(field.text, "");
            compare(Fixture.store.processSearchText, "");
        }

        function test_aSearchWithoutHitsSaysSo() {
            Fixture.store.processSearchText = "zzz";
            compare(list().count, 0);
        }

        function test_thePickerSortsTheList() {
            const picker = findChild(root, "sortPicker");
            compare(picker.displayText, "Memory");
            compare(picker.count, 6);
            picker.forceActiveFocus();
            keyClick(Qt.Key_Down);
            compare(Fixture.store.processSortField, "cpu");
            compare(picker.Accessible.name, "Sort: CPU");
        }

        function test_quitAndForceQuitStandInTheMenuOfTheGroup() {
            openQuitMenuOf(0);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            compare(Fixture.stopped, "quit:daemon:application3");
            openQuitMenuOf(1);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            compare(Fixture.stopped, "quit:daemon:application3 force:daemon:application2");
        }

        function test_escapeLeavesTheMenuWithoutStoppingAnything() {
            openQuitMenuOf(0);
            keyClick(Qt.Key_Escape);
            compare(Fixture.stopped, "");
        }

        function test_theButtonOfAProcessStopsIt() {
            mouseClick(row(0), 60, 10);
            mouseClick(findChild(row(1), "rowAction"));
            compare(Fixture.stopped, "stop:1003");
        }

        function test_arrowKeysGoThroughTheRowsAndOpenThem() {
            list().forceActiveFocus(Qt.TabFocusReason);
            compare(list().currentIndex, 0);
            keyClick(Qt.Key_Down);
            compare(list().currentIndex, 1);
            keyClick(Qt.Key_Right);
            compare(list().count, 4);
            keyClick(Qt.Key_Left);
            compare(list().count, 3);
            keyClick(Qt.Key_Space);
            compare(list().count, 4);
            keyClick(Qt.Key_End);
            compare(list().currentIndex, 3);
            keyClick(Qt.Key_Home);
            compare(list().currentIndex, 0);
        }

        function test_theFocusRingIsForTheKeyboardOnly() {
            mouseClick(row(0), 60, 10);
            verify(list().activeFocus);
            verify(!row(0).showsFocusRing);
            keyClick(Qt.Key_Down);
            verify(row(1).showsFocusRing);
            verify(!row(0).showsFocusRing);
        }

        function test_tabLeadsFromTheListToTheButtonOfItsCurrentRowOnly() {
            list().forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Tab);
            const button = findChild(row(1), "rowAction");
            verify(button.activeFocus);
            verify(button.visualFocus);
            keyClick(Qt.Key_Tab);
            verify(!findChild(row(2), "rowAction").activeFocus);
        }

        function test_downFromAButtonLeadsBackToTheList() {
            list().forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Tab);
            verify(findChild(row(0), "rowAction").activeFocus);
            keyClick(Qt.Key_Down);
            compare(list().currentIndex, 1);
            compare(test.Window.window.activeFocusItem, list());
        }

        function test_rowsAndTheirButtonsAreSaidAloud() {
            compare(list().Accessible.role, Accessible.List);
            compare(list().Accessible.name, "Applications");
            compare(row(0).Accessible.role, Accessible.ListItem);
            compare(row(0).Accessible.name, "application3, 1 process, CPU 3.0%, memory 3 MB, disk 0 B/s");
            compare(findChild(row(0), "rowAction").Accessible.name, "Quit application3");
            mouseClick(row(0), 60, 10);
            compare(findChild(row(1), "rowAction").Accessible.name, "Stop application3");
            compare(findChild(root, "searchField").Accessible.name, "Filter apps, PIDs, :ports, or projects...");
        }

        function test_theBannersButtonLeadsToTheInsights() {
            Fixture.store.selectedPane = "overview";
            waitForRendering(root);
            mouseClick(findChild(root, "inspectInsights"));
            compare(Fixture.store.selectedPane, "insights");
        }

        function test_aLongNameGivesWayAndNothingElse_data() {
            return [1040, 1220, 1800].map(width => ({
                        tag: "width " + width,
                        width: width
                    }));
        }
        function test_aLongNameGivesWayAndNothingElse(data) {
            stage.width = data.width;
            Fixture.setGroups(1, "a".repeat(300));
            Fixture.tick();
            waitForRendering(root);
            verify(row(0).width <= data.width - 32);
            const texts = textsOf(row(0)).filter(text => text.visible && text.text !== "");
            verify(texts.length >= 7);
            let right = 0;
            for (const text of texts) {
                const left = text.mapToItem(row(0), 0, 0).x;
                verify(left >= right - 0.5, text.text + " begins at " + left + " before " + right);
                right = left + text.width;
                if (!text.text.startsWith("aaa"))
                    verify(!text.truncated && text.contentWidth <= text.width + 0.5, text.text);
            }
            verify(right <= row(0).width);
        }
        function textsOf(item) {
            let texts = [];
            for (let index = 0; index < item.children.length; ++index) {
                const child = item.children[index];
                if (child.contentWidth !== undefined && child.truncated !== undefined)
                    texts.push(child);
                texts = texts.concat(textsOf(child));
            }
            return texts.sort((one, other) => one.mapToItem(root, 0, 0).x - other.mapToItem(root, 0, 0).x);
        }

        function test_anIdleTickRepaintsNothing() {
            Fixture.store.selectedPane = "processes";
            waitForRendering(root);
            wait(100);
            frames.clear();
            Fixture.tick();
            wait(100);
            compare(frames.count, 0);
            Fixture.setGroups(2);
            Fixture.tick();
            tryVerify(() => frames.count > 0);
        }
    }
}
