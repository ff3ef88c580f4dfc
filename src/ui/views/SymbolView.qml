import QtQuick
import Korvantis.Screens

// A system symbol in one colour, for a font of `size`. It is decoration: what it stands for is
// said by its neighbour.
Image {
    id: symbol

    required property string name
    property real size: 12
    property color tint: OstrelTheme.ink2

    // Glyphs leave a margin, so they are drawn a little larger than letters.
    readonly property int pixels: Math.round(size * 1.3)

    source: name === "" ? "" : "image://symbol/" + name + "/" + String(tint).slice(1)
    sourceSize.width: pixels
    sourceSize.height: pixels
    width: pixels
    height: pixels
    Accessible.ignored: true
}
