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
        name: "InsightsBriefs"
        stage: stage
        loader: loader

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
    }
}
