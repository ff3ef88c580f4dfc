import QtQuick
import QtTest
import Korvantis.Screens

Item {
    id: stage

    width: 600
    height: 500

    OstrelCardContainer {
        id: card

        property int taps: 0

        x: 10
        y: 10
        width: 280
        title: "Processor"
        iconName: "cpu"
        accentColor: OstrelTheme.cpu
        headline: "12.5%"
        subheadline: "8.0% user"
        isTappable: true
        onTapped: taps += 1

        SparklineView {
            id: line

            objectName: "line"
            width: 240
            values: [1, 2, 3]
            color: OstrelTheme.cpu
        }
    }
    QuitSafetyBadgeView {
        id: badge

        x: 10
        y: 300
        verdict: "ask_first"
    }
    SparklineView {
        id: spark

        x: 320
        y: 20
        width: 100
        color: "#0A84FF"
        maxValue: 100
        values: [100, 100, 100]
    }

    CoreBars {
        id: cores

        x: 320
        y: 100
        width: 120
        height: 20
        shares: [1, 0.05, 0.5]
        performanceCores: 1
    }

    TestCase {
        name: "SharedViews"
        when: windowShown

        function frame() {
            return findChild(card, "frame");
        }
        function init() {
            mouseMove(stage, 500, 450);
            tryVerify(() => Qt.colorEqual(frame().color, OstrelTheme.cardBackground));
        }

        function test_aCardIsRaisedAndTintedUnderThePointer() {
            verify(!card.isHovered);
            verify(Qt.colorEqual(frame().border.color, OstrelTheme.hairline));
            mouseMove(card, 100, 20);
            verify(card.isHovered);
            tryVerify(() => Qt.colorEqual(frame().color, OstrelTheme.elevatedCard));
            tryVerify(() => Math.abs(frame().border.color.a - 0.45) < 0.01);
        }
        function test_aClickAnywhereAndTheKeyboardTapACard() {
            card.taps = 0;
            mouseClick(card, 20, 20);
            compare(card.taps, 1);
            mouseClick(card, 200, 90);
            compare(card.taps, 2);
            card.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            keyClick(Qt.Key_Return);
            compare(card.taps, 4);
            stage.forceActiveFocus();
            card.isTappable = false;
            mouseClick(card, 20, 20);
            compare(card.taps, 4);
            card.isTappable = true;
        }
        function test_aCardSaysWhatItShows() {
            compare(card.Accessible.role, Accessible.Button);
            compare(card.Accessible.name, "Processor: 12.5%, 8.0% user");
        }
        function test_aCardHasItsFacesColoursAndRoom() {
            const icon = findChild(card, "icon");
            compare(icon.name, "cpu");
            compare(icon.size, 12);
            verify(Qt.colorEqual(icon.tint, OstrelTheme.cpu));
            const title = findChild(card, "title");
            compare(title.text, "PROCESSOR");
            compare(title.font, OstrelFont.rounded(11, Font.Bold, 0.6));
            verify(Qt.colorEqual(title.color, OstrelTheme.ink2));
            compare(title.x - icon.x - icon.width, 6);
            const headline = findChild(card, "headline");
            compare(headline.font, OstrelFont.rounded(22, Font.Bold));
            verify(Qt.colorEqual(headline.color, OstrelTheme.ink1));
            const subheadline = findChild(card, "subheadline");
            compare(subheadline.font, OstrelFont.monospaced(11, Font.Medium));
            verify(Qt.colorEqual(subheadline.color, OstrelTheme.ink3));
            compare(frame().radius, 12);
            compare(frame().border.width, 1);
            let bottom = 6;
            for (const part of [title.parent, headline, subheadline, line.parent]) {
                compare(part.mapToItem(card, 0, 0).x, 16);
                compare(part.mapToItem(card, 0, 0).y, bottom + 10);
                bottom = part.mapToItem(card, 0, part.height).y;
            }
            compare(card.implicitHeight, bottom + 16);
        }
        function test_aCardWithoutASubheadlineLeavesNoRoomForOne() {
            const height = card.implicitHeight;
            const lost = findChild(card, "subheadline").height + 10;
            card.subheadline = "";
            tryCompare(card, "implicitHeight", height - lost);
            card.subheadline = "8.0% user";
            tryCompare(card, "implicitHeight", height);
        }
        function test_aHoverChangeEasesOutIn140Milliseconds() {
            for (const name of ["groundFade", "borderFade"]) {
                const animation = findChild(frame(), name);
                compare(animation.duration, 140);
                compare(animation.easing.type, Easing.OutQuad);
            }
        }
        function test_aHeadlineShrinksTo085OfItsSizeAndIsCutOnlyThen() {
            const headline = findChild(card, "headline");
            card.headline = "12,345.6 GB";
            while (headline.implicitWidth <= headline.width)
                card.headline += "0";
            verify(headline.implicitWidth * 0.85 < headline.width);
            waitForRendering(card);
            verify(!headline.truncated);
            verify(headline.contentWidth <= headline.width + 1);
            card.headline = "123,456.7 GB of a good deal more";
            waitForRendering(card);
            verify(headline.truncated);
            verify(headline.contentWidth <= headline.width + 1);
            card.headline = "12.5%";
            tryVerify(() => !headline.truncated);
        }
        function test_theBadgeIsACapsuleAroundItsWords() {
            for (const [verdict, words] of [["safe", "Safe to quit"], ["ask_first", "Ask first"], ["do_not", "Don't quit"]]) {
                badge.verdict = verdict;
                const label = findChild(badge, "words");
                compare(label.text, words);
                compare(badge.Accessible.name, words);
                compare(label.font, OstrelFont.rounded(10, Font.DemiBold));
                verify(Qt.colorEqual(label.color, QuitSafetyBadge.ink(verdict)));
                verify(Qt.colorEqual(badge.color, QuitSafetyBadge.ground(verdict)));
                compare([label.x, label.y], [7, 2.5]);
                compare([badge.width, badge.height], [label.width + 14, label.height + 5]);
                compare(badge.radius, badge.height / 2);
            }
            badge.verdict = "ask_first";
        }
        function test_aSparklineIs38HighUnlessToldOtherwise() {
            compare(spark.height, 38);
        }
        function test_aSparklineDrawsItsLineAtTheTopAndItsGroundBelow() {
            waitForRendering(spark);
            const picture = grabImage(spark);
            // The line itself, then a ground over white that fades toward the bottom.
            verify(picture.red(50, 0) < 100);
            verify(picture.red(50, 8) < picture.red(50, 34));
        }
        function test_anEmptySparklineDrawsNothing() {
            spark.values = [];
            waitForRendering(spark);
            const picture = grabImage(spark);
            compare(String(picture.pixel(50, 19)), String(picture.pixel(1, 37)));
            spark.values = [100, 100, 100];
        }
        function test_eachCoreHasABarInTheColourOfItsKindFilledFromBelow() {
            waitForRendering(cores);
            const picture = grabImage(cores);
            const at = (x, y) => picture.pixel(x, y);
            const isLike = (x, y, color) => verify(Qt.colorEqual(at(x, y), color), x + ", " + y + ": " + at(x, y));
            isLike(20, 3, OstrelTheme.cpu);
            isLike(20, 16, OstrelTheme.cpu);
            // A core at rest shows the floor of its bar.
            isLike(60, 10, OstrelTheme.elevatedCard);
            verify(!Qt.colorEqual(at(60, 19), OstrelTheme.elevatedCard));
            isLike(100, 5, OstrelTheme.elevatedCard);
            isLike(100, 15, OstrelTheme.gpu);
            cores.performanceCores = 3;
            waitForRendering(cores);
            verify(Qt.colorEqual(grabImage(cores).pixel(100, 15), OstrelTheme.cpu));
        }
        function test_equalValuesDrawNothingAnew() {
            let changes = 0;
            const count = () => changes += 1;
            spark.valuesChanged.connect(count);
            spark.values = [100, 100, 100];
            compare(changes, 0);
            spark.values = [1, 2, 3];
            compare(changes, 1);
            spark.valuesChanged.disconnect(count);
            spark.values = [100, 100, 100];
        }
    }
}
