import QtQuick
import QtTest
import Korvantis.Screens
import ScreenTests

Item {
    id: frame

    width: 1040
    height: 680

    HistoryPaneView {
        id: pane

        anchors.fill: parent
        store: Fixture.store
    }

    TestCase {
        name: "History"
        when: windowShown

        readonly property var metrics: ["cpu", "memory", "gpu", "neuralEngine", "temperature", "fans", "power"]
        readonly property var ranges: ["hour1", "hour6", "hour24", "days7", "days30", "days90", "year1"]

        function init() {
            Fixture.reset();
            frame.width = 1040;
            mouseMove(pane, 2, 2);
        }

        // A store whose history has so many rows and applications.
        function fill(rows, applications) {
            Fixture.setHistory(rows, 1.8e9, applications);
            Fixture.store.reloadHistory();
        }
        function view(name) {
            return findChild(pane, name);
        }
        // The chart's own reading aid, from the left edge to the right edge of the curves.
        function hover(share) {
            const chart = view("historyChart");
            mouseMove(chart, chart.plot.x + share * (chart.plot.width - 1), 80);
        }

        function test_theChipsStandInOrder() {
            compare(metrics.map(name => view("metric-" + name).text).join(), "CPU,Memory,GPU,Neural Engine,Temperature,Fans,System Power");
            compare(ranges.map(name => view("range-" + name).text).join(), "1h,6h,24h,7d,30d,90d,1y");
            for (let index = 1; index < metrics.length; ++index) {
                verify(view("metric-" + metrics[index]).x > view("metric-" + metrics[index - 1]).x);
                verify(view("range-" + ranges[index]).x > view("range-" + ranges[index - 1]).x);
            }
        }

        function test_theChosenChipsAreTinted() {
            const cpu = view("metric-cpu");
            verify(cpu.isSelected);
            compare(String(cpu.contentItem.color), String(OstrelTheme.cpu));
            compare(String(cpu.background.color), String(Qt.alpha(OstrelTheme.cpu, 0.22)));
            compare(String(view("metric-gpu").contentItem.color), String(OstrelTheme.ink2));
            const day = view("range-hour24");
            verify(day.isSelected);
            compare(String(day.contentItem.color), String(OstrelTheme.ink1));
            compare(String(day.background.color), String(OstrelTheme.elevatedCard));
            compare(String(view("range-year1").contentItem.color), String(OstrelTheme.ink3));
            compare(String(view("range-year1").background.color), String(Qt.rgba(0, 0, 0, 0)));
        }

        function test_theStartLoadsNothingMore() {
            compare(Fixture.store.selectedHistoryRange, "hour24");
            compare(Fixture.historyLoads, 1);
        }

        function test_switchingMetricsChangesTheCardAtOnceWithNoQuery() {
            fill(3, 0);
            const loads = Fixture.historyLoads;
            compare(view("chartTitle").text, "CPU HISTORY (24H)");
            compare(view("average").text, "Average: 2.0 %");
            compare(view("peak").text, "Peak: 13.0 %");
            for (const name of metrics) {
                mouseClick(view("metric-" + name));
                compare(Fixture.store.selectedHistoryMetric, name);
                verify(view("metric-" + name).isSelected);
                compare(view("chartTitle").text, view("metric-" + name).text.toUpperCase() + " HISTORY (24H)");
                compare(String(view("peak").color), String(view("metric-" + name).selectedInk));
                compare(view("historyChart").series.count, 3);
            }
            compare(view("average").text, "Average: 0.0 W");
            compare(Fixture.historyLoads, loads);
        }

        function test_switchingRangesQueriesAgain() {
            const loads = Fixture.historyLoads;
            Fixture.setHistory(5, 1.8e9, 2);
            mouseClick(view("range-days7"));
            compare(Fixture.store.selectedHistoryRange, "days7");
            compare(Fixture.historyLoads, loads + 1);
            compare(view("chartTitle").text, "CPU HISTORY (7D)");
            compare(view("ledgerTitle").text, "HISTORICAL APP RESOURCE LEDGER (7D)");
            compare(view("historyChart").series.count, 5);
            mouseClick(view("range-days7"));
            compare(Fixture.historyLoads, loads + 1);
        }

        function test_ticksReloadNothing() {
            fill(3, 1);
            const loads = Fixture.historyLoads;
            Fixture.setHistory(9, 1.8e9, 9);
            Fixture.tick();
            compare(Fixture.historyLoads, loads);
            compare(view("historyChart").series.count, 3);
        }

        function test_anEmptyHistoryShowsAnEmptyChartAndLedger() {
            compare(view("average").text, "Average: 0.0 %");
            compare(view("peak").text, "Peak: 0.0 %");
            compare(view("historyChart").height, 210);
            verify(view("ledger-0") === null);
            hover(0.5);
            verify(!view("reading").visible);
        }

        function test_exportShowsItsMessageInTheSamePlaceAndColour() {
            const message = view("exportMessage");
            verify(!message.visible);
            mouseClick(view("exportCSV"));
            compare(Fixture.exports, 1);
            compare(message.text, "Failed to export CSV files");
            verify(message.visible);
            compare(String(message.color), String(OstrelTheme.safeGreen));
            Fixture.setExportSucceeds(true);
            view("exportCSV").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            compare(Fixture.exports, 2);
            compare(message.text, "Exported readings.csv & usage.csv to Downloads");
            compare(String(message.color), String(OstrelTheme.safeGreen));
        }

        function test_thePointerReadsTheRowUnderIt() {
            fill(11, 0);
            hover(0);
            verify(view("reading").visible);
            compare(view("historyChart").reading.average, "Average: 1.0 %");
            compare(view("historyChart").reading.peak, "Peak: 11.0 %");
            hover(0.5);
            compare(view("historyChart").reading.average, "Average: 6.0 %");
            verify(view("reading").x > view("historyChart").reading.x);
            hover(1);
            compare(view("historyChart").reading.average, "Average: 11.0 %");
            // Its room is known once its words are laid out.
            tryVerify(() => view("reading").width > 100);
            verify(view("reading").x + view("reading").width < view("historyChart").reading.x);
            mouseMove(pane, 2, 2);
            verify(!view("reading").visible);
        }

        function test_theKeyboardReadsRowAfterRow() {
            fill(11, 0);
            const chart = view("chart");
            const reading = () => view("historyChart").reading;
            chart.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Home);
            compare(reading().average, "Average: 1.0 %");
            keyClick(Qt.Key_Right);
            compare(reading().average, "Average: 2.0 %");
            keyClick(Qt.Key_End);
            compare(reading().average, "Average: 11.0 %");
            keyClick(Qt.Key_Left);
            compare(reading().average, "Average: 10.0 %");
            verify(view("reading").visible);
            keyClick(Qt.Key_Escape);
            verify(!view("reading").visible);
            keyClick(Qt.Key_Left);
            compare(reading().average, "Average: 11.0 %");
            view("exportCSV").forceActiveFocus(Qt.TabFocusReason);
            verify(!view("reading").visible);
        }

        function test_theReadingIsSaidAloud() {
            fill(11, 0);
            const chart = view("chart");
            compare(chart.Accessible.role, Accessible.Chart);
            compare(chart.Accessible.name, "CPU HISTORY (24H). Average: 6.0 %, Peak: 21.0 %");
            chart.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Home);
            compare(chart.Accessible.name, view("historyChart").reading.sentence);
            verify(chart.Accessible.name.endsWith(". Average: 1.0 %, Peak: 11.0 %"));
            compare(view("metric-cpu").Accessible.role, Accessible.RadioButton);
            verify(view("metric-cpu").Accessible.checked);
            verify(!view("metric-gpu").Accessible.checked);
            compare(view("exportCSV").Accessible.name, "Export CSV");
        }

        function test_everyControlIsReachedByTheKeyboard() {
            view("metric-cpu").forceActiveFocus(Qt.TabFocusReason);
            const names = metrics.map(name => "metric-" + name).concat(ranges.map(name => "range-" + name), "exportCSV", "chart");
            for (const name of names) {
                verify(view(name).activeFocus, name);
                keyClick(Qt.Key_Tab);
            }
            view("metric-cpu").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Right);
            verify(view("metric-memory").activeFocus);
            keyClick(Qt.Key_Space);
            compare(Fixture.store.selectedHistoryMetric, "memory");
            keyClick(Qt.Key_Left);
            verify(view("metric-cpu").activeFocus);
        }

        function test_theChipsAndTheCardHaveTheirSizesAndColours() {
            compare(view("metric-cpu").contentItem.font, OstrelFont.system(11.5, Font.Medium));
            compare(view("range-hour24").contentItem.font, OstrelFont.system(11, Font.Medium));
            const button = view("exportCSV");
            compare(button.text, "Export CSV");
            compare(button.symbol, "square.and.arrow.down");
            compare(button.fontSize, 11.5);
            verify(Qt.colorEqual(button.background.color, OstrelTheme.elevatedCard));
            for (const name of ["chartTitle", "ledgerTitle"]) {
                compare(view(name).font, OstrelFont.system(11, Font.Bold, 0.6));
                verify(Qt.colorEqual(view(name).color, OstrelTheme.ink2));
            }
            compare(view("average").font, OstrelFont.system(11.5));
            verify(Qt.colorEqual(view("average").color, OstrelTheme.ink2));
            compare(view("peak").font, OstrelFont.system(11.5));
            compare(view("exportMessage").font, OstrelFont.system(10.5));
            compare(view("ledgerTitle").text, "HISTORICAL APP RESOURCE LEDGER (24H)");
        }

        function test_theMessageOfAnExportStandsAtTheRightOfTheFirstLine() {
            mouseClick(view("exportCSV"));
            const message = view("exportMessage");
            const card = message.parent;
            compare(message.x + message.width, card.width - 16);
            compare(message.horizontalAlignment, Text.AlignRight);
            compare(message.y + message.height / 2, view("chartTitle").y + view("chartTitle").height / 2);
        }

        function test_eachFigureOfTheLedgerStandsUnderItsCaption() {
            Fixture.setFullLedger();
            Fixture.store.reloadHistory();
            const row = view("ledger-0");
            const stats = Array.from(findChild(row, "stats").children);
            const lines = [];
            for (const stat of stats) {
                lines.push(stat.children[0].text + " " + stat.children[1].text);
                compare(stat.width, 82);
                compare(stat.children[0].font, OstrelFont.system(8.5, Font.Medium));
                compare(stat.children[1].font, OstrelFont.monospaced(11));
                verify(stat.children[0].mapToItem(row, 0, 0).y < stat.children[1].mapToItem(row, 0, 0).y);
            }
            compare(lines, ["CPU TIME 2h 45m", "AVG RAM 300 MB", "PEAK RAM 3.0 GB", "ENERGY 5.11 Wh", "NET I/O 540 MB", "DISK I/O 1.5 GB"]);
        }

        function test_aRowOfTheLedgerIsARaisedCardWithIconAndName() {
            Fixture.setFullLedger();
            Fixture.store.reloadHistory();
            const row = view("ledger-0");
            compare(row.radius, 8);
            verify(Qt.colorEqual(row.color, OstrelTheme.elevatedCard));
            const icon = findChild(row, "icon");
            compare(icon.bundlePath, "/Applications/Xcode.app");
            compare(icon.x, 12);
            compare(findChild(row, "name").font, OstrelFont.system(12.5, Font.Medium));
            const stats = findChild(row, "stats");
            compare(row.width - stats.x - stats.width, 12);
            compare(row.height, stats.height + 16);
        }

        function test_theLedgerShowsAtMost20Rows() {
            fill(0, 50);
            verify(view("ledger-19") !== null);
            verify(view("ledger-20") === null);
            compare(view("ledger-0").app.name, "Application 1");
            compare(view("ledger-0").Accessible.role, Accessible.ListItem);
            verify(view("ledger-0").Accessible.name.startsWith("Application 1: CPU time 0s"));
        }

        function test_aNameTooLongForItsColumnIsCutAndTheStatsAreNot_data() {
            return [
                {
                    tag: "panel",
                    width: 820
                },
                {
                    tag: "window",
                    width: 1040
                },
                {
                    tag: "wide",
                    width: 1800
                }
            ];
        }
        function test_aNameTooLongForItsColumnIsCutAndTheStatsAreNot(data) {
            frame.width = data.width;
            Fixture.setHistory(0, 0, 2);
            Fixture.setLedgerName(0, "An application with a name much longer than any column could hold");
            Fixture.store.reloadHistory();
            const row = view("ledger-0");
            const name = findChild(row, "name");
            compare(name.width, 180);
            verify(name.truncated);
            verify(!findChild(view("ledger-1"), "name").truncated);
            const stats = findChild(row, "stats");
            compare(stats.children.length, 6);
            for (let index = 0; index < 6; ++index) {
                const stat = stats.children[index];
                compare(stat.width, 82);
                verify(!stat.children[0].truncated, stat.caption);
                verify(!stat.children[1].truncated, stat.value);
            }
            verify(name.x + name.width <= stats.x);
            verify(stats.x + stats.width <= row.width);
        }

        function test_theControlsKeepToOneRowAtEveryWidth_data() {
            return [
                {
                    tag: "panel",
                    width: 820
                },
                {
                    tag: "window",
                    width: 1040
                },
                {
                    tag: "usual",
                    width: 1220
                }
            ];
        }
        function test_theControlsKeepToOneRowAtEveryWidth(data) {
            frame.width = data.width;
            waitForRendering(pane);
            const last = view("metric-power").mapToItem(pane, 0, 0);
            const first = view("range-hour1").mapToItem(pane, 0, 0);
            const end = view("exportCSV").mapToItem(pane, 0, 0);
            verify(last.x + view("metric-power").width < first.x);
            verify(Math.abs(last.y - first.y) < 4);
            verify(end.x + view("exportCSV").width <= data.width - 16);
        }

        function test_theKeyboardScrolls() {
            fill(0, 20);
            const scroller = view("paneScroller");
            waitForRendering(pane);
            view("chart").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_PageDown);
            verify(scroller.contentY > 100);
            keyClick(Qt.Key_PageDown);
            keyClick(Qt.Key_PageDown);
            compare(scroller.contentY, scroller.contentHeight - scroller.height);
            keyClick(Qt.Key_Up);
            verify(scroller.contentY < scroller.contentHeight - scroller.height);
            keyClick(Qt.Key_PageUp);
            keyClick(Qt.Key_PageUp);
            keyClick(Qt.Key_PageUp);
            compare(scroller.contentY, 0);
        }

        function test_whatTheKeyboardReachesIsBroughtIntoView_data() {
            return ["metric-cpu", "exportCSV", "chart"].map(name => ({
                        tag: name
                    }));
        }
        function test_whatTheKeyboardReachesIsBroughtIntoView(data) {
            fill(3, 20);
            waitForRendering(pane);
            const scroller = view("paneScroller");
            scroller.contentY = scroller.contentHeight - scroller.height;
            const item = view(data.tag);
            verify(item.mapToItem(pane, 0, item.height).y < 0);
            item.forceActiveFocus(Qt.TabFocusReason);
            const top = item.mapToItem(pane, 0, 0).y;
            verify(top >= 0 && top + item.height <= pane.height, top);
        }

        function test_aClickOnAChartThatIsHalfInViewMovesNothing() {
            fill(3, 20);
            waitForRendering(pane);
            const scroller = view("paneScroller");
            scroller.contentY = 200;
            const chart = view("chart");
            mouseMove(chart, 100, 180);
            mouseClick(chart, 100, 180);
            verify(chart.activeFocus);
            compare(scroller.contentY, 200);
        }
    }
}
