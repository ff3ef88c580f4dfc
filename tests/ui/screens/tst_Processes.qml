import QtQuick
import QtTest
import Korvantis.Screens
import ScreenTests
import "ShownTexts.js" as Shown

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

        name: "Processes"
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

        // Words, inks and faces

        function expectWords(index, table) {
            compare(Shown.faultsIn(row(index), table), "");
        }
        function test_thePillsStandOutWhenSelected() {
            showSamples("apps");
            const selected = view("subTab-apps");
            compare(Shown.faultsIn(selected, [["Apps", OstrelTheme.ink1, OstrelFont.system(12, Font.DemiBold)], ["3", OstrelTheme.ink1, OstrelFont.monospaced(10, Font.Bold)]]), "");
            compare(Shown.faultsIn(view("subTab-ports"), [["Ports", OstrelTheme.ink2, OstrelFont.system(12, Font.Medium)], ["3", OstrelTheme.ink2, OstrelFont.monospaced(10, Font.Bold)]]), "");
            compare(String(findChild(selected, "badge").color), String(Qt.alpha(OstrelTheme.cpu, 0.25)));
        }
        function test_theToolbarSaysWhatItsControlsAreFor() {
            compare(Shown.symbolWordsOf(view("searchField")).map(words => words.split(" ")[0]), ["magnifyingglass"]);
            Fixture.store.processSearchText = "a";
            compare(Shown.symbolWordsOf(view("searchField")).map(words => words.split(" ")[0]), ["magnifyingglass", "xmark.circle.fill"]);
            compare(view("systemToggle").text, "System Processes");
            compare(Shown.textsOf(view("sortPicker")).map(text => text.text), ["Sort", "Memory"]);
        }
        function test_anApplicationSaysItsWordsInTheirInks() {
            showSamples("apps");
            const figure = OstrelFont.monospaced(11.5, Font.DemiBold);
            const label = OstrelFont.rounded(8.5, Font.Bold);
            verify(row(0).row.subtitle !== "");
            expectWords(0, [["Web Browser", OstrelTheme.ink1], ["20 helpers", OstrelTheme.ink2], ["Ask first", OstrelTheme.amberWarning], [row(0).row.subtitle, OstrelTheme.ink3, OstrelFont.system(10)], ["70.6%", OstrelTheme.heat, figure], ["CPU", OstrelTheme.ink3, label], ["4.1 GB", OstrelTheme.ink1, figure], ["MEMORY", OstrelTheme.ink3, label], ["4.2 W", OstrelTheme.ink2, figure], ["ENERGY", OstrelTheme.ink3, label], ["1.5 MB/s", OstrelTheme.ink3, figure], ["NET", OstrelTheme.ink3, label]]);
            compare(Shown.symbolWordsOf(row(0))[0].split(" ").slice(0, 2), ["chevron.right", String(OstrelTheme.ink3)]);
            compare(part(0, "quit").text, "Quit");
            expectWords(1, [["Code Editor", OstrelTheme.ink1], ["9.1%", OstrelTheme.ink1, figure]]);
            expectWords(2, [["Music Player", OstrelTheme.ink1]]);
            verify(!part(2, "helpers").visible);
        }
        function test_theDetailsOfAnApplicationSayTheirWordsInTheirInks() {
            showSamples("apps");
            toggle(1);
            expectWords(2, [["HELPER BREAKDOWN BY ROLE", OstrelTheme.ink3]]);
            expectWords(3, [["Main app", OstrelTheme.ink2], ["1p", OstrelTheme.ink3], ["280 MB · 3.1% CPU", OstrelTheme.ink1]]);
            expectWords(6, [["PROCESS TREE (7)", OstrelTheme.ink3]]);
            expectWords(8, [["PID 3001", OstrelTheme.ink3], ["extension-host", OstrelTheme.ink1], ["Extensions", OstrelTheme.ink2], [":3000", OstrelTheme.ink2], [":9229", OstrelTheme.ink2], ["6.0%", OstrelTheme.ink2], ["520 MB", OstrelTheme.ink1]]);
            verify(!Shown.textsOf(row(8)).some(text => text.text === ":50123"));
            compare(Shown.symbolWordsOf(row(8)).map(words => words.split(" ").slice(0, 2)), [["xmark.circle", String(OstrelTheme.ink3)]]);
        }
        function test_aProjectSaysItsWordsInTheirInks() {
            showSamples("projects");
            expectWords(0, [["shop", OstrelTheme.ink1], ["/home/dev/projects/shop", OstrelTheme.ink3], [":3000", OstrelTheme.ink2], [":5173", OstrelTheme.ink2], ["640 MB", OstrelTheme.ink1], ["8.5% CPU", OstrelTheme.ink2]]);
            compare(Shown.symbolWordsOf(row(0)).map(words => words.split(" ").slice(0, 2)), [["folder.fill.badge.gearshape", String(OstrelTheme.cpu)]]);
            expectWords(1, [["PID 4000", OstrelTheme.ink3], ["node", OstrelTheme.ink1], ["node /home/dev/projects/shop/node_modules/.bin/vite --port 5173 --host", OstrelTheme.ink3], ["80 MB", OstrelTheme.ink2]]);
            compare(part(1, "stop").text, "Stop");
        }
        function test_aContainerSaysItsWordsInTheirInks() {
            showSamples("containers");
            expectWords(0, [["shop-db", OstrelTheme.ink1], ["postgres:16 · Docker · Up 3 hours", OstrelTheme.ink3], [":5432", OstrelTheme.ink2], ["1.5% CPU", OstrelTheme.ink2], ["128 MB", OstrelTheme.ink1]]);
            compare(Shown.symbolWordsOf(row(0)).map(words => words.split(" ").slice(0, 2)), [["shippingbox.fill", String(OstrelTheme.gpu)]]);
        }
        function test_aPortSaysItsWordsInTheirInks() {
            showSamples("ports");
            expectWords(0, [[":3000", OstrelTheme.ink1], ["extension-host", OstrelTheme.ink1], ["Code Editor", OstrelTheme.ink3], ["PID 3001", OstrelTheme.ink3], ["520 MB", OstrelTheme.ink2]]);
            expectWords(1, [[":5173", OstrelTheme.ink1], ["node", OstrelTheme.ink1], ["/home/dev/projects/shop", OstrelTheme.ink3], ["Idle", OstrelTheme.ink2], ["PID 4000", OstrelTheme.ink3]]);
            compare(part(1, "stop").text, "Stop");
        }
        function test_anIdleServerSaysItsWordsInTheirInks() {
            showSamples("idleServers");
            compare(Shown.faultsIn(view("idleServersHeader"), [["Forgotten Dev Servers", OstrelTheme.ink1], ["These local dev servers have been listening with near-zero traffic and can be safely stopped to reclaim memory.", OstrelTheme.ink2]]), "");
            compare(view("stopAll").symbol, "stop.circle.fill");
            expectWords(0, [["shop — node", OstrelTheme.ink1], ["/home/dev/projects/shop", OstrelTheme.ink3], [":5173", OstrelTheme.ink2], ["Idle 2h 15m", OstrelTheme.ink2], ["80 MB", OstrelTheme.ink1]]);
            compare(Shown.symbolWordsOf(row(0)).map(words => words.split(" ")[0]), ["server.rack"]);
            compare(part(0, "stop").text, "Stop");
        }
        function test_anEmptyStateIsQuiet() {
            Fixture.store.selectedProcessSubTab = "containers";
            tryVerify(() => view("emptyState").visible);
            compare(Shown.faultsIn(view("emptyState"), [["No Running Containers", OstrelTheme.ink1], ["Docker, OrbStack, and Podman containers will appear here with live CPU, RAM, and mapped ports.", OstrelTheme.ink3]]), "");
            compare(Shown.symbolWordsOf(view("emptyState")), ["shippingbox.fill " + OstrelTheme.ink3 + " 26"]);
        }

        function test_theFaceOfQuitQuitsAtOnce() {
            mouseClick(part(1, "quit"));
            compare(Fixture.stopped, "quit:daemon:application2");
        }
        function test_quitAndForceQuitStandInTheMenuOfTheGroup() {
            openQuitMenuOf(0);
            compare(view("quitEntry").text, "Quit application3");
            compare(view("forceQuitEntry").text, "Force Quit application3");
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
        function test_anOpenMenuOutlivesATickAndStaysWithItsApplication() {
            openQuitMenuOf(0);
            Fixture.setApplications(5);
            Fixture.tick();
            waitForRendering(root);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            compare(Fixture.stopped, "quit:daemon:application3");
        }
        function test_theMenuKeyAndShiftF10OpenTheMenuOfTheCurrentRow_data() {
            return [
                {
                    tag: "menu key",
                    key: Qt.Key_Menu,
                    modifiers: Qt.NoModifier
                },
                {
                    tag: "Shift+F10",
                    key: Qt.Key_F10,
                    modifiers: Qt.ShiftModifier
                }
            ];
        }
        function test_theMenuKeyAndShiftF10OpenTheMenuOfTheCurrentRow(data) {
            list().forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Down);
            keyClick(data.key, data.modifiers);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            compare(Fixture.stopped, "quit:daemon:application2");
        }

        function test_theButtonOfAProcessStopsIt() {
            toggle(0);
            mouseClick(part(2, "stop"));
            compare(Fixture.stopped, "stop:1003");
        }
        function test_aRowStaysUnderThePointerWhileItsButtonIsPressed() {
            toggle(2);
            const stop = part(4, "stop");
            mousePress(stop);
            Fixture.setApplications(9);
            Fixture.tick();
            compare(list().count, 5);
            mouseRelease(stop);
            compare(Fixture.stopped, "stop:1001");
            tryCompare(list(), "count", 11);
        }
        function test_aPressedButtonHitsNoProcessThatGotThePidMeanwhile() {
            toggle(0);
            const stop = part(2, "stop");
            mousePress(stop);
            Fixture.recyclePids();
            Fixture.tick();
            mouseRelease(stop);
            compare(Fixture.stopped, "");
        }
        function test_aPressThatIsDraggedAwayStopsNothingAndLetsTheRowsCatchUp() {
            const quit = part(0, "quit");
            mousePress(quit);
            Fixture.setApplications(4);
            Fixture.tick();
            compare(list().count, 3);
            mouseMove(quit, -300, 0);
            mouseRelease(quit, -300, 0);
            compare(Fixture.stopped, "");
            tryCompare(list(), "count", 4);
        }

        function test_projectsShowTheirFirst6ProcessesWithAStopButtonEach() {
            showSamples("projects");
            compare(titles(), ["shop", "node", "node", "node", "node", "node", "node", "blog", "ruby"]);
            mouseClick(part(1, "stop"));
            compare(Fixture.stopped, "stop:4000");
        }
        function test_containersShowWhatTheyAreAndHaveNoAction() {
            showSamples("containers");
            compare(titles(), ["shop-db", "cache"]);
            compare(row(0).row.subtitle, "postgres:16 · Docker · Up 3 hours");
            verify(findChild(row(0), "stop") === null);
        }
        function test_portsShowTheirHolderAndWhetherItIsIdle() {
            showSamples("ports");
            compare(list().count, 3);
            verify(!part(0, "idle").visible);
            verify(part(1, "idle").visible);
            mouseClick(part(0, "stop"));
            compare(Fixture.stopped, "stop:3001");
        }
        // Several processes of one name often stand below each other.
        function test_stopButtonsSayWhichProcessTheyMean() {
            showSamples("ports");
            compare(part(0, "stop").Accessible.name, "Stop " + row(0).row.title + ", " + row(0).row.pidText);
            showSamples("projects");
            compare(part(1, "stop").Accessible.name, "Stop " + row(1).row.title + ", " + row(1).row.pidText);
            verify(row(1).row.pidText.startsWith("PID "));
            showSamples("idleServers");
            compare(part(0, "stop").Accessible.name, "Stop shop — node, " + row(0).row.ports.join(", "));
            verify(row(0).row.ports.length > 0);
        }
        function test_theListsBeginAtTheSameHeight() {
            const top = list().y;
            for (const tab of ["projects", "containers", "ports"]) {
                Fixture.store.selectedProcessSubTab = tab;
                waitForRendering(root);
                compare(list().y, top, tab);
            }
        }
        function test_anEmptyListSaysSoInTheMiddleOfThePane() {
            Fixture.store.selectedProcessSubTab = "containers";
            const empty = view("emptyState");
            tryVerify(() => empty.visible);
            fuzzyCompare(empty.x + empty.width / 2, empty.parent.width / 2, 1);
        }
        function test_idleServersAreStoppedOneByOneOrAllAtOnce() {
            showSamples("idleServers");
            verify(view("idleServersHeader").visible);
            compare(view("stopAll").text, "Stop All Idle Servers");
            compare(titles(), ["shop — node", "blog — ruby"]);
            mouseClick(part(1, "stop"));
            compare(Fixture.stopped, "stop:4100");
            mouseClick(view("stopAll"));
            compare(Fixture.stopped, "stop:4100 stop:4000 stop:4100");
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
        function test_aLongNameGivesWayAndNothingElse_data() {
            return [820, 1040, 1220, 1800].map(width => ({
                        tag: "width " + width,
                        width: width
                    }));
        }
        function test_aLongNameGivesWayAndNothingElse(data) {
            stage.width = data.width;
            Fixture.setApplications(1, "a".repeat(300));
            Fixture.tick();
            waitForRendering(root);
            toggle(0);
            waitForRendering(root);
            for (const index of [0, 2]) {
                const texts = expectTidy(row(index), data.width);
                verify(texts.length >= 4);
                for (const text of texts)
                    verify(text.text.startsWith("aaa") || !text.truncated, text.text);
            }
        }
        function test_nothingOverlapsInAnyListAtAnyWidth_data() {
            let cases = [];
            for (const width of [820, 1040, 1220, 1800])
                for (const tab of ["apps", "projects", "containers", "ports", "idleServers"])
                    cases.push({
                        tag: tab + " " + width,
                        tab: tab,
                        width: width
                    });
            return cases;
        }
        function test_nothingOverlapsInAnyListAtAnyWidth(data) {
            stage.width = data.width;
            showSamples(data.tab);
            if (data.tab === "apps")
                toggle(1);
            Fixture.redraw(root);
            waitForRendering(root);
            for (let index = 0; index < Math.min(9, list().count); ++index)
                expectTidy(row(index), data.width);
            for (const name of ["subTab-idleServers", "searchField"])
                verify(view(name).mapToItem(root, view(name).width, 0).x <= data.width - 15.5, name);
        }

        function test_anIdleTickRepaintsNothing() {
            wait(100);
            frames.clear();
            Fixture.tick();
            wait(100);
            compare(frames.count, 0);
            Fixture.setApplications(2);
            Fixture.tick();
            tryVerify(() => frames.count > 0);
        }
    }
}
