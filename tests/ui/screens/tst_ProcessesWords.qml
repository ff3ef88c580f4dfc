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
        id: root

        anchors.fill: parent
        store: Fixture.store
    }

    ProcessesTestCase {
        name: "ProcessesWords"
        stage: stage
        root: root

        function test_thePillsStandOutWhenSelected() {
            showSamples("apps");
            const selected = view("subTab-apps");
            compare(Shown.faultsIn(selected, [["Apps", OstrelTheme.ink1, OstrelFont.system(12, Font.DemiBold)], ["3", OstrelTheme.ink1, OstrelFont.monospaced(10, Font.Bold)]]), "");
            compare(Shown.faultsIn(view("subTab-ports"), [["Ports", OstrelTheme.ink2, OstrelFont.system(12, Font.Medium)], ["3", OstrelTheme.ink2, OstrelFont.monospaced(10, Font.Bold)]]), "");
            compare(String(findChild(selected, "badge").color), String(Qt.alpha(OstrelTheme.cpu, 0.25)));
        }
        function test_theToolbarSaysWhatItsControlsAreFor() {
            compare(Shown.symbolWordsOf(view("searchField")).map(words => words.split(" ")[0]), ["magnifyingglass"]);
            Fixture.store.processSearchText = "a";
            compare(Shown.symbolWordsOf(view("searchField")).map(words => words.split(" ")[0]), ["magnifyingglass", "xmark.circle.fill"]);
            compare(view("systemToggle").text, "System Processes");
            compare(Shown.textsOf(view("sortPicker")).map(text => text.text), ["Sort", "Memory"]);
        }
        function test_anApplicationSaysItsWordsInTheirInks() {
            showSamples("apps");
            const figure = OstrelFont.monospaced(11.5, Font.DemiBold);
            const label = OstrelFont.rounded(8.5, Font.Bold);
            verify(row(0).row.subtitle !== "");
            expectWords(0, [["Web Browser", OstrelTheme.ink1], ["20 helpers", OstrelTheme.ink2], ["Ask first", OstrelTheme.amberWarning], [row(0).row.subtitle, OstrelTheme.ink3, OstrelFont.system(10)], ["70.6%", OstrelTheme.heat, figure], ["CPU", OstrelTheme.ink3, label], ["4.1 GB", OstrelTheme.ink1, figure], ["MEMORY", OstrelTheme.ink3, label], ["4.2 W", OstrelTheme.ink2, figure], ["ENERGY", OstrelTheme.ink3, label], ["1.5 MB/s", OstrelTheme.ink3, figure], ["NET", OstrelTheme.ink3, label]]);
            compare(Shown.symbolWordsOf(row(0))[0].split(" ").slice(0, 2), ["chevron.right", String(OstrelTheme.ink3)]);
            compare(part(0, "quit").text, "Quit");
            expectWords(1, [["Code Editor", OstrelTheme.ink1], ["9.1%", OstrelTheme.ink1, figure]]);
            expectWords(2, [["Music Player", OstrelTheme.ink1]]);
            verify(!part(2, "helpers").visible);
        }
        function test_theDetailsOfAnApplicationSayTheirWordsInTheirInks() {
            showSamples("apps");
            toggle(1);
            expectWords(2, [["HELPER BREAKDOWN BY ROLE", OstrelTheme.ink3]]);
            expectWords(3, [["Main app", OstrelTheme.ink2], ["1p", OstrelTheme.ink3], ["280 MB · 3.1% CPU", OstrelTheme.ink1]]);
            expectWords(6, [["PROCESS TREE (7)", OstrelTheme.ink3]]);
            expectWords(8, [["PID 3001", OstrelTheme.ink3], ["extension-host", OstrelTheme.ink1], ["Extensions", OstrelTheme.ink2], [":3000", OstrelTheme.ink2], [":9229", OstrelTheme.ink2], ["6.0%", OstrelTheme.ink2], ["520 MB", OstrelTheme.ink1]]);
            verify(!Shown.textsOf(row(8)).some(text => text.text === ":50123"));
            compare(Shown.symbolWordsOf(row(8)).map(words => words.split(" ").slice(0, 2)), [["xmark.circle", String(OstrelTheme.ink3)]]);
        }
        function test_aProjectSaysItsWordsInTheirInks() {
            showSamples("projects");
            expectWords(0, [["shop", OstrelTheme.ink1], ["/home/dev/projects/shop", OstrelTheme.ink3], [":3000", OstrelTheme.ink2], [":5173", OstrelTheme.ink2], ["640 MB", OstrelTheme.ink1], ["8.5% CPU", OstrelTheme.ink2]]);
            compare(Shown.symbolWordsOf(row(0)).map(words => words.split(" ").slice(0, 2)), [["folder.fill.badge.gearshape", String(OstrelTheme.cpu)]]);
            expectWords(1, [["PID 4000", OstrelTheme.ink3], ["node", OstrelTheme.ink1], ["node /home/dev/projects/shop/node_modules/.bin/vite --port 5173 --host", OstrelTheme.ink3], ["80 MB", OstrelTheme.ink2]]);
            compare(part(1, "stop").text, "Stop");
        }
        function test_aContainerSaysItsWordsInTheirInks() {
            showSamples("containers");
            expectWords(0, [["shop-db", OstrelTheme.ink1], ["postgres:16 · Docker · Up 3 hours", OstrelTheme.ink3], [":5432", OstrelTheme.ink2], ["1.5% CPU", OstrelTheme.ink2], ["128 MB", OstrelTheme.ink1]]);
            compare(Shown.symbolWordsOf(row(0)).map(words => words.split(" ").slice(0, 2)), [["shippingbox.fill", String(OstrelTheme.gpu)]]);
        }
        function test_aPortSaysItsWordsInTheirInks() {
            showSamples("ports");
            expectWords(0, [[":3000", OstrelTheme.ink1], ["extension-host", OstrelTheme.ink1], ["Code Editor", OstrelTheme.ink3], ["PID 3001", OstrelTheme.ink3], ["520 MB", OstrelTheme.ink2]]);
            expectWords(1, [[":5173", OstrelTheme.ink1], ["node", OstrelTheme.ink1], ["/home/dev/projects/shop", OstrelTheme.ink3], ["Idle", OstrelTheme.ink2], ["PID 4000", OstrelTheme.ink3]]);
            compare(part(1, "stop").text, "Stop");
        }
        function test_anIdleServerSaysItsWordsInTheirInks() {
            showSamples("idleServers");
            compare(Shown.faultsIn(view("idleServersHeader"), [["Forgotten Dev Servers", OstrelTheme.ink1], ["These local dev servers have been listening with near-zero traffic and can be safely stopped to reclaim memory.", OstrelTheme.ink2]]), "");
            compare(view("stopAll").symbol, "stop.circle.fill");
            expectWords(0, [["shop — node", OstrelTheme.ink1], ["/home/dev/projects/shop", OstrelTheme.ink3], [":5173", OstrelTheme.ink2], ["Idle 2h 15m", OstrelTheme.ink2], ["80 MB", OstrelTheme.ink1]]);
            compare(Shown.symbolWordsOf(row(0)).map(words => words.split(" ")[0]), ["server.rack"]);
            compare(part(0, "stop").text, "Stop");
        }
        function test_anEmptyStateIsQuiet() {
            Fixture.store.selectedProcessSubTab = "containers";
            tryVerify(() => view("emptyState").visible);
            compare(Shown.faultsIn(view("emptyState"), [["No Running Containers", OstrelTheme.ink1], ["Docker, OrbStack, and Podman containers will appear here with live CPU, RAM, and mapped ports.", OstrelTheme.ink3]]), "");
            compare(Shown.symbolWordsOf(view("emptyState")), ["shippingbox.fill " + OstrelTheme.ink3 + " 26"]);
        }
    }
}
