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

    SettingsTestCase {
        name: "SettingsBriefs"
        stage: stage
        themed: themed

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
    }
}
