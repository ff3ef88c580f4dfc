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
        name: "ProcessesActions"
        stage: stage
        root: root

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
    }
}
