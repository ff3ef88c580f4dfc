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

    ProcessesTestCase {
        id: test

        name: "ProcessesKeyboard"
        stage: stage
        root: root

        function test_arrowKeysGoThroughTheRowsAndOpenThem() {
            list().forceActiveFocus(Qt.TabFocusReason);
            compare(list().currentIndex, 0);
            keyClick(Qt.Key_Down);
            compare(list().currentIndex, 1);
            keyClick(Qt.Key_Right);
            compare(list().count, 5);
            keyClick(Qt.Key_Left);
            compare(list().count, 3);
            keyClick(Qt.Key_Space);
            compare(list().count, 5);
            keyClick(Qt.Key_End);
            compare(list().currentIndex, 4);
            keyClick(Qt.Key_Home);
            compare(list().currentIndex, 0);
            keyClick(Qt.Key_PageDown);
            compare(list().currentIndex, 4);
            keyClick(Qt.Key_PageUp);
            compare(list().currentIndex, 0);
        }
        function test_leftLeadsFromAProcessToItsApplication() {
            toggle(1);
            list().forceActiveFocus(Qt.TabFocusReason);
            list().currentIndex = 3;
            keyClick(Qt.Key_Left);
            compare(list().currentIndex, 1);
            compare(list().count, 5);
            keyClick(Qt.Key_Left);
            compare(list().count, 3);
        }
        function test_theFocusRingIsForTheKeyboardOnly() {
            toggle(0);
            verify(list().activeFocus);
            verify(!row(0).showsFocusRing);
            keyClick(Qt.Key_Down);
            verify(row(1).showsFocusRing);
            verify(!row(0).showsFocusRing);
        }
        function test_tabLeadsFromTheListToTheButtonsOfItsCurrentRowOnly() {
            list().forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Down);
            for (const name of ["chevron", "quit", "quitMenuButton"]) {
                keyClick(Qt.Key_Tab);
                verify(part(1, name).activeFocus, name);
                verify(part(1, name).visualFocus, name);
            }
            keyClick(Qt.Key_Tab);
            const focused = test.Window.window.activeFocusItem;
            for (const name of ["chevron", "quit", "quitMenuButton"])
                verify(focused !== part(2, name) && focused !== part(0, name));
        }
        function test_theButtonsOfAProcessAndOfEveryOtherListAreReachedToo() {
            showSamples("apps");
            toggle(0);
            list().forceActiveFocus(Qt.TabFocusReason);
            list().currentIndex = 6;
            keyClick(Qt.Key_Tab);
            verify(part(6, "stop").activeFocus);
            keyClick(Qt.Key_Space);
            compare(Fixture.stopped, "stop:2000");
            for (const [tab, index] of [["projects", 1], ["ports", 0], ["idleServers", 0]]) {
                Fixture.store.selectedProcessSubTab = tab;
                list().forceActiveFocus(Qt.TabFocusReason);
                list().currentIndex = index;
                keyClick(Qt.Key_Tab);
                verify(part(index, "stop").activeFocus, tab);
            }
        }
        function test_downFromAButtonLeadsBackToTheList() {
            list().forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Tab);
            verify(part(0, "chevron").activeFocus);
            keyClick(Qt.Key_Down);
            compare(list().currentIndex, 1);
            compare(test.Window.window.activeFocusItem, row(1));
        }
        // A screen reader says what gets the focus.
        function test_theRowThatTheArrowsReachHasTheFocusItself() {
            list().forceActiveFocus(Qt.TabFocusReason);
            compare(test.Window.window.activeFocusItem, row(0));
            keyClick(Qt.Key_Down);
            compare(test.Window.window.activeFocusItem, row(1));
            keyClick(Qt.Key_Tab);
            verify(part(1, "chevron").activeFocus);
            keyClick(Qt.Key_Up);
            compare(test.Window.window.activeFocusItem, row(0));
            keyClick(Qt.Key_Down);
            compare(test.Window.window.activeFocusItem, row(1));
            mouseClick(row(2), 60, 10);
            compare(test.Window.window.activeFocusItem, row(2));
        }
        function test_shiftTabLeadsFromARowBackOutOfTheList() {
            list().forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Tab);
            verify(part(1, "chevron").activeFocus);
            keyClick(Qt.Key_Backtab);
            verify(view("sortPicker").activeFocus);
            keyClick(Qt.Key_Tab);
            verify(row(1).activeFocus);
            keyClick(Qt.Key_Down);
            compare(test.Window.window.activeFocusItem, row(2));
            keyClick(Qt.Key_Backtab);
            verify(view("sortPicker").activeFocus);
        }
        function test_theFocusStaysWithItsRowOverATick() {
            list().forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Tab);
            Fixture.setApplications(6);
            Fixture.tick();
            list().forceLayout();
            compare(list().currentIndex, 3);
            verify(part(3, "chevron").activeFocus);
            compare(row(3).row.title, "application3");
        }
        function test_theScrollPositionOutlivesATick() {
            Fixture.setApplications(60);
            Fixture.tick();
            list().positionViewAtIndex(30, ListView.Beginning);
            const before = list().contentY;
            verify(before > 0);
            Fixture.setCPU(77);
            Fixture.tick();
            waitForRendering(root);
            compare(list().contentY, before);
        }
        function test_anotherTabBeginsAtItsTop() {
            Fixture.setSampleMachine();
            Fixture.tick();
            toggle(0);
            list().positionViewAtEnd();
            Fixture.store.selectedProcessSubTab = "projects";
            compare(list().contentY, list().originY);
            compare(list().currentIndex, -1);
        }
        function test_onlyVisibleRowsAreBuiltHoweverManyTicksPass() {
            Fixture.store.processSortField = "cpu";
            for (let round = 0; round < 10; ++round) {
                Fixture.setLargeMachine(round);
                Fixture.tick();
                waitForRendering(root);
            }
            compare(list().count, 300);
            verify(list().contentItem.children.length < 60, list().contentItem.children.length);
        }
        function test_typingInALargeListLeavesTheMatchesInOrder() {
            Fixture.setLargeMachine(0);
            Fixture.tick();
            view("searchField").forceActiveFocus();
            for (const key of ["a", "p", "p", "l"])
                keyClick(key);
            compare(list().count, 300);
            Fixture.store.processSearchText = "application29";
            compare(list().count, 11);
            Fixture.store.processSearchText = "";
            compare(list().count, 300);
        }
        function test_rowsAndTheirButtonsAreSaidAloud() {
            compare(list().Accessible.role, Accessible.List);
            compare(list().Accessible.name, "Apps");
            compare(row(0).Accessible.role, Accessible.ListItem);
            verify(row(0).Accessible.name.startsWith("application3, Safe to quit, CPU 3.0%, memory 3 MB, "), row(0).Accessible.name);
            compare(row(0).Accessible.description, "Closed");
            compare(part(0, "chevron").Accessible.name, "Open application3");
            compare(part(0, "quit").Accessible.name, "Quit application3");
            compare(part(0, "quitMenuButton").Accessible.name, "Ways to quit application3");
            toggle(0);
            compare(part(2, "stop").Accessible.name, "Stop application3, " + row(2).row.pidText);
            compare(view("searchField").Accessible.name, "Filter apps, PIDs, :ports, or projects...");
            compare(view("subTab-apps").Accessible.role, Accessible.PageTab);
        }
    }
}
