import QtQuick
import Korvantis.State
import Korvantis.Screens

// The panel of the status item. It closes when the user clicks elsewhere or presses Escape, and
// keeps what it shows for the next time.
Window {
    id: popover

    required property MonitorStore store

    signal openFullWindow
    signal openPreferences

    title: "Korvantis"
    width: 820
    height: 560
    minimumWidth: 820
    maximumWidth: 820
    minimumHeight: 560
    maximumHeight: 560
    flags: Qt.Tool | Qt.FramelessWindowHint | Qt.WindowStaysOnTopHint
    color: "#131315"

    onActiveChanged: if (!active) hide()

    ThemedContent {
        anchors.fill: parent
        store: popover.store
        isCompactPopover: true
        offersFullWindow: true
        onOpenFullWindow: popover.openFullWindow()
    }

    Shortcut {
        sequence: "Escape"
        enabled: !popover.store.showSettingsModal
        onActivated: popover.hide()
    }
    ApplicationKeys {
        onPreferences: popover.openPreferences()
    }
}
