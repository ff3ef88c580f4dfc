import QtQuick
import Korvantis.State
import Korvantis.Screens

// The main window. Its colour behind the content is pushed onto it with the appearance.
Window {
    id: window

    required property MonitorStore store
    // A capture shows the settings over a darkened root view for its last picture.
    property bool showsSettingsComposition: false

    signal openPreferences

    title: "Korvantis — macOS System, Process & AI Monitor"
    width: 1220
    height: 790
    minimumWidth: 1040
    minimumHeight: 680
    color: "#131315"

    ThemedContent {
        anchors.fill: parent
        store: window.store
        showsSettingsComposition: window.showsSettingsComposition
    }

    ApplicationKeys {
        onPreferences: window.openPreferences()
    }
}
