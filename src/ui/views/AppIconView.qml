import QtQuick
import Korvantis.Screens

// The icon of an application, or a symbol where it has none. It is decoration: the name stands
// beside it.
Image {
    id: icon

    property string bundlePath
    property string fallbackSymbol: "app.fill"
    property real size: 24
    readonly property color tint: OstrelTheme.ink3

    // Icons that were found are kept by AppIconCache; one that was not may be there the next time.
    cache: false
    source: "image://appicon/" + fallbackSymbol + "/" + String(tint).slice(1) + "/" + Qt.btoa(bundlePath)
    sourceSize.width: Math.round(size)
    sourceSize.height: Math.round(size)
    width: Math.round(size)
    height: Math.round(size)
    Accessible.ignored: true
}
