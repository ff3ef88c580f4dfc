import QtQuick
import QtTest
import Korvantis.Screens
import ScreenTests
import "ShownTexts.js" as Shown

Item {
    id: stage

    width: 1040
    height: 680

    Loader {
        id: loader

        anchors.fill: parent
        active: false
        sourceComponent: InsightsPaneView {
            store: Fixture.store
        }
    }

    InsightsTestCase {
        name: "Insights"
        stage: stage
        loader: loader

        // Findings

        function test_withNoFindingsTheHeaderShows0AndThereIsAnEmptyStateAndNothingToClear() {
            compare(view("findingsTitle").text, "ACTIVE & RECENT INSIGHTS (0)");
            compare(view("clearUnpinned").visible, false);
            compare(view("noFindings").visible, true);
            const texts = view("noFindings").children[0].children;
            compare(texts[0].name, "sparkles");
            compare(texts[0].size, 26);
            compare(texts[1].text, "No Active Strain Alerts");
            compare(texts[2].text, "Korvantis continuously watches for sustained CPU spikes, memory leaks, disk bursts, forgotten dev servers, and custom app thresholds.");
            compare(texts[2].width, 460);
        }
        function test_findingsAreListedTheNewestFirst() {
            Fixture.setInsights(3);
            tick();
            compare(view("findings").count, 3);
            compare(view("findingsTitle").text, "ACTIVE & RECENT INSIGHTS (3)");
            compare(view("noFindings").visible, false);
            compare(part(0, "title").text, "Finding 2");
            compare(part(0, "metric").text, "150% CPU");
            compare(part(0, "detail").text, "It has used the processor for minutes.");
            compare(card(0).Accessible.role, Accessible.Grouping);
            compare(card(0).Accessible.name, "Finding 2, 150% CPU. It has used the processor for minutes.");
            verify(card(0).y < card(1).y && card(1).y < card(2).y);
        }
        function test_pinningMarksTheCardAndUnpinningUnmarksIt() {
            Fixture.setInsights(2);
            tick();
            const frame = part(1, "frame");
            verify(Qt.colorEqual(frame.border.color, OstrelTheme.hairline));
            compare(part(1, "pinMark").visible, false);
            compare(part(1, "pin").symbol, "pin.fill");
            compare(part(1, "pin").Accessible.name, "Pin Insight");
            mouseClick(part(1, "pin"));
            compare(frame.border.color, Qt.alpha(OstrelTheme.amberWarning, 0.45));
            compare(part(1, "pinMark").visible, true);
            compare(part(1, "pinMark").name, "pin.fill");
            compare(part(1, "pin").symbol, "pin.slash.fill");
            compare(part(1, "pin").Accessible.name, "Unpin Insight");
            tick();
            compare(card(0).title, "Finding 0");
            mouseClick(part(0, "pin"));
            compare(part(0, "pinMark").visible, false);
            verify(Qt.colorEqual(part(0, "frame").border.color, OstrelTheme.hairline));
        }
        function test_clearUnpinnedLeavesThePinnedOnes() {
            Fixture.setInsights(3);
            tick();
            mouseClick(part(1, "pin"));
            compare(view("clearUnpinned").text, "Clear Unpinned");
            mouseClick(view("clearUnpinned"));
            compare(view("findings").count, 1);
            compare(card(0).title, "Finding 1");
        }
        function test_dismissTakesTheCardAway() {
            Fixture.setInsights(2);
            tick();
            mouseClick(part(0, "dismiss"));
            compare(view("findings").count, 1);
            compare(card(0).title, "Finding 0");
        }
        function test_theKeyboardGoesOnWithTheNextCardAfterADismissal() {
            Fixture.setInsights(3);
            tick();
            part(1, "dismiss").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            compare(view("findings").count, 2);
            compare(card(1).title, "Finding 0");
            verify(part(1, "dismiss").visualFocus);
            keyClick(Qt.Key_Space);
            verify(part(0, "dismiss").visualFocus);
            keyClick(Qt.Key_Space);
            compare(view("findings").count, 0);
            verify(view("insightsScroller").activeFocus);
        }
        function test_aFindingWithoutATargetHasNoSnooze() {
            Fixture.setInsights(1);
            Fixture.addInsightWithoutTarget();
            tick();
            compare(card(0).title, "Sustained high network transfer");
            compare(part(0, "snooze").visible, false);
            compare(part(1, "snooze").visible, true);
            compare(part(1, "snooze").text, "Snooze 24h");
        }
        function test_snoozeMutesTheAppForADayAndTakesTheCardAway() {
            Fixture.setInsights(2);
            tick();
            mouseClick(part(0, "snooze"));
            compare(Fixture.mutes, "app-1/87400");
            compare(view("findings").count, 1);
            compare(card(0).title, "Finding 0");
        }
        function test_aPressedButtonIsForTheFindingThatItWasPressedOn() {
            stage.height = 400;
            Fixture.setInsights(1);
            tick();
            const button = part(0, "dismiss");
            const y = onScreen(button);
            mousePress(button);
            Fixture.setInsights(3);
            tick();
            compare(card(2).title, "Finding 0");
            // What was in view has stayed there, so the pointer is still on it.
            compare(onScreen(part(2, "dismiss")), y);
            mouseRelease(stage, button.mapToItem(stage, 5, 5).x, y + 5);
            compare(view("findings").count, 2);
            compare(card(1).title, "Finding 1");
        }
        function test_aFindingSaysItsWordsInTheirInksAndFaces() {
            Fixture.setInsights(1);
            Fixture.addInsightWithoutTarget();
            tick();
            compare(Shown.faultsIn(card(1), [["Finding 0", OstrelTheme.ink1, OstrelFont.system(13, Font.Bold)], ["150% CPU", OstrelTheme.heat, OstrelFont.monospaced(10.5, Font.DemiBold)], ["It has used the processor for minutes.", OstrelTheme.ink2, OstrelFont.system(12)]]), "");
            const metric = part(1, "metric");
            compare(String(metric.color), String(Qt.alpha(OstrelTheme.heat, 0.18)));
            compare(metric.radius, metric.height / 2);
            // The badge is the same for every kind.
            for (const [index, icon] of [[0, "network"], [1, "cpu.fill"]]) {
                const badge = part(index, "badge");
                compare(String(badge.color), String(Qt.alpha(OstrelTheme.heat, 0.18)));
                compare(badge.radius, badge.width / 2);
                compare(Shown.symbolWordsOf(badge), [icon + " " + OstrelTheme.heat + " 14"]);
            }
            mouseClick(part(1, "pin"));
            compare(part(1, "pinMark").size, 10);
            compare(String(part(1, "pinMark").tint), String(OstrelTheme.amberWarning));
        }
        // The summary

        function test_theSummaryIsSetInItsFaces() {
            const summary = view("summary");
            const caption = OstrelFont.system(9.5, Font.Medium);
            const figure = OstrelFont.monospaced(12, Font.DemiBold);
            compare(Shown.faultsIn(summary, [["WHAT'S WRONG RIGHT NOW", OstrelTheme.ink2, OstrelFont.system(11, Font.Bold, 0.6)], [Fixture.store.whatsWrongHeadline(), OstrelTheme.ink1, OstrelFont.system(15, Font.Medium)], ["CPU Load", OstrelTheme.ink3, caption], ["0.0% (1m 0.00)", OstrelTheme.cpu, figure], ["Memory Pressure", OstrelTheme.ink3, caption], ["Normal", OstrelTheme.memory, figure], ["Thermal", OstrelTheme.ink3, caption], ["44°C · 8.4W", OstrelTheme.heat, figure], ["Idle Dev Servers", OstrelTheme.ink3, caption], ["0", OstrelTheme.safeGreen, figure]]), "");
            compare(Shown.symbolsOf(summary).map(symbol => symbol.name), ["stethoscope"]);
            const pill = view("pills").children[0];
            compare(String(pill.color), String(OstrelTheme.elevatedCard));
            compare(pill.radius, 8);
            const words = findChild(pill, "value").parent;
            compare(words.x, 12);
            compare(words.y, 8);
        }
        function test_theBlocksStand16Apart() {
            const gap = (above, below) => below.mapToItem(stage, 0, 0).y - above.mapToItem(stage, 0, above.height).y;
            const clear = view("clearUnpinned");
            Fixture.setInsights(1);
            tick();
            fuzzyCompare(gap(view("summary"), clear), 16, 0.6);
            fuzzyCompare(gap(clear, card(0)), 16, 0.6);
            fuzzyCompare(gap(card(0), view("limitsCard")), 16, 0.6);
            fuzzyCompare(gap(view("limitsCard"), view("briefsCard")), 16, 0.6);
        }
        function test_theSummarySaysTheHeadlineAndFourFigures() {
            compare(view("headline").text, Fixture.store.whatsWrongHeadline());
            const pills = [...Array(4).keys()].map(index => view("pills").children[index]);
            compare(pills.map(pill => pill.title), ["CPU Load", "Memory Pressure", "Thermal", "Idle Dev Servers"]);
            compare(pills.map(pill => pill.value), ["0.0% (1m 0.00)", "Normal", "44°C · 8.4W", "0"]);
            compare(pills.map(pill => String(pill.tint)), [OstrelTheme.cpu, OstrelTheme.memory, OstrelTheme.heat, OstrelTheme.safeGreen].map(String));
            Fixture.setIdleServers(2);
            tick();
            compare(pills[3].value, "2");
            compare(String(pills[3].tint), String(OstrelTheme.amberWarning));
        }
        // The scroll area

        function test_whatIsInViewStaysThereWhenFindingsComeAndGo() {
            Fixture.setInsights(20);
            tick();
            scroller().contentY = 700;
            waitForRendering(stage);
            const watched = card(9);
            const title = watched.title;
            const y = onScreen(watched);
            Fixture.setInsights(24);
            tick();
            compare(watched.title, title);
            compare(onScreen(watched), y);
            compare(card(13), watched);
            const following = onScreen(card(15));
            mouseClick(part(14, "pin"));
            tick();
            compare(card(14), watched);
            compare(onScreen(card(15)), following);
        }
        function test_atTheTopNewsIsSeen() {
            Fixture.setInsights(20);
            tick();
            Fixture.setInsights(24);
            tick();
            compare(scroller().contentY, 0);
        }
        function test_theKeyboardScrollsAndWhatItGoesToComesIntoView() {
            Fixture.setInsights(20);
            tick();
            scroller().forceActiveFocus();
            keyClick(Qt.Key_PageDown);
            compare(scroller().contentY, scroller().height * 0.9);
            keyClick(Qt.Key_End);
            compare(scroller().contentY, scroller().contentHeight - scroller().height);
            keyClick(Qt.Key_Home);
            compare(scroller().contentY, 0);
            keyClick(Qt.Key_Down);
            compare(scroller().contentY, 48);
            keyClick(Qt.Key_Up);
            compare(scroller().contentY, 0);
            view("configureBriefs").forceActiveFocus(Qt.TabFocusReason);
            const y = onScreen(view("configureBriefs"));
            verify(y > 0 && y + view("configureBriefs").height < stage.height);
        }
        function test_everyControlIsReachedByTab() {
            stage.height = 400;
            Fixture.setInsights(1);
            tick();
            scroller().forceActiveFocus(Qt.TabFocusReason);
            const reached = [];
            for (let press = 0; press < 14; ++press) {
                keyClick(Qt.Key_Tab);
                const item = stage.Window.activeFocusItem;
                reached.push(item.objectName !== "" ? item.objectName : item.parent.objectName);
            }
            compare(reached, ["clearUnpinned", "pin", "snooze", "dismiss", "trash", "trash", "appPicker", "figurePicker", "limitField", "minutesStepper", "addRule", "sendBrief", "configureBriefs", "paneScroller"]);
        }
        function test_nothingLeavesThePaneAtAnyWidth_data() {
            return [820, 1040, 1220, 1800].map(width => ({
                        tag: "width " + width,
                        width: width
                    }));
        }
        function test_nothingLeavesThePaneAtAnyWidth(data) {
            stage.width = data.width;
            Fixture.setInsights(2);
            tick();
            Fixture.redraw(stage);
            waitForRendering(stage);
            for (const name of ["addRule", "minutesStepper", "limitField", "figurePicker", "appPicker", "whatsAppChip", "configureBriefs", "clearUnpinned"]) {
                const item = view(name);
                const left = item.mapToItem(stage, 0, 0).x;
                verify(left >= 32 - 1 || name === "clearUnpinned", name + " " + left);
                verify(left + item.width <= data.width - 16 + 0.5, name + " " + (left + item.width));
            }
            verify(view("limitField").x >= view("figurePicker").x + view("figurePicker").width);
            verify(view("appPicker").width >= 120);
        }
    }
}
