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
        id: themed

        anchors.fill: parent
        store: Fixture.store
    }

    TestCase {
        id: test

        name: "Overview"
        when: windowShown

        function init() {
            mouseMove(stage, 1, 1);
            Fixture.reset();
            Fixture.store.selectedPane = "overview";
            stage.width = 1220;
            stage.height = 790;
            Fixture.setApplications(7);
            Fixture.tick();
            themed.rebuild();
            waitForRendering(themed);
        }
        function view(name) {
            const found = findChild(themed, name);
            verify(found !== null, name);
            return found;
        }
        function cards() {
            return [...Array(8).keys()].map(index => view("cards").children[index]);
        }

        function test_eightCardsStandInFourColumnsInTheirOrder() {
            compare(cards().map(card => card.title), ["CPU", "Memory", "GPU & Neural", "Thermal & Power", "Network", "Disk & Volumes", "Battery & Awake", "Top Apps"]);
            compare(cards().slice(0, 4).every(card => card.y === cards()[0].y), true);
            verify(cards()[4].y > cards()[0].y + cards()[0].height);
            compare(cards()[4].x, cards()[0].x);
        }
        function test_theCardsAreEquallyWideAtEveryWidth_data() {
            return [820, 1040, 1220, 1800].map(width => ({
                        tag: "width " + width,
                        width: width
                    }));
        }
        function test_theCardsAreEquallyWideAtEveryWidth(data) {
            stage.width = data.width;
            waitForRendering(themed);
            for (const card of cards()) {
                verify(Math.abs(card.width - cards()[0].width) <= 1, card.title + " " + card.width);
                verify(card.x + card.width <= view("cards").width + 0.5);
            }
            verify(view("paneScroller").contentWidth <= data.width);
        }
        function showSamples() {
            Fixture.setSampleMachine();
            Fixture.tick();
            waitForRendering(themed);
        }
        function test_eachCardHasItsSymbolsInTheirColours() {
            showSamples();
            const wanted = [
                [["cpu.fill", OstrelTheme.cpu, 12]],
                [["memorychip.fill", OstrelTheme.memory, 12]],
                [["brain.head.profile", OstrelTheme.gpu, 12]],
                [["flame.fill", OstrelTheme.heat, 12]],
                [["network", OstrelTheme.network, 12], ["arrow.down.circle.fill", OstrelTheme.network, 11], ["arrow.up.circle.fill", OstrelTheme.network, 11]],
                [["internaldrive.fill", OstrelTheme.disk, 12], ["internaldrive", OstrelTheme.ink3, 11], ["externaldrive.fill", OstrelTheme.ink3, 11]],
                [["battery.100", OstrelTheme.battery, 12], ["cup.and.saucer.fill", OstrelTheme.amberWarning, 11], ["headphones", OstrelTheme.network, 11]],
                [["square.stack.3d.up.fill", OstrelTheme.neural, 12]]
            ];
            for (let place = 0; place < 7; ++place)
                compare(Shown.symbolWordsOf(cards()[place]), wanted[place].map(words => words.join(" ")), cards()[place].title);
            compare(Shown.symbolWordsOf(cards()[7])[0], wanted[7][0].join(" "));
            compare(cards().map(card => String(card.accentColor)), wanted.map(card => String(card[0][1])));
        }
        function test_eachCardSaysItsWordsInTheirInks() {
            showSamples();
            const small = OstrelFont.system(10);
            const plain = OstrelFont.system(11);
            const tables = [[["User 27% · Sys 10%", OstrelTheme.ink2, plain], ["6P + 4E", OstrelTheme.ink3], ["Web Browser", OstrelTheme.ink2, plain], ["70.6%", OstrelTheme.ink1]], [["App 16.0 GB", OstrelTheme.ink2, plain], ["Wired 8.0 GB", OstrelTheme.ink2], ["Swap 0 B", OstrelTheme.ink3, small]], [["VRAM In Use", OstrelTheme.ink2, plain], ["1.0 GB", OstrelTheme.ink1], ["Neural Engine (16c)", OstrelTheme.neural, plain], ["0.6 W", OstrelTheme.ink1], ["Active: Video Call", OstrelTheme.ink3, small]], [["Hottest: CPU Performance Core", OstrelTheme.ink2, plain], ["90°C", OstrelTheme.strainRed], ["Left Fan: 2078 RPM", OstrelTheme.ink2, plain], ["Manual RPM", OstrelTheme.ink2]], [["Session In: 0 B", OstrelTheme.ink2], ["Session Out: 0 B", OstrelTheme.ink2], ["3 ports", OstrelTheme.ink3]], [["Read 0 B/s", OstrelTheme.ink2], ["Write 0 B/s", OstrelTheme.ink2], ["Main", OstrelTheme.ink2], ["60% used", OstrelTheme.ink1], ["Backup", OstrelTheme.ink2], ["65% used", OstrelTheme.ink1]], [["Cycles: 42", OstrelTheme.ink2], ["Batt Temp: 32°C", OstrelTheme.ink2], ["KEEPING MAC AWAKE (1)", OstrelTheme.amberWarning, OstrelFont.system(9.5, Font.Bold)], ["Video Call", OstrelTheme.ink2], ["PID 1560", OstrelTheme.ink3], ["Mouse", OstrelTheme.ink2], ["41%", OstrelTheme.battery]], [["Web Browser", OstrelTheme.ink2], ["Code Editor", OstrelTheme.ink2], ["Music Player", OstrelTheme.ink2]]];
            for (let place = 0; place < 8; ++place)
                compare(Shown.faultsIn(cards()[place], tables[place]), "", cards()[place].title);
        }
        function test_aQuietMachineSaysSoInItsInks() {
            compare(Shown.faultsIn(cards()[2], [["Neural Engine (16c)", OstrelTheme.ink4], ["ANE Idle — Ready for CoreML / Local LLM", OstrelTheme.ink3]]), "");
            compare(Shown.faultsIn(cards()[3], [["46°C", OstrelTheme.ink1], ["Fan: 0 RPM (Silent)", OstrelTheme.ink2], ["Fan Control", OstrelTheme.ink2]]), "");
            compare(cards()[3].subheadline, "41°C · 8.4 W · Passive");
            compare(Shown.faultsIn(cards()[6], [["No processes blocking system sleep", OstrelTheme.ink2]]), "");
            compare(Shown.symbolWordsOf(cards()[6])[1], "moon.zzz.fill " + OstrelTheme.safeGreen + " 11");
            verify(!view("awakeText").visible);
        }
        function test_theMemoryIsSharedOutInThreeColoursAndMarkedByItsPressure() {
            showSamples();
            verify(Qt.colorEqual(view("pressureMark").color, OstrelTheme.amberWarning));
            const bar = Shown.below(cards()[1], child => child.shares !== undefined)[0];
            compare([...bar.shares], [0.5, 0.25, 0.125]);
            compare(bar.height, 4);
            compare(String(bar.color), String(OstrelTheme.elevatedCard));
            compare(bar.colors.map(String), [OstrelTheme.memory, OstrelTheme.cpu, OstrelTheme.neural].map(String));
        }
        function test_theSparklinesFollowTheRings() {
            const rings = ["cpuHistory", "memoryHistory", "gpuHistory", "tempHistory", "netInHistory"];
            const lines = cards().map(card => Shown.below(card, child => child.values !== undefined && child.maxValue !== undefined)[0]);
            compare(lines.map(line => line !== undefined), [true, true, true, true, true, true, false, false]);
            rings.forEach((ring, place) => compare([...lines[place].values], [...Fixture.store[ring]], ring));
            const sums = [...Fixture.store.diskReadHistory].map((read, index) => read + Fixture.store.diskWriteHistory[index]);
            compare([...lines[5].values], sums);
            compare(lines.slice(0, 6).map(line => String(line.color)), [OstrelTheme.cpu, OstrelTheme.memory, OstrelTheme.gpu, OstrelTheme.heat, OstrelTheme.network, OstrelTheme.disk].map(String));
        }
        function test_withoutApplicationsNobodyIsNamedAndNothingIsListed() {
            verify(view("topApp").visible);
            Fixture.setApplications(0);
            Fixture.tick();
            verify(!view("topApp").visible);
            compare(view("topApps").count, 0);
        }

        function test_theBannerHasThreeStates_data() {
            return [
                {
                    tag: "strain",
                    strained: true,
                    servers: 2,
                    label: "ACTIVE SYSTEM STRAIN",
                    icon: "exclamationmark.triangle.fill",
                    tint: OstrelTheme.strainRed,
                    stop: ""
                },
                {
                    tag: "forgotten servers",
                    strained: false,
                    servers: 2,
                    label: "FORGOTTEN DEV SERVERS",
                    icon: "server.rack",
                    tint: OstrelTheme.amberWarning,
                    stop: "Stop 2 Idle Servers"
                },
                {
                    tag: "one forgotten server",
                    strained: false,
                    servers: 1,
                    label: "FORGOTTEN DEV SERVERS",
                    icon: "server.rack",
                    tint: OstrelTheme.amberWarning,
                    stop: "Stop 1 Idle Server"
                },
                {
                    tag: "nominal",
                    strained: false,
                    servers: 0,
                    label: "SYSTEM HEALTH NOMINAL",
                    icon: "checkmark.shield.fill",
                    tint: OstrelTheme.safeGreen,
                    stop: ""
                }
            ];
        }
        function test_theBannerHasThreeStates(data) {
            Fixture.setStrain(data.strained);
            Fixture.setIdleServers(data.servers);
            Fixture.tick();
            const banner = view("banner");
            compare(Shown.faultsIn(banner, [[data.label, data.tint, OstrelFont.system(10, Font.Bold, 0.7)], ["Apple Silicon", OstrelTheme.ink3, OstrelFont.system(10)], [Fixture.store.whatsWrongHeadline(), OstrelTheme.ink1, OstrelFont.system(13)], ["Inspect Insights →", OstrelTheme.ink2]]), "");
            compare(Shown.symbolWordsOf(banner)[0], data.icon + " " + data.tint + " 14");
            compare(String(banner.color), String(OstrelTheme.cardBackground));
            compare(String(banner.border.color), String(Qt.alpha(data.tint, 0.38)));
            compare(banner.radius, 12);
            compare(view("stopServers").visible, data.stop !== "");
            compare(view("stopServers").text, data.stop);
        }
        function test_theBannersStopButtonStopsAllForgottenServers() {
            showSamples();
            const button = view("stopServers");
            compare(button.symbol, "stop.circle.fill");
            compare(button.hint, "Stop All Idle Servers");
            compare(String(button.ground), String(Qt.alpha(OstrelTheme.amberWarning, 0.2)));
            mouseClick(button);
            compare(Fixture.stopped, "stop:4000 stop:4100");
        }
        function test_theBannerNeverCutsItsSentence() {
            stage.width = 820;
            Fixture.setApplications(1, "An application with a very long name ".repeat(8));
            Fixture.setStrain(true);
            Fixture.tick();
            waitForRendering(themed);
            const headline = findChild(view("banner"), "headline");
            verify(headline.lineCount > 2);
            verify(!headline.truncated);
            verify(view("banner").height >= headline.height + 20);
            verify(view("cards").y >= view("banner").y + view("banner").height);
        }

        function test_aQuitButtonQuitsTheApplicationOfItsRow() {
            compare(view("quit-application7").Accessible.name, "Quit application7");
            mouseClick(view("quit-application7"));
            compare(Fixture.stopped, "quit:daemon:application7");
        }
        function test_aRowOfAnApplicationStaysUnderThePointerWhileItsButtonIsPressed() {
            const button = view("quit-application7");
            mousePress(button);
            Fixture.setApplications(3);
            Fixture.tick();
            compare(view("topApps").count, 5);
            Fixture.setApplications(9);
            Fixture.tick();
            compare(view("topApps").itemAt(0).row.name, "application7");
            mouseRelease(button);
            compare(Fixture.stopped, "quit:daemon:application7");
            tryVerify(() => view("topApps").itemAt(0).row.name === "application9");
        }
        function test_theKeyboardStaysWithItsApplicationOverATick() {
            const button = view("quit-application5");
            button.forceActiveFocus(Qt.TabFocusReason);
            Fixture.setApplications(8);
            Fixture.tick();
            waitForRendering(themed);
            compare(view("topApps").itemAt(3).row.name, "application5");
            compare(test.Window.window.activeFocusItem, button);
            verify(button.mapToItem(themed, 0, 0).y > view("quit-application6").mapToItem(themed, 0, 0).y);
            keyClick(Qt.Key_Space);
            compare(Fixture.stopped, "quit:daemon:application5");
        }
        function test_theKeyboardGoesOnWithTheNextApplicationWhenItsOwnIsGone() {
            view("quit-application7").forceActiveFocus(Qt.TabFocusReason);
            Fixture.setApplications(6);
            Fixture.tick();
            waitForRendering(themed);
            verify(view("quit-application6").visualFocus);
        }
        function test_whatTheKeyboardGoesToComesIntoViewInThePanel() {
            stage.width = 820;
            stage.height = 560;
            waitForRendering(themed);
            const scroller = view("paneScroller");
            const button = view("quit-application3");
            const bottom = () => button.mapToItem(scroller, 0, button.height).y;
            verify(bottom() > scroller.height);
            view("quit-application4").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Tab);
            verify(button.visualFocus);
            verify(bottom() <= scroller.height);
            scroller.forceActiveFocus();
            keyClick(Qt.Key_Home);
            compare(scroller.contentY, 0);
            keyClick(Qt.Key_PageDown);
            verify(scroller.contentY > 0);
        }
        function test_theFanPopupAppliesWhatItsSliderSays() {
            mouseClick(view("fanControl"));
            const popup = view("fanPopup");
            tryVerify(() => popup.opened);
            compare(view("targetSpeed").text, "Target Speed: 0 RPM");
            compare(view("fanSlider").from, 1200);
            compare(view("fanSlider").to, 5800);
            view("fanSlider").forceActiveFocus();
            keyClick(Qt.Key_Right);
            compare(view("targetSpeed").text, "Target Speed: 1300 RPM");
            mouseClick(view("fanApply"));
            tryVerify(() => !popup.opened);
            compare(Fixture.fanWishes, "0:1300");
        }
        function test_theFanPopupHasItsWordsAndTheRangeOfItsFan() {
            showSamples();
            compare(view("fanControl").text, "Manual RPM");
            mouseClick(view("fanControl"));
            tryVerify(() => view("fanPopup").opened);
            compare(Shown.faultsIn(view("fanPopup").contentItem, [["SMC Fan Control", OstrelTheme.ink1, OstrelFont.system(13, Font.DemiBold)], ["Override automatic macOS thermal fan curve via AppleSMC (F0Md / F0Tg).", OstrelTheme.ink3], ["Target Speed: 0 RPM", OstrelTheme.ink1], ["Auto (System)", OstrelTheme.ink2], ["Apply Manual RPM", OstrelTheme.heat]]), "");
            const slider = view("fanSlider");
            compare(slider.from, 1000);
            compare(slider.to, 5000);
            compare(slider.stepSize, 100);
        }
        function test_theWishedSpeedOutlivesThePopupButNotThePane() {
            mouseClick(view("fanControl"));
            tryVerify(() => view("fanPopup").opened);
            view("fanSlider").forceActiveFocus();
            keyClick(Qt.Key_Right);
            keyClick(Qt.Key_Escape);
            tryVerify(() => !view("fanPopup").opened);
            mouseClick(view("fanControl"));
            tryVerify(() => view("fanPopup").opened);
            compare(view("targetSpeed").text, "Target Speed: 1300 RPM");
            Fixture.store.selectedPane = "sound";
            Fixture.store.selectedPane = "overview";
            waitForRendering(themed);
            verify(!view("fanPopup").opened);
            mouseClick(view("fanControl"));
            tryVerify(() => view("fanPopup").opened);
            compare(view("targetSpeed").text, "Target Speed: 0 RPM");
        }
        function test_autoGivesTheFanBack() {
            mouseClick(view("fanControl"));
            tryVerify(() => view("fanPopup").opened);
            mouseClick(view("fanAuto"));
            tryVerify(() => !view("fanPopup").opened);
            compare(Fixture.fanWishes, "0:auto");
        }
        function linesOf(item) {
            return Shown.below(item, child => child instanceof CardLine);
        }
        function test_noFigureLeavesItsLineWhenItGrows() {
            Fixture.setCPU(1);
            Fixture.tick();
            waitForRendering(themed);
            Fixture.setCPU(1234);
            Fixture.tick();
            wait(50);
            verify(linesOf(cards()[0]).some(line => line.figure === "1234.0%"));
            for (const card of cards()) {
                for (const line of linesOf(card)) {
                    const last = line.children[line.children.length - 1];
                    verify(last.x + last.width <= line.width + 0.5, line.name);
                    verify(line.width <= card.width - 32 + 0.5, line.name);
                }
            }
        }
        function test_theBannersButtonLeadsToTheInsights() {
            mouseClick(view("inspectInsights"));
            compare(Fixture.store.selectedPane, "insights");
        }
        function test_everyCardSaysItsFigure() {
            for (const card of cards()) {
                compare(card.Accessible.role, Accessible.Grouping);
                verify(card.Accessible.name.startsWith(card.title + ": "));
            }
        }
    }
}
