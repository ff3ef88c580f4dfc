import QtQuick
import QtTest
import Korvantis.Screens
import ScreenTests

Item {
    width: 1040
    height: 680

    InsightsPaneView {
        id: pane

        anchors.fill: parent
        store: Fixture.store
    }

    TestCase {
        name: "Insights"
        when: windowShown

        function init() {
            Fixture.reset();
        }

        function list() {
            return findChild(pane, "insightList");
        }

        function test_withNoFindingsThereIsAnEmptyState() {
            compare(list().count, 0);
            compare(findChild(pane, "findingsTitle").text, "ACTIVE & RECENT INSIGHTS (0)");
            compare(findChild(pane, "headline").text, Fixture.store.whatsWrongHeadline());
        }

        function test_findingsAreListedTheNewestFirst() {
            Fixture.setInsights(3);
            Fixture.tick();
            compare(list().count, 3);
            waitForRendering(pane);
            compare(list().itemAtIndex(0).title, "Finding 2");
            compare(list().itemAtIndex(0).metricText, "150% CPU");
            compare(list().itemAtIndex(0).Accessible.role, Accessible.ListItem);
            compare(list().itemAtIndex(0).Accessible.name, "Finding 2, 150% CPU. It has used the processor for minutes.");
        }
    }
}
