import QtQuick
import QtTest
import Korvantis.Screens
import ScreenTests

Item {
    id: stage

    property bool inPopover: false
    property int fullWindowRequests: 0

    width: 1220
    height: 790

    ThemedContent {
        id: themed

        anchors.fill: parent
        store: Fixture.store
        isCompactPopover: stage.inPopover
        offersFullWindow: stage.inPopover
        onOpenFullWindow: stage.fullWindowRequests += 1
    }

    TestCase {
        id: test

        name: "RootView"
        when: windowShown

        readonly property var panes: ["overview", "processes", "insights", "history", "agents", "sound"]

        function init() {
            Fixture.reset();
            stage.inPopover = false;
            stage.fullWindowRequests = 0;
            stage.width = 1220;
            show();
        }

        // As the window is made: with its store and its kind from the start.
        function show() {
            themed.rebuild();
            waitForRendering(themed);
        }

        function view(name) {
            const found = findChild(themed, name);
            verify(found !== null, name);
            return found;
        }
        function shownPane() {
            return view("pane").item;
        }

        function test_tabsSelectTheirPane() {
            for (const pane of panes) {
                mouseClick(view("tab-" + pane));
                compare(Fixture.store.selectedPane, pane);
                verify(view("tab-" + pane).isSelected);
            }
        }

        function test_command1ToCommand6WorkFromAnyPane_data() {
            return panes.map(pane => ({
                        tag: pane
                    }));
        }
        function test_command1ToCommand6WorkFromAnyPane(data) {
            for (let number = 0; number < panes.length; ++number) {
                Fixture.store.selectedPane = data.tag;
                keyClick(Qt.Key_1 + number, Qt.ControlModifier);
                compare(Fixture.store.selectedPane, panes[number]);
            }
        }

        function test_aPaneIsMadeWhenShownAndGoneWhenLeft() {
            verify(shownPane() instanceof OverviewPaneView);
            Fixture.store.selectedPane = "processes";
            verify(shownPane() instanceof ProcessesPaneView);
            tryVerify(() => findChild(themed, "headline") === null);
            Fixture.store.selectedPane = "insights";
            verify(shownPane() instanceof InsightsPaneView);
            Fixture.store.selectedPane = "history";
            verify(shownPane() instanceof HistoryPaneView);
            Fixture.store.selectedPane = "agents";
            verify(shownPane() instanceof AgentsPaneView);
            Fixture.store.selectedPane = "sound";
            verify(shownPane() instanceof SoundPaneView);
        }

        function test_aChangeOfThemeLeavesTheSelectedPaneAsItWas() {
            Fixture.store.look.themeMode = "dark";
            Fixture.store.selectedPane = "insights";
            const before = shownPane();
            const dark = String(OstrelTheme.canvas);
            mouseClick(view("theme-light"));
            compare(Fixture.store.look.themeMode, "light");
            compare(Fixture.store.selectedPane, "insights");
            tryVerify(() => findChild(themed, "pane") !== null && shownPane() !== before);
            verify(shownPane() instanceof InsightsPaneView);
            verify(String(OstrelTheme.canvas) !== dark);
        }

        function test_theKeyboardFocusOutlivesAChangeOfTheme() {
            Fixture.store.look.themeMode = "dark";
            view("theme-light").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            compare(Fixture.store.look.themeMode, "light");
            tryVerify(() => view("theme-light").activeFocus);
        }

        function test_theThemeButtonsCarryTheirTooltipsAndShowTheChoice() {
            compare(view("theme-system").hint, "Appearance: System (Auto)");
            compare(view("theme-dark").hint, "Appearance: Dark Mode");
            compare(view("theme-light").hint, "Appearance: Light Mode");
            compare(view("theme-system").text, "Auto");
            verify(view("theme-system").isSelected);
            verify(!view("theme-dark").isSelected);
        }

        function test_withNoInsightsTheTabShowsNoBadgeWith80ItShows80() {
            const tab = view("tab-insights");
            const badge = findChild(tab, "badge");
            verify(!badge.visible);
            Fixture.setInsights(80);
            Fixture.tick();
            verify(badge.visible);
            compare(tab.badge, "80");
            compare(tab.Accessible.name, "Insights, 80 findings");
            verify(!findChild(view("tab-history"), "badge").visible);
        }

        function test_theStrainDotTurnsRedInTheTickThatReportsAStrainAndGreenInTheFirstThatDoesNot() {
            const dot = view("strainDot");
            verify(Qt.colorEqual(dot.color, OstrelTheme.safeGreen));
            Fixture.setStrain(true);
            Fixture.tick();
            verify(Qt.colorEqual(dot.color, OstrelTheme.strainRed));
            compare(dot.Accessible.name, "Under strain");
            Fixture.setStrain(false);
            Fixture.tick();
            verify(Qt.colorEqual(dot.color, OstrelTheme.safeGreen));
            compare(dot.Accessible.name, "No strain");
        }

        function test_theTickTextFollowsTheRefreshInterval() {
            compare(view("tickText").text, "Live 2s tick");
            Fixture.store.setRefreshInterval(5);
            compare(view("tickText").text, "Live 5s tick");
        }

        function test_sampleNowTicksAtOnce() {
            const before = Fixture.ticks;
            compare(view("sampleNow").hint, "Sample Now");
            mouseClick(view("sampleNow"));
            compare(Fixture.ticks, before + 1);
        }

        function test_inThePopoverTheButtonWithTheArrowsIsThereInTheMainWindowItIsNot() {
            verify(!view("openFullWindow").visible);
            stage.inPopover = true;
            show();
            verify(view("openFullWindow").visible);
            compare(view("openFullWindow").hint, "Open Full Korvantis Window");
            mouseClick(view("openFullWindow"));
            compare(stage.fullWindowRequests, 1);
        }

        function test_thePopoverSetsItsTabsTighterAndLeavesOutTheLooksNames() {
            compare(view("tab-overview").leftPadding, 12);
            compare(view("theme-dark").text, "Dark");
            stage.inPopover = true;
            show();
            compare(view("tab-overview").leftPadding, 9);
            compare(view("theme-dark").text, "");
        }

        function test_nothingInTheBarOverlaps_data() {
            return [
                { tag: "the panel", width: 820, inPopover: true },
                { tag: "the least window", width: 1040, inPopover: false },
                { tag: "the window", width: 1220, inPopover: false },
                { tag: "a wide window", width: 1800, inPopover: false }
            ];
        }
        function test_nothingInTheBarOverlaps(data) {
            Fixture.setInsights(80);
            Fixture.tick();
            stage.width = data.width;
            stage.inPopover = data.inPopover;
            show();
            const name = view("programName");
            compare(name.truncated, false);
            const nameEnd = name.mapToItem(stage, name.width, 0).x;
            const tabsStart = view("paneTabs").mapToItem(stage, 0, 0).x;
            verify(nameEnd + 13 <= tabsStart, "name ends at " + nameEnd + ", tabs begin at " + tabsStart);
            const tabsEnd = tabsStart + view("paneTabs").width;
            verify(tabsEnd + 8 <= view("barControls").mapToItem(stage, 0, 0).x);
        }

        function test_theBarNamesTheProgramAndTheMachine() {
            compare([view("logo").width, view("logo").height], [30, 30]);
            const name = view("programName");
            compare(name.text, "Korvantis");
            compare(name.font, OstrelFont.system(14, Font.Bold));
            verify(Qt.colorEqual(name.color, OstrelTheme.ink1));
            const dot = view("strainDot");
            compare([dot.width, dot.height, dot.radius], [7, 7, 3.5]);
            const machine = view("machineLine");
            compare(machine.font, OstrelFont.system(10, Font.Medium));
            verify(Qt.colorEqual(machine.color, OstrelTheme.ink3));
            compare(machine.y - name.parent.height, 5);
            compare(view("namesView").x - view("logo").x - 30, 8);
        }

        function test_aTabIsAnIconAndATitleThatTurnBoldWhenItIsSelected() {
            for (const pane of ["overview", "history"]) {
                const tab = view("tab-" + pane);
                const ink = tab.isSelected ? OstrelTheme.ink1 : OstrelTheme.ink2;
                compare(tab.isSelected, pane === "overview");
                compare(findChild(tab, "icon").name, pane === "overview" ? "square.grid.2x2.fill" : "chart.xyaxis.line");
                compare(findChild(tab, "icon").size, 11.5);
                verify(Qt.colorEqual(findChild(tab, "icon").tint, ink));
                compare(findChild(tab, "title").font, OstrelFont.system(12.5, tab.isSelected ? Font.Bold : Font.Medium));
                verify(Qt.colorEqual(findChild(tab, "title").color, ink));
                verify(Qt.colorEqual(tab.background.color, tab.isSelected ? OstrelTheme.elevatedCard : Qt.rgba(0, 0, 0, 0)));
                compare(tab.background.radius, 8);
                compare([tab.topPadding, tab.bottomPadding, tab.contentItem.spacing], [6, 6, 6]);
            }
            const tabs = view("paneTabs");
            verify(Qt.colorEqual(tabs.color, OstrelTheme.cardBackground));
            verify(Qt.colorEqual(tabs.border.color, OstrelTheme.hairline));
            compare([tabs.radius, tabs.border.width], [10, 1]);
            compare(view("tab-overview").mapToItem(tabs, 0, 0), Qt.point(3, 3));
            compare(view("tab-processes").x - view("tab-overview").x - view("tab-overview").width, 2);
        }

        function test_theBadgeIsSmallAndWarm() {
            Fixture.setInsights(7);
            Fixture.tick();
            const badge = findChild(view("tab-insights"), "badge");
            const count = findChild(badge, "count");
            compare(count.text, "7");
            compare(count.font, OstrelFont.system(9.5, Font.Bold));
            compare([badge.width, badge.height], [count.implicitWidth + 10, count.implicitHeight + 2]);
            verify(Qt.colorEqual(badge.color, Qt.alpha(OstrelTheme.heat, 0.24)));
        }

        function test_theControlsOfTheBarHaveTheirSymbolsAndSizes() {
            compare(view("sampleNow").symbol, "arrow.clockwise");
            compare(view("gear").symbol, "gearshape.fill");
            compare(view("theme-system").symbol, "circle.lefthalf.filled");
            compare(view("theme-dark").symbol, "moon.stars.fill");
            compare(view("theme-light").symbol, "sun.max.fill");
            for (const look of ["system", "dark", "light"]) {
                const button = view("theme-" + look);
                compare(button.fontSize, 10.5);
                verify(Qt.colorEqual(button.ink, button.isSelected ? OstrelTheme.ink1 : OstrelTheme.ink3));
                verify(Qt.colorEqual(button.ground, button.isSelected ? OstrelTheme.elevatedCard : Qt.rgba(0, 0, 0, 0)));
            }
            const arrows = view("openFullWindow");
            compare(arrows.symbol, "arrow.up.left.and.arrow.down.right");
            compare([arrows.fontSize, arrows.padding], [11, 7]);
            verify(Qt.colorEqual(arrows.ground, OstrelTheme.elevatedCard));
            compare(view("barControls").spacing, 8);
            compare(view("barControls").x + view("barControls").width, stage.width - 16);
        }

        function test_theStatusBarHasItsThreeInks() {
            for (const [name, ink] of [["tickText", OstrelTheme.ink3], ["countsText", OstrelTheme.ink4], ["figuresText", OstrelTheme.ink2]])
                verify(Qt.colorEqual(view(name).color, ink), name);
            compare(view("tickText").font, OstrelFont.system(10.5));
            verify(Qt.colorEqual(view("tickDot").color, OstrelTheme.safeGreen));
            const bar = view("statusBar");
            verify(Qt.colorEqual(bar.color, OstrelTheme.cardBackground));
            compare(view("tickDot").mapToItem(bar, 0, 0).x, 16);
            compare(view("figuresText").mapToItem(bar, view("figuresText").width, 0).x, stage.width - 16);
            compare(bar.height, Math.max(view("tickText").implicitHeight, view("figuresText").implicitHeight) + 14);
        }

        function test_theGearOpensTheSettingsSheet() {
            compare(view("gear").hint, "Korvantis Preferences (⌘,)");
            mouseClick(view("gear"));
            verify(Fixture.store.showSettingsModal);
            Fixture.store.showSettingsModal = false;
        }

        function test_everyControlHasANameAndARole() {
            for (const pane of panes) {
                compare(view("tab-" + pane).Accessible.role, Accessible.PageTab);
                verify(view("tab-" + pane).Accessible.name !== "");
            }
            compare(view("tab-overview").Accessible.name, "Overview");
            compare(view("theme-dark").Accessible.name, "Appearance: Dark Mode");
            compare(view("theme-dark").Accessible.role, Accessible.RadioButton);
            compare(view("sampleNow").Accessible.name, "Sample Now");
            compare(view("sampleNow").Accessible.role, Accessible.Button);
            compare(view("gear").Accessible.name, "Korvantis Preferences (⌘,)");
            for (const figure of ["tickText", "countsText", "figuresText"]) {
                compare(view(figure).Accessible.role, Accessible.StaticText);
                compare(view(figure).Accessible.name, view(figure).text);
                verify(view(figure).text !== "");
            }
        }

        function test_tabReachesEveryControlOfTheBar() {
            Fixture.store.selectedPane = "history";
            view("tab-overview").forceActiveFocus(Qt.TabFocusReason);
            const reached = [];
            for (let step = 0; step < 11; ++step) {
                reached.push(test.Window.window.activeFocusItem.objectName);
                keyClick(Qt.Key_Tab);
            }
            for (const name of ["tab-overview", "tab-sound", "theme-system", "theme-light", "sampleNow", "gear"])
                verify(reached.includes(name), name + " in " + reached);
        }

        function test_nothingOfTheBarOverlapsAtAnyWidth_data() {
            return [1040, 1220, 1800].map(width => ({
                        tag: "width " + width,
                        width: width
                    }));
        }
        function test_nothingOfTheBarOverlapsAtAnyWidth(data) {
            stage.width = data.width;
            Fixture.setInsights(80);
            Fixture.tick();
            waitForRendering(themed);
            let right = 0;
            for (const name of ["strainDot", "tab-overview", "tab-processes", "tab-insights", "tab-history", "tab-agents", "tab-sound", "theme-system", "theme-dark", "theme-light", "sampleNow", "gear"]) {
                const item = view(name);
                const left = item.mapToItem(stage, 0, 0).x;
                verify(left >= right, name + " begins at " + left + " before " + right);
                right = left + item.width;
                verify(item.width + 0.5 >= item.implicitWidth, name);
            }
            verify(right <= data.width - 16);
        }
    }
}
