import QtQuick
import QtTest
import Korvantis.Screens
import ScreenTests

Item {
    id: stage

    width: 1220
    height: 790

    ThemedContent {
        id: themed

        anchors.fill: parent
        store: Fixture.store
    }

    TestCase {
        name: "Agents"
        when: windowShown

        function init() {
            Fixture.setLanguage("en_US");
            Fixture.reset();
            stage.width = 1220;
            stage.height = 790;
            Fixture.store.selectedPane = "agents";
            Fixture.setAgents(3, 5);
            Fixture.tick();
            themed.rebuild();
            waitForRendering(themed);
        }
        function cleanup() {
            Fixture.setLanguage("");
        }
        function view(name) {
            const found = findChild(themed, name);
            verify(found !== null, name);
            return found;
        }
        function plans() {
            return Array.from(view("plans").children).filter(child => child instanceof PlanLimitCardView);
        }
        function sessions() {
            const rows = Array.from(view("sessions").children).filter(child => child instanceof AgentSessionRowView);
            return rows.sort((left, right) => left.y - right.y);
        }
        function textOf(item, name) {
            const found = findChild(item, name);
            verify(found !== null, name);
            return found.text;
        }

        function test_withNoAgentsBothPlansAreThereAndNothingFollowsTheCaption() {
            Fixture.setAgents(0);
            Fixture.tick();
            compare(plans().length, 2);
            compare(textOf(plans()[0], "tool"), "Claude Code");
            compare(textOf(plans()[0], "planName"), "Max 5x Plan");
            compare(textOf(plans()[0], "pace"), "On pace");
            compare(textOf(plans()[1], "tool"), "Codex");
            compare(textOf(plans()[1], "today"), "Today: 96,400 tok");
            compare(textOf(plans()[1], "week"), "7d: 680,000 tok");
            compare(view("sessionsTitle").text, "LIVE CODING AGENT SESSIONS (0)");
            compare(sessions().length, 0);
        }
        function test_theCaptionsAndTheLineBetweenThem() {
            const caption = view("plansTitle");
            compare(caption.text, "AI SUBSCRIPTION PLAN LIMITS & QUOTA WINDOWS");
            compare(view("sessionsTitle").text, "LIVE CODING AGENT SESSIONS (3)");
            for (const title of [caption, view("sessionsTitle")]) {
                compare(title.font, OstrelFont.system(11, Font.Bold, 0.6));
                verify(Qt.colorEqual(title.color, OstrelTheme.ink2));
                verify(!title.truncated);
            }
            const line = view("hairline");
            compare(line.height, 1);
            verify(Qt.colorEqual(line.color, OstrelTheme.hairline));
            const order = [caption, view("plans"), line, view("sessionsTitle"), view("sessions")];
            for (let index = 1; index < order.length; ++index)
                verify(order[index].y >= order[index - 1].y + order[index - 1].height);
        }
        function test_aPlanHasItsSizesAndColours() {
            const card = plans()[0];
            verify(Qt.colorEqual(card.color, OstrelTheme.cardBackground));
            verify(Qt.colorEqual(card.border.color, OstrelTheme.hairline));
            compare(findChild(card, "tool").font, OstrelFont.system(14, Font.DemiBold));
            verify(Qt.colorEqual(findChild(card, "tool").color, OstrelTheme.ink1));
            const name = findChild(card, "planName");
            compare(name.font, OstrelFont.system(10.5, Font.Medium));
            verify(Qt.colorEqual(name.ink, OstrelTheme.ink2));
            verify(Qt.colorEqual(name.color, OstrelTheme.elevatedCard));
            compare([name.sidePadding, name.topAndBottomPadding], [6, 2]);
            const pace = findChild(card, "pace");
            compare(pace.font, OstrelFont.system(10, Font.DemiBold));
            compare([pace.sidePadding, pace.topAndBottomPadding], [7, 2.5]);
            for (const figure of ["today", "week"])
                verify(Qt.colorEqual(findChild(card, figure).color, OstrelTheme.ink3));
        }
        function test_aWindowsShareStandsInTheFirstInkAndAWeeksInTheSecond() {
            for (const window of ["fiveHour", "weekly"]) {
                const quota = findChild(plans()[0], window);
                const label = findChild(quota, "label");
                const used = findChild(quota, "used");
                compare(label.text, quota.name);
                verify(Qt.colorEqual(label.color, OstrelTheme.ink2));
                verify(Qt.colorEqual(used.color, window === "weekly" ? OstrelTheme.ink2 : OstrelTheme.ink1));
                compare(used.x + used.width, quota.width);
                verify(findChild(quota, "bar").y >= label.height);
            }
            compare(textOf(findChild(plans()[0], "weekly"), "used"), "41% · Resets Thu 9:00 AM");
            fuzzyCompare(findChild(findChild(plans()[0], "weekly"), "bar").percent, 40.6, 0.01);
        }
        function test_aWindowSaysItsShareAndItsBarStandsThere() {
            const quota = findChild(plans()[0], "fiveHour");
            compare(textOf(quota, "used"), "41% · Resets in 2h 18m");
            compare(quota.name, "5-Hour Window");
            const bar = findChild(quota, "bar");
            compare(bar.percent, 40.9);
            verify(bar.width > 100);
            fuzzyCompare(findChild(bar, "filled").width, bar.width * 0.409, 0.01);
            compare(String(bar.tint), "#d97757");
            compare(findChild(plans()[0], "weekly").name, "7-Day Rolling Quota");
        }
        function test_aFastPaceIsAmber() {
            compare(String(findChild(plans()[0], "pace").ink), String(OstrelTheme.safeGreen));
            Fixture.setPace("Burning FAST");
            Fixture.tick();
            compare(String(findChild(plans()[0], "pace").ink), String(OstrelTheme.amberWarning));
            compare(textOf(plans()[0], "pace"), "Burning FAST");
        }
        function test_theThirdColumnStaysEmptyAtEveryWidth_data() {
            return [820, 1040, 1220, 1800].map(width => ({
                        tag: "width " + width,
                        width: width
                    }));
        }
        function test_theThirdColumnStaysEmptyAtEveryWidth(data) {
            stage.width = data.width;
            waitForRendering(themed);
            const third = (view("plans").width - 24) / 3;
            compare(view("plans").width, data.width - 32);
            compare(plans().map(card => card.width), [third, third]);
            fuzzyCompare(plans()[1].x, third + 12, 0.01);
            compare(plans()[1].y, plans()[0].y);
            compare(plans()[1].height, plans()[0].height);
        }
        function test_noTextOfAPlanIsCutOrLeavesItsCard_data() {
            return test_theThirdColumnStaysEmptyAtEveryWidth_data();
        }
        function test_noTextOfAPlanIsCutOrLeavesItsCard(data) {
            stage.width = data.width;
            Fixture.setPace("Burning fast");
            Fixture.tick();
            waitForRendering(themed);
            for (const card of plans()) {
                for (const text of textsIn(card)) {
                    const right = text.mapToItem(card, text.width, 0).x;
                    verify(!text.truncated, text.text);
                    verify(right <= card.width - 10, text.text);
                    verify(text.mapToItem(card, 0, 0).x >= 10, text.text);
                }
            }
        }
        function textsIn(item) {
            let texts = [];
            for (const child of Array.from(item.children)) {
                if (child instanceof Text && child.visible)
                    texts.push(child);
                texts = texts.concat(textsIn(child));
            }
            return texts;
        }
        function test_aSessionSaysEverything() {
            const row = sessions()[0];
            compare(textOf(row, "tool"), "Claude Code");
            compare(textOf(row, "state"), "Idle");
            compare(textOf(row, "pid"), "PID 1");
            compare(textOf(row, "project"), "project1 — /home/me/work/project1");
            compare(textOf(row, "cpu"), "0.0% CPU");
            compare(textOf(row, "memory"), "0 B");
            compare(row.Accessible.role, Accessible.ListItem);
            verify(row.Accessible.name.startsWith("Claude Code, Idle, PID 1, project1"));
        }
        function test_theStateTintsTheSymbolItsGroundAndTheChip() {
            const states = sessions().map(row => textOf(row, "state"));
            compare(states.slice().sort(), ["Idle", "Waiting for approval", "Working"]);
            for (const row of sessions()) {
                const color = {
                    "Working": OstrelTheme.cpu,
                    "Waiting for approval": OstrelTheme.amberWarning,
                    "Idle": OstrelTheme.safeGreen
                }[textOf(row, "state")];
                const symbol = findChild(row, "symbol");
                compare(symbol.name, "terminal.fill");
                compare(symbol.size, 14);
                verify(Qt.colorEqual(symbol.tint, color));
                verify(Qt.colorEqual(symbol.parent.color, Qt.alpha(color, 0.18)));
                verify(Qt.colorEqual(findChild(row, "state").ink, color));
            }
        }
        function test_aSessionHasItsFacesAndColours() {
            const row = sessions()[0];
            verify(Qt.colorEqual(row.color, OstrelTheme.cardBackground));
            verify(Qt.colorEqual(row.border.color, OstrelTheme.hairline));
            verify(Qt.colorEqual(findChild(row, "tool").color, OstrelTheme.ink1));
            verify(Qt.colorEqual(findChild(row, "pid").color, OstrelTheme.ink3));
            verify(Qt.colorEqual(findChild(row, "project").color, OstrelTheme.ink3));
            compare(findChild(row, "cpu").font, OstrelFont.monospaced(11.5));
            verify(Qt.colorEqual(findChild(row, "cpu").color, OstrelTheme.ink2));
            compare(findChild(row, "memory").font, OstrelFont.monospaced(11.5, Font.Medium));
            verify(Qt.colorEqual(findChild(row, "memory").color, OstrelTheme.ink1));
        }
        function test_aSessionOfFiveChildrenShowsThreeChips() {
            const chips = Array.from(findChild(sessions()[0], "children").children).filter(child => child instanceof ChipView);
            compare(chips.map(chip => chip.text), ["child1", "child2", "child3"]);
            for (const chip of chips) {
                verify(Qt.colorEqual(chip.color, OstrelTheme.elevatedCard));
                verify(Qt.colorEqual(chip.ink, OstrelTheme.ink2));
            }
        }
        function test_nothingOfASessionLeavesItsRowWhenFiguresGrow() {
            for (const width of [820, 1800]) {
                stage.width = width;
                Fixture.setAgentCPU(123456.7);
                Fixture.tick();
                waitForRendering(themed);
                const row = sessions()[0];
                const chips = findChild(row, "children");
                const cpu = findChild(row, "cpu");
                verify(!cpu.truncated);
                verify(chips.mapToItem(row, chips.width, 0).x <= cpu.mapToItem(row, 0, 0).x);
                verify(cpu.mapToItem(row, cpu.width, 0).x <= row.width - 10);
                const project = findChild(row, "project");
                verify(project.mapToItem(row, project.width, 0).x <= chips.mapToItem(row, 0, 0).x);
                verify(project.width > 100);
            }
        }
        function test_aTickThatReordersKeepsTheRowsAndTheScrollPosition() {
            stage.height = 400;
            Fixture.setAgents(20);
            Fixture.tick();
            waitForRendering(themed);
            const scroller = view("paneScroller");
            scroller.contentY = 300;
            const first = sessions()[0];
            const last = sessions()[19];
            Fixture.reverseAgents();
            Fixture.tick();
            waitForRendering(themed);
            compare(scroller.contentY, 300);
            compare(sessions()[0], last);
            compare(sessions()[19], first);
        }
        function test_whenAgentsEndNothingStaysScrolledAway() {
            stage.height = 400;
            Fixture.setAgents(20);
            Fixture.tick();
            waitForRendering(themed);
            const scroller = view("paneScroller");
            scroller.contentY = scroller.contentHeight - scroller.height;
            Fixture.setAgents(0);
            Fixture.tick();
            tryCompare(scroller, "contentY", 0);
        }
        function test_theKeyboardScrolls() {
            stage.height = 400;
            Fixture.setAgents(20);
            Fixture.tick();
            waitForRendering(themed);
            const scroller = view("paneScroller");
            verify(scroller.activeFocusOnTab);
            scroller.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Down);
            verify(scroller.contentY > 0);
            keyClick(Qt.Key_End);
            compare(scroller.contentY, scroller.contentHeight - scroller.height);
            keyClick(Qt.Key_PageUp);
            verify(scroller.contentY < scroller.contentHeight - scroller.height);
            keyClick(Qt.Key_Home);
            compare(scroller.contentY, 0);
            keyClick(Qt.Key_Up);
            compare(scroller.contentY, 0);
        }
        function test_withoutPlansThereAreNoCards() {
            Fixture.clearPlans();
            Fixture.tick();
            compare(plans().length, 0);
        }
        function test_everyPlanSaysWhatItIs() {
            compare(plans()[0].Accessible.role, Accessible.Grouping);
            compare(plans()[0].Accessible.name, "Claude Code, Max 5x Plan, On pace");
        }
    }
}
