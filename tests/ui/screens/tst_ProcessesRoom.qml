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

    ProcessesTestCase {
        id: test

        name: "ProcessesRoom"
        stage: stage
        root: root

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
