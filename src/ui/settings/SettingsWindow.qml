import QtQuick
import Korvantis.State
import Korvantis.Screens

// The settings as a window of their own.
Window {
    id: window

    required property MonitorStore store

    title: "Korvantis Preferences"
    width: content.implicitWidth
    height: content.implicitHeight
    minimumWidth: content.implicitWidth
    maximumWidth: content.implicitWidth
    minimumHeight: content.implicitHeight
    maximumHeight: content.implicitHeight
    color: OstrelTheme.canvas

    ThemedSettings {
        id: content

        anchors.fill: parent
        focus: true
        store: window.store
        onClose: window.close()
    }

    Shortcut {
        sequences: ["Escape", "Ctrl+W"]
        onActivated: window.close()
    }
    ApplicationKeys {}
}
