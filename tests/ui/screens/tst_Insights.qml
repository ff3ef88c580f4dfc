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

    TestCase {
        name: "Insights"
        when: windowShown

        readonly property string defaults: "Google Chrome/Memory (MB)/4096/5 Xcode/CPU %/250/5"

        function init() {
            mouseMove(stage, 1, 1);
            loader.active = false;
            stage.width = 1040;
            stage.height = 680;
            Fixture.reset();
            Fixture.setApplications(3);
            Fixture.tick();
            show();
        }
        function show() {
            loader.active = true;
            waitForRendering(stage);
        }
        // Leaves the view and comes back to it.
        function reopen() {
            loader.active = false;
            show();
        }
        function tick() {
            Fixture.tick();
            tryVerify(() => !isPolishScheduled(view("findings").parent));
        }
        function view(name) {
            const found = findChild(loader.item, name);
            verify(found !== null, name);
            return found;
        }
        function card(index) {
            return view("findings").itemAt(index);
        }
        function part(index, name) {
            const found = findChild(card(index), name);
            verify(found !== null, name);
            return found;
        }
        function scroller() {
            return view("paneScroller");
        }
        function scrollTo(item) {
            const y = item.mapToItem(scroller().contentItem, 0, 0).y;
            scroller().contentY = Math.max(0, Math.min(y - 60, scroller().contentHeight - scroller().height));
            waitForRendering(stage);
        }
        function clickOn(item) {
            scrollTo(item);
            mouseClick(item);
        }
        function limitInput() {
            return view("limitField").children[0];
        }
        function typeLimit(text) {
            scrollTo(view("limitField"));
            mouseClick(limitInput());
            limitInput().selectAll();
            for (const letter of text)
                keyClick(letter);
        }
        function onScreen(item) {
            return item.mapToItem(stage, 0, 0).y;
        }

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

        // Rules

        function test_theTwoDefaultLimitsAreListedAndCanBeRemoved() {
            compare(view("limits").count, 2);
            const first = view("limits").itemAt(0);
            compare(findChild(first, "appName").text, "Google Chrome");
            compare(findChild(first, "rule").text, "Memory (MB) > 4096 for 5 min");
            compare(first.Accessible.name, "Google Chrome, Memory (MB) > 4096 for 5 min");
            compare(String(findChild(first, "trash").ink), String(OstrelTheme.strainRed));
            clickOn(findChild(first, "trash"));
            compare(Fixture.limits, "Xcode/CPU %/250/5");
            clickOn(findChild(view("limits").itemAt(0), "trash"));
            compare(Fixture.limits, "");
            compare(view("limitList").visible, false);
        }
        function test_theKeyboardGoesOnAfterARemovedRule() {
            findChild(view("limits").itemAt(0), "trash").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            verify(findChild(view("limits").itemAt(0), "trash").visualFocus);
            keyClick(Qt.Key_Space);
            compare(Fixture.limits, "");
            verify(view("appPicker").activeFocus);
        }
        function test_addRuleWithNothingSelectedIsForTheFirstApp() {
            compare(view("appPicker").displayText, "Select Running App...");
            compare(view("figurePicker").displayText, "CPU %");
            compare(view("figurePicker").width, 145);
            compare(limitInput().text, "150");
            compare(limitInput().placeholderText, "150");
            compare(view("minutesStepper").text, "5 min");
            clickOn(view("addRule"));
            compare(Fixture.limits, defaults + " application1/CPU %/150/5");
            compare(view("limits").count, 3);
            compare(view("appPicker").displayText, "Select Running App...");
        }
        function test_addRuleOnAnEmptySnapshotDoesNothing() {
            Fixture.setApplications(0);
            tick();
            clickOn(view("addRule"));
            compare(Fixture.limits, defaults);
            compare(view("briefStatus").visible, false);
        }
        function test_aLimitTypedAs150Point7ShowsAs150() {
            typeLimit("150.7");
            clickOn(view("addRule"));
            compare(Fixture.limits, defaults + " application1/CPU %/150.7/5");
            compare(findChild(view("limits").itemAt(2), "rule").text, "CPU % > 150 for 5 min");
            compare(limitInput().text, "150.7");
        }
        function test_aRuleIsPutTogetherWithThePointer() {
            clickOn(view("appPicker"));
            tryVerify(() => view("appPicker").popup.opened);
            mouseClick(view("appPicker").popup.contentItem.itemAtIndex(2));
            tryVerify(() => !view("appPicker").popup.visible);
            compare(view("appPicker").displayText, "application2");
            clickOn(view("figurePicker"));
            tryVerify(() => view("figurePicker").popup.opened);
            compare(view("figurePicker").popup.contentItem.count, 4);
            mouseClick(view("figurePicker").popup.contentItem.itemAtIndex(3));
            typeLimit("12");
            clickOn(findChild(view("minutesStepper"), "stepUp"));
            compare(view("minutesStepper").text, "6 min");
            clickOn(view("addRule"));
            compare(Fixture.limits, defaults + " application2/Energy (W)/12/6");
        }
        function test_aRuleIsPutTogetherWithTheKeyboard() {
            view("appPicker").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Down);
            compare(view("appPicker").displayText, "application1");
            keyClick(Qt.Key_Tab);
            verify(view("figurePicker").activeFocus);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Tab);
            verify(limitInput().activeFocus);
            limitInput().selectAll();
            for (const digit of "512")
                keyClick(digit);
            keyClick(Qt.Key_Tab);
            verify(view("minutesStepper").visualFocus);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Tab);
            verify(view("addRule").visualFocus);
            keyClick(Qt.Key_Space);
            compare(Fixture.limits, defaults + " application1/Memory (MB)/512/4");
        }
        function test_theStepperStopsAt1AndAt60() {
            const stepper = view("minutesStepper");
            stepper.forceActiveFocus(Qt.TabFocusReason);
            compare(stepper.Accessible.role, Accessible.SpinBox);
            compare(stepper.Accessible.name, "Minutes: 5 min");
            for (let press = 0; press < 7; ++press)
                keyClick(Qt.Key_Down);
            compare(stepper.value, 1);
            compare(findChild(stepper, "stepDown").enabled, false);
            for (let press = 0; press < 70; ++press)
                keyClick(Qt.Key_Up);
            compare(stepper.value, 60);
            compare(stepper.text, "60 min");
            compare(findChild(stepper, "stepUp").enabled, false);
        }
        function test_whatIsNoNumberGivesWayToTheLastLimitWhenTheTypingIsOver() {
            typeLimit("77");
            keyClick(Qt.Key_Backspace);
            keyClick(Qt.Key_Backspace);
            compare(limitInput().text, "");
            keyClick(Qt.Key_Return);
            compare(limitInput().text, "7");
            keyClick("x");
            compare(limitInput().text, "7x");
            clickOn(view("addRule"));
            compare(limitInput().text, "7");
            compare(Fixture.limits, defaults + " application1/CPU %/7/5");
        }
        function test_aHalfTypedLimitSurvivesTicks() {
            typeLimit("12.");
            limitInput().cursorPosition = 1;
            Fixture.setInsights(2);
            Fixture.setApplications(5);
            tick();
            tick();
            compare(limitInput().text, "12.");
            compare(limitInput().cursorPosition, 1);
            verify(limitInput().activeFocus);
            keyClick("9");
            compare(limitInput().text, "192.");
        }
        function test_theFieldStaysUnderTheEyesWhileFindingsArriveAboveIt() {
            stage.height = 1200;
            Fixture.redraw(stage);
            waitForRendering(stage);
            typeLimit("1");
            compare(scroller().contentY, 0);
            const y = onScreen(view("limitField"));
            stage.height = 500;
            waitForRendering(stage);
            scrollTo(view("limitField"));
            const scrolled = onScreen(view("limitField"));
            Fixture.setInsights(4);
            tick();
            compare(onScreen(view("limitField")), scrolled);
            Fixture.setInsights(9);
            tick();
            compare(onScreen(view("limitField")), scrolled);
            verify(y > 0);
        }
        function test_anOpenMenuKeepsItsAppsAndItsPlaceThroughTicks() {
            clickOn(view("appPicker"));
            const popup = view("appPicker").popup;
            tryVerify(() => popup.opened);
            compare(popup.contentItem.count, 4);
            const entry = popup.contentItem.itemAtIndex(3);
            const y = onScreen(view("appPicker"));
            Fixture.setGroups(2, "other");
            Fixture.setInsights(3);
            tick();
            verify(popup.opened);
            compare(popup.contentItem.count, 4);
            compare(popup.contentItem.itemAtIndex(3), entry);
            compare(onScreen(view("appPicker")), y);
            keyClick(Qt.Key_Escape);
            tryVerify(() => !popup.visible);
            compare(view("appPicker").count, 3);
        }
        function test_theSelectedAppStaysSelectedWhenTheListChanges() {
            clickOn(view("appPicker"));
            tryVerify(() => view("appPicker").popup.opened);
            mouseClick(view("appPicker").popup.contentItem.itemAtIndex(3));
            tryVerify(() => !view("appPicker").popup.visible);
            compare(view("appPicker").displayText, "application3");
            Fixture.setApplications(6);
            tick();
            compare(view("appPicker").displayText, "application3");
            Fixture.setApplications(2);
            tick();
            compare(view("appPicker").displayText, "Select Running App...");
            Fixture.setApplications(4);
            tick();
            compare(view("appPicker").displayText, "application3");
            clickOn(view("addRule"));
            compare(Fixture.limits, defaults + " application3/CPU %/150/5");
        }
        function test_aLongMenuScrollsWithinTheWindow() {
            Fixture.setApplications(100);
            tick();
            clickOn(view("appPicker"));
            const popup = view("appPicker").popup;
            tryVerify(() => popup.opened);
            compare(popup.contentItem.count, 101);
            verify(popup.height <= 288);
            const top = popup.contentItem.mapToItem(stage, 0, 0).y;
            verify(top >= 0 && top + popup.contentItem.height <= stage.height);
            keyClick(Qt.Key_Escape);
        }
        function test_theEditorsStateIsLostWhenTheViewGoesAway() {
            typeLimit("99");
            clickOn(findChild(view("minutesStepper"), "stepUp"));
            view("figurePicker").forceActiveFocus();
            keyClick(Qt.Key_Down);
            view("appPicker").forceActiveFocus();
            keyClick(Qt.Key_Down);
            reopen();
            compare(limitInput().text, "150");
            compare(view("minutesStepper").text, "5 min");
            compare(view("figurePicker").displayText, "CPU %");
            compare(view("appPicker").displayText, "Select Running App...");
            compare(Fixture.limits, defaults);
        }

        function test_theRulesSayTheirWordsInTheirInks() {
            compare(Shown.faultsIn(view("limitsCard"), [["CUSTOM APP THRESHOLD RULES", OstrelTheme.ink2, OstrelFont.system(11, Font.Bold, 0.6)], ["Google Chrome", OstrelTheme.ink1, OstrelFont.system(12.5, Font.Medium)], ["Memory (MB) > 4096 for 5 min", OstrelTheme.ink2, OstrelFont.system(11.5)], ["App", OstrelTheme.ink3], ["Metric", OstrelTheme.ink3], ["Limit:", OstrelTheme.ink3], ["5 min", OstrelTheme.ink1], ["Add Rule", OstrelTheme.cpu]]), "");
            compare(findChild(view("limits").itemAt(0), "trash").symbol, "trash");
        }

        // Phone briefs

        function test_thePhoneCardSaysItsWordsInTheirFaces() {
            const card = view("briefsCard");
            compare(Shown.faultsIn(card, [["REMOTE PHONE BRIEFS (iMESSAGE & WHATSAPP)", OstrelTheme.ink2, OstrelFont.system(11, Font.Bold, 0.6)], ["iMessage", OstrelTheme.ink3], ["WhatsApp", OstrelTheme.ink3], ["Receive live Mac health summaries & automatic strain alerts on your phone", OstrelTheme.ink1, OstrelFont.system(13, Font.DemiBold)], ["Connect your Apple iMessage or WhatsApp number to get a 4-line status brief (CPU, Memory Pressure, Thermal/Watts, AI Agents & Idle Servers) on schedule or whenever your Mac is under heavy strain.", OstrelTheme.ink2, OstrelFont.system(11.5)]]), "");
            compare(Shown.symbolsOf(card).map(symbol => symbol.name), ["iphone.radiowaves.left.and.right", "paperplane.fill", "slider.horizontal.3"]);
            clickOn(view("sendBrief"));
            compare(String(view("briefStatus").font), String(OstrelFont.system(11)));
        }
        function test_theChipsFollowTheChannels() {
            const chip = view("iMessageChip");
            compare(chip.Accessible.name, "iMessage: off");
            compare(String(findChild(chip, "dot").color), String(OstrelTheme.ink4));
            compare(String(findChild(chip, "label").color), String(OstrelTheme.ink3));
            Fixture.store.remoteAlerts.iMessageEnabled = true;
            compare(chip.Accessible.name, "iMessage: on");
            compare(String(findChild(chip, "dot").color), String(OstrelTheme.safeGreen));
            compare(String(findChild(chip, "label").color), String(OstrelTheme.ink1));
            compare(view("whatsAppChip").Accessible.name, "WhatsApp: off");
            Fixture.store.remoteAlerts.whatsAppEnabled = true;
            compare(view("whatsAppChip").Accessible.name, "WhatsApp: on");
        }
        function test_aBriefWithNoChannelOnEndsInAnError() {
            const button = view("sendBrief");
            compare(view("briefStatus").visible, false);
            compare(button.text, "Send Instant Brief");
            clickOn(button);
            compare(button.text, "Sending…");
            compare(button.enabled, false);
            compare(view("briefStatus").text, "Sending Korvantis brief…");
            mouseClick(button);
            Fixture.runBackground();
            compare(button.text, "Send Instant Brief");
            compare(button.enabled, true);
            compare(view("briefStatus").visible, true);
            compare(view("briefStatus").text, "Enable iMessage or WhatsApp first.");
            compare(String(view("briefStatus").color), String(OstrelTheme.strainRed));
        }
        function test_aBriefThatArrivesSaysSoInGreen() {
            Fixture.store.remoteAlerts.whatsAppEnabled = true;
            Fixture.store.remoteAlerts.whatsAppPhone = "+15551234567";
            clickOn(view("sendBrief"));
            Fixture.runBackground();
            compare(view("briefStatus").text, "✓ Opened WhatsApp Web/App for +15551234567");
            compare(String(view("briefStatus").color), String(OstrelTheme.safeGreen));
        }
        function test_whatBecameOfABriefIsBroughtIntoView() {
            Fixture.setInsights(3);
            tick();
            const button = view("sendBrief");
            // The button stands at the lower edge.
            scroller().contentY = button.mapToItem(scroller().contentItem, 0, button.height).y + 4 - scroller().height;
            waitForRendering(stage);
            mouseClick(button);
            Fixture.runBackground();
            const status = view("briefStatus");
            tryVerify(() => onScreen(status) + status.height <= stage.height);
            verify(status.visible);
        }
        function test_theButtonsOfACardUnderThePointerStandOutFromIt() {
            Fixture.setInsights(2);
            tick();
            const button = part(0, "snooze");
            mouseMove(card(0), 100, 10);
            tryVerify(() => Qt.colorEqual(part(0, "frame").color, OstrelTheme.elevatedCard));
            verify(!Qt.colorEqual(button.ground, OstrelTheme.elevatedCard));
            verify(Qt.colorEqual(part(1, "snooze").ground, OstrelTheme.elevatedCard));
        }
        function test_configureOpensTheSettingsOfTheBriefs() {
            compare(view("configureBriefs").text, "Configure iMessage & WhatsApp…");
            clickOn(view("configureBriefs"));
            compare(Fixture.store.selectedSettingsTab, "Remote Alerts");
            compare(Fixture.store.showSettingsModal, true);
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
