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
        name: "Overview"
        when: windowShown

        function init() {
            Fixture.reset();
            Fixture.store.selectedPane = "overview";
            stage.width = 1220;
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
            verify(view("overviewScroller").contentWidth <= data.width);
        }
        function test_aQuitButtonQuitsTheApplicationOfItsRow() {
            mouseClick(view("quit-application7"));
            compare(Fixture.stopped, "quit:daemon:application7");
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
        function test_autoGivesTheFanBack() {
            mouseClick(view("fanControl"));
            tryVerify(() => view("fanPopup").opened);
            mouseClick(view("fanAuto"));
            tryVerify(() => !view("fanPopup").opened);
            compare(Fixture.fanWishes, "0:auto");
        }
        function linesOf(item) {
            let lines = [];
            for (let index = 0; index < item.children.length; ++index) {
                const child = item.children[index];
                if (child instanceof CardLine && child.visible)
                    lines.push(child);
                lines = lines.concat(linesOf(child));
            }
            return lines;
        }
        function test_noFigureLeavesItsLineWhenItGrows() {
            Fixture.setCPU(1);
            Fixture.tick();
            waitForRendering(themed);
            Fixture.setCPU(1234);
            Fixture.tick();
            wait(50);
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
