import QtQuick
import QtTest
import Korvantis.Screens
import ScreenTests

Item {
    id: stage

    width: 200
    height: 100

    Rectangle {
        id: paper

        anchors.fill: parent
        color: "white"
    }
    AppIconView {
        id: icon

        x: 10
        y: 10
        fallbackSymbol: "stop.circle.fill"
        size: 24
    }

    TestCase {
        name: "AppIcon"
        when: windowShown

        function init() {
            icon.bundlePath = "";
            icon.size = 24;
        }
        function pixel(x, y) {
            return grabImage(stage).pixel(icon.x + x, icon.y + y);
        }

        function test_anApplicationShowsItsIcon() {
            icon.bundlePath = Fixture.installApplication();
            compare(icon.status, Image.Ready);
            compare(pixel(2, 2), Qt.color("red"));
            compare(pixel(21, 21), Qt.color("red"));
        }
        function test_withoutAPathTheSymbolStandsInInItsColour() {
            compare(icon.status, Image.Ready);
            compare(pixel(1, 1), Qt.color("white"));
            compare(pixel(6, 12), icon.tint);
        }
        function test_anApplicationThatHasGoneShowsTheSymbol() {
            icon.bundlePath = "/no/such/place.app";
            compare(icon.status, Image.Ready);
            compare(pixel(6, 12), icon.tint);
        }
        function test_itHasTheSizeAskedFor_data() {
            return [16, 22, 24, 40].map(size => ({
                        tag: "size " + size,
                        size: size
                    }));
        }
        function test_itHasTheSizeAskedFor(data) {
            icon.bundlePath = Fixture.installApplication();
            icon.size = data.size;
            compare(icon.width, data.size);
            compare(icon.implicitHeight, data.size);
            compare(pixel(data.size - 2, data.size - 2), Qt.color("red"));
            compare(pixel(data.size + 1, data.size + 1), Qt.color("white"));
        }
        function test_itIsDecorationForAScreenReader() {
            verify(icon.Accessible.ignored);
        }
    }
}
