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
        name: "Processes"
        stage: stage
        root: root

        function test_theApplicationsAreListedHighestFirst() {
            compare(titles(), ["application3", "application2", "application1"]);
            compare(row(0).row.cpuText, "3.0%");
            compare(row(0).row.memoryText, "3 MB");
        }
        function test_fivePillsSelectTheirLists() {
            showSamples("apps");
            for (const tab of ["projects", "containers", "ports", "idleServers", "apps"]) {
                mouseClick(view("subTab-" + tab));
                compare(Fixture.store.selectedProcessSubTab, tab);
                verify(view("subTab-" + tab).isSelected);
                verify(list().count > 0);
                compare(list().Accessible.name, view("subTab-" + tab).text);
            }
        }
        function test_aPillShowsItsCountAndNoCapsuleFor0() {
            verify(findChild(view("subTab-apps"), "badge").visible);
            compare(view("subTab-apps").badge, "3");
            compare(view("subTab-apps").Accessible.name, "Apps, 3");
            verify(!findChild(view("subTab-ports"), "badge").visible);
            compare(view("subTab-ports").Accessible.name, "Ports");
        }
        function test_theSearchFieldStandsOnAllTabsTheToggleAndThePickerOnAppsOnly() {
            for (const tab of ["apps", "projects", "containers", "ports", "idleServers"]) {
                Fixture.store.selectedProcessSubTab = tab;
                verify(view("searchField").visible);
                compare(view("systemToggle").visible, tab === "apps");
                compare(view("sortPicker").visible, tab === "apps");
            }
        }
        function test_theToggleBringsSystemProcessesAndTools() {
            showSamples("apps");
            compare(list().count, 3);
            mouseClick(view("systemToggle"));
            verify(Fixture.store.showSystemProcesses);
            compare(list().count, 5);
            compare(view("subTab-apps").badge, "5");
            verify(view("systemToggle").Accessible.checked);
            view("systemToggle").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            verify(!Fixture.store.showSystemProcesses);
        }
        function test_thePickerSortsTheList() {
            const picker = view("sortPicker");
            compare(picker.displayText, "Memory");
            compare(picker.count, 6);
            picker.forceActiveFocus();
            keyClick(Qt.Key_Down);
            compare(Fixture.store.processSortField, "cpu");
            compare(picker.Accessible.name, "Sort: CPU");
        }
        function test_typingFiltersTheListAndTheButtonEmptiesTheField() {
            const field = view("searchField");
            compare(field.placeholderText, "Filter apps, PIDs, :ports, or projects...");
            verify(!findChild(field, "clearSearch").visible);
            field.forceActiveFocus();
            keyClick("2");
            compare(Fixture.store.processSearchText, "2");
            compare(titles(), ["application2"]);
            mouseClick(findChild(field, "clearSearch"));
            compare(Fixture.store.processSearchText, "");
            compare(list().count, 3);
        }
        function test_escapeClearsTheFilter() {
            const field = view("searchField");
            field.forceActiveFocus();
            keyClick("2");
            keyClick(Qt.Key_Escape);
            compare(field.text, "");
            compare(Fixture.store.processSearchText, "");
        }
        function test_aHalfTypedTextOutlivesATick() {
            const field = view("searchField");
            field.forceActiveFocus();
            keyClick("2");
            Fixture.setApplications(4);
            Fixture.tick();
            compare(field.text, "2");
            verify(field.activeFocus);
            keyClick("3");
            compare(Fixture.store.processSearchText, "23");
        }
        function test_controlFLeadsToTheSearchField() {
            list().forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_F, Qt.ControlModifier);
            verify(view("searchField").activeFocus);
        }
        function test_aSearchWithoutHitsShowsAnEmptyListAndNoEmptyState() {
            Fixture.store.processSearchText = "zzz";
            compare(list().count, 0);
            verify(!view("emptyState").visible);
        }
        function test_aRowOpensOnAClickAndShowsItsProcesses() {
            toggle(0);
            compare(titles().slice(0, 3), ["application3", "PROCESS TREE (1)", "application3"]);
            verify(row(0).row.isExpanded);
            compare(row(2).row.pidText, "PID 1003");
            toggle(0);
            compare(list().count, 3);
        }
        function test_theChevronOpensAndClosesToo() {
            compare(part(0, "chevron").symbol, "chevron.right");
            mouseClick(part(0, "chevron"));
            compare(list().count, 5);
            compare(part(0, "chevron").symbol, "chevron.down");
            mouseClick(part(0, "chevron"));
            compare(list().count, 3);
        }
        function test_openingARowAndGoingToAnotherTabOrPaneAndBackKeepsItOpen() {
            toggle(0);
            Fixture.store.selectedProcessSubTab = "ports";
            Fixture.store.selectedProcessSubTab = "apps";
            compare(list().count, 5);
            Fixture.store.selectedPane = "history";
            Fixture.store.selectedPane = "processes";
            waitForRendering(root);
            compare(list().count, 5);
        }
        function test_aTickBringsNewFiguresAndLeavesRowsOpen() {
            toggle(0);
            Fixture.setApplications(4);
            Fixture.tick();
            compare(titles(), ["application4", "application3", "PROCESS TREE (1)", "application3", "application2", "application1"]);
        }
        function test_anOpenedApplicationShowsItsBreakdownAnd15Processes() {
            showSamples("apps");
            compare(row(0).row.title, "Web Browser");
            compare(part(0, "helpers").text, "20 helpers");
            toggle(0);
            const kinds = [...Array(21).keys()].map(index => {
                list().positionViewAtIndex(index, ListView.Contain);
                return row(index).row.kind;
            });
            compare(kinds.filter(kind => kind === "helperShare").length, 3);
            compare(kinds.filter(kind => kind === "process").length, 15);
            compare(kinds[20], "process");
            compare(list().count, 3 + 20);
        }
        function test_emptyListsSaySo_data() {
            return [["projects", "No Active Dev Projects Detected"], ["containers", "No Running Containers"], ["ports", "No Open Listening TCP Ports Found"], ["idleServers", "Zero Forgotten Dev Servers"]].map(([tab, title]) => ({
                        tag: tab,
                        title: title
                    }));
        }
        function test_emptyListsSaySo(data) {
            Fixture.store.selectedProcessSubTab = data.tag;
            tryVerify(() => view("emptyState").visible);
            compare(view("emptyState").title, data.title);
            verify(!view("idleServersHeader").visible);
        }
    }
}
