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

    SettingsTestCase {
        name: "Settings"
        stage: stage
        themed: themed

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
