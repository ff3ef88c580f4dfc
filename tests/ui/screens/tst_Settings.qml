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

        name: "Settings"
        when: windowShown

        readonly property var tabs: ["Menu Bar", "Appearance", "Remote Alerts", "Integrations & MCP"]
        readonly property var alerts: Fixture.store.remoteAlerts

        function init() {
            Fixture.resetWithSettings();
            open();
        }
        function cleanup() {
            Fixture.store.showSettingsModal = false;
            stage.width = 1220;
            stage.height = 790;
        }

        // As at a launch, with the sheet over the window.
        function open() {
            themed.rebuild();
            Fixture.store.look.themeMode = "dark";
            Fixture.store.showSettingsModal = true;
            tryVerify(() => view("closeSettings") !== null);
            waitForRendering(themed);
        }

        // The sheet lies in the window's overlay, beside the stage.
        function view(name) {
            let top = stage;
            while (top.parent)
                top = top.parent;
            return findChild(top, name);
        }
        function showTab(title) {
            Fixture.store.selectedSettingsTab = title;
            tryVerify(() => scroller() !== null && scroller().place === title);
            tryVerify(() => scroller().height > 100);
            scroller().wantedY = 0;
        }
        function scroller() {
            return view("settingsScroller");
        }
        // The item of that name, scrolled to where it can be clicked.
        function reach(name) {
            const item = view(name);
            verify(item !== null, name);
            const y = item.mapToItem(scroller().contentItem, 0, 0).y;
            scroller().contentY = Math.max(0, Math.min(y - 30, scroller().contentHeight - scroller().height));
            return item;
        }
        function click(name) {
            mouseClick(reach(name));
        }
        function pick(name, index) {
            const picker = reach(name);
            mouseClick(picker);
            tryVerify(() => picker.popup.opened);
            tryVerify(() => picker.popup.contentItem.itemAtIndex(index) !== null);
            mouseClick(picker.popup.contentItem.itemAtIndex(index));
            tryVerify(() => !picker.popup.opened);
            compare(picker.currentIndex, index);
        }
        function write(name, text) {
            mouseClick(reach(name));
            for (const letter of text)
                keyClick(letter);
        }
        function focused() {
            return test.Window.window.activeFocusItem;
        }

        function test_escapeClosesTheSheet() {
            keyClick(Qt.Key_Escape);
            tryCompare(Fixture.store, "showSettingsModal", false);
        }

        function test_theCloseButtonClosesTheSheet() {
            mouseClick(view("closeSettings"));
            tryCompare(Fixture.store, "showSettingsModal", false);
        }

        function test_theSheetOpensAgain() {
            keyClick(Qt.Key_Escape);
            tryCompare(Fixture.store, "showSettingsModal", false);
            Fixture.store.showSettingsModal = true;
            tryVerify(() => view("closeSettings") !== null && view("closeSettings").visible);
        }

        function test_aClosedSheetHoldsNothing() {
            keyClick(Qt.Key_Escape);
            tryVerify(() => view("closeSettings") === null);
        }

        function test_eachTabButtonShowsItsTab() {
            compare(Fixture.store.selectedSettingsTab, "Menu Bar");
            for (const title of tabs) {
                mouseClick(view("settings-tab-" + title));
                compare(Fixture.store.selectedSettingsTab, title);
                verify(view("settings-tab-" + title).isSelected);
                tryVerify(() => scroller() !== null && scroller().place === title);
            }
            verify(!view("settings-tab-Menu Bar").isSelected);
        }

        function test_theHeaderHasItsTitleAndItsRoom() {
            const title = view("settingsTitle");
            compare(title.text, "Korvantis Preferences");
            compare(title.font, OstrelFont.system(15, Font.Bold));
            const header = title.parent;
            compare(header.x, 16);
            compare(header.y, 10);
            compare(header.width, header.parent.width - 32);
            // The room of the tabs begins 10 below.
            compare(view("settingsTabs").y, header.y + header.height + 10);
        }

        function test_everyWordOfATabStandsInItsPlace_data() {
            return [
                {
                    tag: "Menu Bar",
                    words: ["Select which live telemetry readouts appear in the macOS Menu Bar status item:", "CPU", "Memory", "GPU", "Neural Engine", "Network", "Disk", "Temperature", "Fans", "Battery", "Power", "Agents", "Display Style", "Icon + Value", "Colour Mode", "Colour on strain"]
                },
                {
                    tag: "Appearance",
                    words: ["Chart Palette", "Ocean", "Temperature Unit", "Celsius (°C)", "History Retention", "90 days", "Density", "Comfortable", "Keep Window Floating", "Theme & Appearance Mode", "macOS System is currently Dark", "System (Auto)", "Dark Mode", "Light Mode", "Always stay in Dark Mode", "Sampling Interval", "1 second", "2 seconds", "5 seconds", "Two seconds again at the next launch."]
                },
                {
                    tag: "Remote Alerts",
                    words: ["Apple iMessage Bridge (Zero-Cost Native macOS)", "Sends Mac health briefs directly through your Mac's signed-in Messages.app to your iPhone, iPad, or Apple Watch.", "Enable iMessage", "Your phone or Apple ID (+15551234567 or you@example.com)", "Test iMessage", "WhatsApp Remote Bridge", "Enable WhatsApp", "Delivery Mode", "Background API / Webhook (CallMeBot / Custom)", "WhatsApp Number (+15551234567)", "CallMeBot API Key or Webhook URL (optional)", "Test WhatsApp", "Automatic Triggers & Live Brief Preview", "Auto-send alert when Mac experiences sustained CPU, Memory, or Thermal strain", "Scheduled Briefs", "Only on Strain Alerts", "Least time from one strain alert to the next.", "Cooldown: 30 min"]
                },
                {
                    tag: "Integrations & MCP",
                    words: ["CLI & Model Context Protocol (MCP) Bridge", "Socket Path: ~/Library/Application Support/Korvantis/bridge.sock"]
                }
            ];
        }
        function test_everyWordOfATabStandsInItsPlace(data) {
            showTab(data.tag);
            const preview = view("briefPreview");
            const texts = Shown.textsOf(scroller().contentItem).map(shown => shown.text).filter(text => preview === null || text !== preview.text);
            compare(texts, data.words);
        }

        function test_theBlocksCarryTheirSymbols() {
            showTab("Remote Alerts");
            compare(view("iMessageBlock").symbol, "message.fill");
            compare(view("whatsAppBlock").symbol, "phone.bubble.fill");
            showTab("Menu Bar");
            compare(view("settings-readout-neuralEngine").symbol, "brain");
            compare(findChild(view("settings-readout-cpu"), "tick").name, "checkmark.circle.fill");
            compare(findChild(view("settings-readout-gpu"), "tick").name, "circle");
            showTab("Appearance");
            compare(view("settings-theme-system").symbol, "circle.lefthalf.filled");
            compare(view("settings-theme-dark").symbol, "moon.stars.fill");
            compare(view("settings-theme-light").symbol, "sun.max.fill");
        }

        function test_smallPrintHasItsSizesAndItsGround() {
            showTab("Menu Bar");
            compare(view("readoutsCaption").font, OstrelFont.system(12));
            showTab("Remote Alerts");
            compare(view("briefStatus").font, OstrelFont.system(11));
            for (const [tab, name] of [["Remote Alerts", "briefPreview"], ["Integrations & MCP", "settings-configuration"]]) {
                showTab(tab);
                const ground = view(name).background ?? view(name).parent;
                compare(ground.radius, 8);
                verify(Qt.colorEqual(ground.color, OstrelTheme.elevatedCard));
            }
            compare(findChild(view("bridgeBlock"), "blockCaption").font, OstrelFont.system(11));
            compare(view("settings-configuration").font.family, OstrelFont.monospaced(12).family);
        }

        function test_closingAndReopeningKeepsTheSelectedTab() {
            mouseClick(view("settings-tab-Remote Alerts"));
            keyClick(Qt.Key_Escape);
            tryVerify(() => view("closeSettings") === null);
            Fixture.store.showSettingsModal = true;
            tryVerify(() => scroller() !== null && scroller().place === "Remote Alerts");
            verify(view("settings-tab-Remote Alerts").isSelected);
        }

        function test_aTabThatIsNoneShowsTheFirst() {
            Fixture.store.selectedSettingsTab = "Nowhere";
            tryVerify(() => scroller() !== null && scroller().place === "Menu Bar");
        }

        function test_readoutsAreTickedAndUnticked() {
            showTab("Menu Bar");
            verify(view("settings-readout-cpu").isOn);
            verify(!view("settings-readout-gpu").isOn);
            click("settings-readout-gpu");
            click("settings-readout-cpu");
            compare(Fixture.enabledReadouts.join(), "memory,gpu,temperature,power");
            verify(view("settings-readout-gpu").isOn);
            verify(!view("settings-readout-cpu").isOn);
        }

        function test_theReadoutsStandInTheirOrder() {
            showTab("Menu Bar");
            const names = ["cpu", "memory", "gpu", "neuralEngine", "network", "disk", "temperature", "fans", "battery", "power", "agents"];
            let place = -1;
            for (const name of names) {
                const cell = view("settings-readout-" + name);
                const next = cell.y * 10000 + cell.x;
                verify(next > place, name);
                place = next;
            }
        }

        function test_theLastEnabledReadoutCannotBeUnticked() {
            showTab("Menu Bar");
            for (const name of ["cpu", "memory", "temperature"])
                click("settings-readout-" + name);
            compare(Fixture.enabledReadouts.join(), "power");
            verify(view("settings-readout-power").isLast);
            click("settings-readout-power");
            compare(Fixture.enabledReadouts.join(), "power");
            verify(view("settings-readout-power").isOn);
        }

        function test_displayStyleAndColourModeAreChosen() {
            showTab("Menu Bar");
            pick("settings-displayStyle", 1);
            compare(Fixture.store.menuBarSettings.displayStyle, "graph");
            pick("settings-colorMode", 2);
            compare(Fixture.store.menuBarSettings.colorMode, "colour");
        }

        function test_paletteUnitRetentionAndDensityAreChosen() {
            showTab("Appearance");
            const look = Fixture.store.look;
            pick("settings-palette", 3);
            compare(look.palette, "iris");
            pick("settings-temperatureUnit", 1);
            compare(look.temperatureUnit, "fahrenheit");
            pick("settings-retention", 2);
            compare(look.retention, "days365");
            pick("settings-density", 0);
            compare(look.density, "compact");
            click("settings-windowFloats");
            compare(look.windowFloats, true);
        }

        function test_aPickerIsDrivenByTheKeyboard() {
            showTab("Appearance");
            view("settings-retention").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Down);
            compare(Fixture.store.look.retention, "days365");
            keyClick(Qt.Key_Up);
            keyClick(Qt.Key_Up);
            compare(Fixture.store.look.retention, "days30");
        }

        function test_aPickerFollowsTheStore() {
            showTab("Appearance");
            pick("settings-palette", 4);
            Fixture.store.look.palette = "forest";
            compare(view("settings-palette").currentIndex, 0);
            compare(view("settings-palette").displayText, "Forest");
        }

        function test_theIntervalTakesEffectAtOnce() {
            showTab("Appearance");
            click("settings-interval-5");
            compare(Fixture.store.refreshIntervalSeconds, 5);
            verify(view("settings-interval-5").isSelected);
            verify(!view("settings-interval-2").isSelected);
            compare(view("settings-interval-5").symbol, "checkmark.circle.fill");
            compare(view("settings-interval-2").symbol, "");
            click("settings-interval-1");
            compare(Fixture.store.refreshIntervalSeconds, 1);
        }

        function test_changingTheIntervalTo5StartsATimerOf5SecondsAtTheClickAndTheStatusBarShows5s() {
            showTab("Appearance");
            compare(view("tickText").text, "Live 2s tick");
            const timers = Fixture.timerPeriods.length;
            click("settings-interval-5");
            compare(Fixture.timerPeriods.length, timers + 1);
            compare(Fixture.timerPeriods[timers], 5);
            compare(view("tickText").text, "Live 5s tick");
        }

        function test_theLookTakesEffectAtOnceAndTheSheetStaysOpen() {
            showTab("Appearance");
            click("settings-theme-light");
            compare(Fixture.store.look.themeMode, "light");
            wait(50);
            verify(Fixture.store.showSettingsModal);
            tryVerify(() => view("settings-theme-light") !== null && view("settings-theme-light").visible);
            verify(view("settings-theme-light").isSelected);
            compare(view("themeModeText").text, "Always stay in Light Mode");
            verify(view("settings-theme-light").background.border.width === 1.5);
            verify(view("settings-theme-dark").background.border.width === 1);
        }

        function test_aChangeOfLookKeepsTabScrollAndFocus() {
            stage.width = 820;
            stage.height = 560;
            showTab("Appearance");
            tryVerify(() => scroller().contentHeight > scroller().height + 60);
            scroller().contentY = 60;
            view("settings-theme-light").forceActiveFocus(Qt.MouseFocusReason);
            const y = scroller().contentY;
            mouseClick(view("settings-theme-light"));
            compare(Fixture.store.look.themeMode, "light");
            wait(50);
            tryVerify(() => scroller() !== null && scroller().place === "Appearance");
            tryCompare(scroller(), "contentY", y);
            compare(focused().objectName, "settings-theme-light");
        }

        function test_aChangeOfLookKeepsAHalfTypedTextItsFieldAndItsCursor() {
            showTab("Remote Alerts");
            write("settings-iMessageRecipient", "me@exmple.org");
            for (let step = 0; step < 8; ++step)
                keyClick(Qt.Key_Left);
            Fixture.store.look.themeMode = "light";
            wait(50);
            keyClick("a");
            compare(alerts.iMessageRecipient, "me@example.org");
        }

        function test_theChannelsAreTurnedOnAndOff_data() {
            return [
                {
                    tag: "iMessageEnabled"
                },
                {
                    tag: "whatsAppEnabled"
                },
                {
                    tag: "notifyOnStrain"
                }
            ];
        }
        function test_theChannelsAreTurnedOnAndOff(data) {
            showTab("Remote Alerts");
            const before = alerts[data.tag];
            const toggle = reach("settings-" + data.tag);
            compare(toggle.isOn, before);
            mouseClick(toggle);
            compare(alerts[data.tag], !before);
            compare(toggle.isOn, !before);
            toggle.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            compare(alerts[data.tag], before);
        }

        function test_eachFieldIsStoredWithEachLetter_data() {
            return [
                {
                    tag: "iMessageRecipient",
                    text: "+15550192834"
                },
                {
                    tag: "whatsAppPhone",
                    text: "+1 (555)"
                },
                {
                    tag: "whatsAppApiKeyOrWebhook",
                    text: "http://x/y?z=1"
                }
            ];
        }
        function test_eachFieldIsStoredWithEachLetter(data) {
            showTab("Remote Alerts");
            write("settings-" + data.tag, data.text.slice(0, 3));
            compare(alerts[data.tag], data.text.slice(0, 3));
            for (const letter of data.text.slice(3))
                keyClick(letter);
            compare(alerts[data.tag], data.text);
            compare(view("settings-" + data.tag).text, data.text);
        }

        function test_typingInTheMiddleKeepsTheCursorThroughTicksAndTheStoresEcho() {
            showTab("Remote Alerts");
            write("settings-whatsAppPhone", "+49301");
            keyClick(Qt.Key_Left);
            keyClick(Qt.Key_Left);
            keyClick("7");
            compare(focused().cursorPosition, 5);
            Fixture.setSystemCPU(33);
            Fixture.tick();
            alerts.cooldownMinutes = 90;
            alerts.iMessageEnabled = true;
            alerts.whatsAppPhone = alerts.whatsAppPhone;
            compare(focused().cursorPosition, 5);
            keyClick("8");
            compare(alerts.whatsAppPhone, "+4937801");
            compare(focused().cursorPosition, 6);
        }

        function test_aFieldFollowsTheStore() {
            showTab("Remote Alerts");
            write("settings-iMessageRecipient", "abc");
            alerts.iMessageRecipient = "+1 (555) 019-2834";
            compare(view("settings-iMessageRecipient").text, "+1 (555) 019-2834");
        }

        function test_modeAndScheduleAreChosen() {
            showTab("Remote Alerts");
            pick("settings-whatsAppMode", 1);
            compare(alerts.whatsAppMode, "desktopApp");
            pick("settings-schedule", 2);
            compare(alerts.schedule, "every4Hours");
        }

        function test_theCooldownGoesInStepsOf5BetweenItsBounds() {
            showTab("Remote Alerts");
            const stepper = reach("settings-cooldown");
            compare(stepper.text, "Cooldown: 30 min");
            mouseClick(findChild(stepper, "stepUp"));
            compare(alerts.cooldownMinutes, 35);
            compare(stepper.text, "Cooldown: 35 min");
            mouseClick(findChild(stepper, "stepDown"));
            mouseClick(findChild(stepper, "stepDown"));
            compare(alerts.cooldownMinutes, 25);
            alerts.cooldownMinutes = 5;
            mouseClick(findChild(stepper, "stepDown"));
            compare(alerts.cooldownMinutes, 5);
            alerts.cooldownMinutes = 240;
            mouseClick(findChild(stepper, "stepUp"));
            compare(alerts.cooldownMinutes, 240);
        }

        function test_aCooldownOutsideOfTheBoundsIsShownAsItIs() {
            showTab("Remote Alerts");
            const stepper = reach("settings-cooldown");
            alerts.cooldownMinutes = 1;
            compare(stepper.text, "Cooldown: 1 min");
            mouseClick(findChild(stepper, "stepDown"));
            compare(alerts.cooldownMinutes, 1);
            alerts.cooldownMinutes = 500;
            compare(stepper.text, "Cooldown: 500 min");
            mouseClick(findChild(stepper, "stepDown"));
            compare(alerts.cooldownMinutes, 495);
        }

        function test_thePreviewShowsTheTriggerPreviewInItsFirstLineAndTheLiveFigures() {
            showTab("Remote Alerts");
            const preview = view("briefPreview");
            verify(preview.text.split("\n")[0].endsWith(" [Preview]"), preview.text);
            Fixture.setSystemCPU(84.2);
            Fixture.tick();
            verify(preview.text.split("\n")[2].startsWith("• Load: CPU 84.2% · RAM "), preview.text);
            Fixture.setSystemCPU(12.5);
            Fixture.tick();
            verify(preview.text.split("\n")[2].startsWith("• Load: CPU 12.5% · RAM "), preview.text);
            compare(preview.text.split("\n").length, 5);
            compare(preview.font.family, OstrelFont.monospaced(10).family);
            compare(preview.font.pointSize, OstrelFont.monospaced(10).pointSize);
        }

        function test_testIMessageWithAnEmptyRecipientShowsTheMissingRecipientInRedAndSendsNothing() {
            showTab("Remote Alerts");
            const status = view("briefStatus");
            verify(!status.visible);
            click("settings-testIMessage");
            compare(view("settings-testIMessage").text, "Sending…");
            compare(view("settings-testWhatsApp").text, "Test WhatsApp");
            verify(!status.visible);
            Fixture.runBackground();
            compare(view("settings-testIMessage").text, "Test iMessage");
            tryVerify(() => status.visible);
            compare(status.text, "iMessage: Missing recipient phone/email.");
            verify(Qt.colorEqual(status.color, OstrelTheme.strainRed));
            compare(Fixture.sent.length, 0);
        }

        function test_testWhatsAppTriesItsOwnChannelAndSucceedsInGreen() {
            showTab("Remote Alerts");
            alerts.iMessageRecipient = "me@example.org";
            alerts.iMessageEnabled = true;
            alerts.whatsAppApiKeyOrWebhook = "http://127.0.0.1/hook";
            click("settings-testWhatsApp");
            Fixture.runBackground();
            compare(Fixture.sent.join(), "request");
            compare(view("briefStatus").text, "✓ Sent via WhatsApp Webhook");
            verify(Qt.colorEqual(view("briefStatus").color, OstrelTheme.safeGreen));
        }

        function test_theStatusIsSeenWhereverTheTabIsScrolledTo() {
            stage.width = 820;
            stage.height = 560;
            showTab("Remote Alerts");
            click("settings-testIMessage");
            Fixture.runBackground();
            const status = view("briefStatus");
            tryVerify(() => status.visible);
            for (const y of [0, 100]) {
                scroller().contentY = y;
                verify(status.mapToItem(stage, 0, status.height).y <= 560 - 16);
            }
        }

        function test_ticksLeaveScrollFocusAndAnOpenPickerAsTheyAre() {
            stage.width = 820;
            stage.height = 560;
            showTab("Remote Alerts");
            const picker = reach("settings-schedule");
            const y = scroller().contentY;
            verify(y > 0);
            mouseClick(picker);
            tryVerify(() => picker.popup.opened);
            for (let tick = 1; tick <= 3; ++tick) {
                Fixture.setSystemCPU(tick);
                Fixture.setStrain(tick === 2);
                Fixture.tick();
                waitForRendering(themed, 200);
            }
            alerts.cooldownMinutes = 60;
            alerts.whatsAppEnabled = true;
            verify(picker.popup.opened);
            compare(scroller().contentY, y);
            mouseClick(picker.popup.contentItem.itemAtIndex(4));
            compare(alerts.schedule, "daily");
            verify(picker.activeFocus);
            Fixture.tick();
            verify(picker.activeFocus);
        }

        function test_tabReachesEveryControlOfTheTabAndScrollsToIt_data() {
            return [
                {
                    tag: "Menu Bar",
                    last: "settings-colorMode"
                },
                {
                    tag: "Appearance",
                    last: "settings-interval-5"
                },
                {
                    tag: "Remote Alerts",
                    last: "settings-cooldown"
                },
                {
                    tag: "Integrations & MCP",
                    last: "settings-configuration"
                }
            ];
        }
        function test_tabReachesEveryControlOfTheTabAndScrollsToIt(data) {
            stage.width = 820;
            stage.height = 560;
            showTab(data.tag);
            scroller().contentY = 0;
            view("settings-tab-" + tabs[3]).forceActiveFocus(Qt.TabFocusReason);
            let steps = 0;
            while (focused() !== view(data.last) && steps < 30) {
                keyClick(Qt.Key_Tab);
                ++steps;
                const spot = focused().mapToItem(scroller(), 0, 0).y;
                verify(spot >= 0 && spot + focused().height <= scroller().height, focused().objectName + " at " + spot);
            }
            compare(focused(), view(data.last));
        }

        function test_theConfigurationCanBeSelectedAndNotChanged() {
            showTab("Integrations & MCP");
            const text = view("settings-configuration");
            const before = text.text;
            verify(before.startsWith("{\n  \"mcpServers\": {"));
            mousePress(text, 14, 16);
            mouseMove(text, 120, 60);
            mouseRelease(text, 120, 60);
            verify(text.selectedText.length > 10, text.selectedText);
            keyClick("x");
            compare(text.text, before);
            keyClick(Qt.Key_A, Qt.ControlModifier);
            compare(text.selectedText.length, before.length);
        }

        function test_theSheetFitsItsWindow_data() {
            return [
                {
                    tag: "the panel",
                    width: 820,
                    height: 560
                },
                {
                    tag: "the smallest window",
                    width: 1040,
                    height: 680
                },
                {
                    tag: "the window",
                    width: 1220,
                    height: 790
                }
            ];
        }
        function test_theSheetFitsItsWindow(data) {
            stage.width = data.width;
            stage.height = data.height;
            for (const title of tabs) {
                showTab(title);
                const header = view("closeSettings").parent.parent.parent;
                tryVerify(() => header.height <= data.height - 32 && header.height >= Math.min(640, data.height - 32));
                compare(header.width, 680);
                compare(scroller().contentWidth, scroller().width);
            }
        }

        function test_aRestartKeepsTheLookAndThePhoneSettingsAndForgetsTheRest() {
            showTab("Menu Bar");
            click("settings-readout-cpu");
            pick("settings-displayStyle", 0);
            showTab("Appearance");
            pick("settings-temperatureUnit", 1);
            click("settings-interval-5");
            click("settings-theme-light");
            wait(50);
            showTab("Remote Alerts");
            click("settings-iMessageEnabled");
            click("settings-notifyOnStrain");
            write("settings-iMessageRecipient", "me@example.org");
            write("settings-whatsAppPhone", "+1 (555)");
            write("settings-whatsAppApiKeyOrWebhook", "a=b; c");
            pick("settings-whatsAppMode", 1);
            pick("settings-schedule", 4);
            mouseClick(findChild(reach("settings-cooldown"), "stepDown"));
            Fixture.store.showSettingsModal = false;

            Fixture.restart();
            const store = Fixture.store;
            compare(store.look.themeMode, "light");
            compare(alerts.iMessageEnabled, true);
            compare(alerts.iMessageRecipient, "me@example.org");
            compare(alerts.whatsAppEnabled, false);
            compare(alerts.whatsAppPhone, "+1 (555)");
            compare(alerts.whatsAppMode, "desktopApp");
            compare(alerts.whatsAppApiKeyOrWebhook, "a=b; c");
            compare(alerts.notifyOnStrain, false);
            compare(alerts.schedule, "daily");
            compare(alerts.cooldownMinutes, 25);
            compare(Fixture.enabledReadouts.join(), "cpu,memory,temperature,power");
            compare(store.menuBarSettings.displayStyle, "both");
            compare(store.look.temperatureUnit, "celsius");
            compare(store.refreshIntervalSeconds, 2);
            compare(store.selectedSettingsTab, "Menu Bar");
        }

        function test_everyControlHasANameAndARole() {
            compare(view("closeSettings").Accessible.name, "Close");
            compare(view("settings-tab-Appearance").Accessible.role, Accessible.PageTab);
            compare(view("settings-tab-Appearance").Accessible.name, "Appearance");
            showTab("Menu Bar");
            compare(view("settings-readout-neuralEngine").Accessible.name, "Neural Engine");
            compare(view("settings-readout-cpu").Accessible.role, Accessible.CheckBox);
            compare(view("settings-readout-cpu").Accessible.checked, true);
            compare(view("settings-colorMode").Accessible.role, Accessible.ComboBox);
            compare(view("settings-colorMode").Accessible.name, "Colour Mode: Colour on strain");
            showTab("Appearance");
            compare(view("settings-theme-dark").Accessible.name, "Dark Mode");
            compare(view("settings-theme-dark").Accessible.role, Accessible.RadioButton);
            compare(view("settings-theme-dark").Accessible.checked, true);
            compare(view("settings-interval-5").Accessible.name, "5 seconds");
            compare(view("settings-retention").Accessible.name, "History Retention: 90 days");
            showTab("Remote Alerts");
            compare(view("settings-iMessageEnabled").Accessible.role, Accessible.CheckBox);
            compare(view("settings-iMessageEnabled").Accessible.name, "Enable iMessage");
            compare(view("settings-cooldown").Accessible.role, Accessible.SpinBox);
            compare(view("settings-cooldown").Accessible.name, "Cooldown: 30 min");
            compare(view("settings-testWhatsApp").Accessible.name, "Test WhatsApp");
            showTab("Integrations & MCP");
            compare(view("settings-configuration").Accessible.name, "Client configuration");
        }
    }
}
