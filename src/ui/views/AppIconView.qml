import QtQuick
import Korvantis.Screens

// The icon of an application, or a symbol where it has none. It is decoration: the name stands
// beside it.
Item {
    id: icon

    property string bundlePath
    property string fallbackSymbol: "app.fill"
    property real size: 24

    implicitWidth: size
    implicitHeight: size

    SymbolView {
        anchors.centerIn: parent
        name: icon.fallbackSymbol
        size: icon.size / 1.6
        tint: OstrelTheme.ink3
    }
}
