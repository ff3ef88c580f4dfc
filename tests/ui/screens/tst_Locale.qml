import QtQuick
import QtTest
import Korvantis.Screens
import ScreenTests
import "ShownTexts.js" as Shown

// Every text that is on the screen, in every language that a user may have.
Item {
    id: stage

    width: 1220
    height: 790

    ThemedContent {
        id: themed

        anchors.fill: parent
        store: Fixture.store
    }

    Component {
        id: settingsComponent

        SettingsModalView {
            anchors.fill: parent
            store: Fixture.store
        }
    }

    TestCase {
        name: "Locale"
        when: windowShown

        function cleanup() {
            Fixture.setLanguage("");
        }
        function textsIn(item) {
            return Shown.textsOf(item).map(shown => shown.text);
        }
        function textsOf(pane, language) {
            Fixture.setLanguage(language);
            Fixture.reset();
            Fixture.plugInAudio();
            Fixture.setApplications(4);
            Fixture.setCPU(1234.5);
            Fixture.setAgents(2, 3);
            Fixture.setInsights(2);
            Fixture.setStrain(true);
            Fixture.tick();
            Fixture.store.selectedPane = pane;
            themed.rebuild();
            waitForRendering(themed);
            return textsIn(themed);
        }
        function isTokenCount(text) {
            return text.endsWith(" tok");
        }

        function test_noTextButTheTokenCountsFollowsTheLanguage_data() {
            return ["overview", "processes", "insights", "history", "agents", "sound"].map(pane => ({
                        tag: pane
                    }));
        }
        function test_noTextButTheTokenCountsFollowsTheLanguage(data) {
            const english = textsOf(data.tag, "en_US");
            verify(english.length > 10, english.length);
            for (const language of ["de_DE", "tr_TR"]) {
                const texts = textsOf(data.tag, language);
                compare(texts.filter(text => !isTokenCount(text)), english.filter(text => !isTokenCount(text)));
                compare(texts.filter(isTokenCount), english.filter(isTokenCount).map(text => text.replace(/,/g, ".")));
            }
        }
        function settingsTextsOf(tab, language) {
            Fixture.setLanguage(language);
            Fixture.reset();
            Fixture.setSystemCPU(1234.5);
            Fixture.tick();
            Fixture.store.selectedSettingsTab = tab;
            const settings = createTemporaryObject(settingsComponent, stage);
            tryVerify(() => findChild(settings, "settingsScroller") !== null);
            waitForRendering(settings);
            return textsIn(settings);
        }
        function test_noTextOfTheSettingsFollowsTheLanguage_data() {
            return ["Menu Bar", "Appearance", "Remote Alerts", "Integrations & MCP"].map(tab => ({
                        tag: tab
                    }));
        }
        function test_noTextOfTheSettingsFollowsTheLanguage(data) {
            const english = settingsTextsOf(data.tag, "en_US");
            verify(english.length > 6, english.length);
            for (const language of ["de_DE", "tr_TR"])
                compare(settingsTextsOf(data.tag, language), english);
        }
        function test_theTokenCountsAreGroupedAsTheLanguageDoes() {
            compare(textsOf("agents", "de_DE").filter(isTokenCount), ["Today: 184.200 tok", "7d: 1.420.500 tok", "Today: 96.400 tok", "7d: 680.000 tok"]);
        }
        function test_capitalsAreMadeByNoLanguagesRules() {
            verify(textsOf("overview", "tr_TR").includes("DISK & VOLUMES"));
        }
    }
}
