import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T
import Korvantis.State
import Korvantis.Screens

// The settings as a sheet over the window; Escape closes it.
Popup {
    id: sheet

    required property MonitorStore store

    objectName: "settingsSheet"
    parent: T.Overlay.overlay
    anchors.centerIn: parent
    modal: true
    focus: true
    padding: 0
    visible: store.showSettingsModal
    closePolicy: Popup.CloseOnEscape
    enter: null
    exit: null
    onClosed: store.showSettingsModal = false

    contentItem: SettingsModalView {
        store: sheet.store
        focus: true
        onClose: sheet.store.showSettingsModal = false
    }
    background: Rectangle {
        color: OstrelTheme.canvas
        radius: 14
        border.width: 1
        border.color: OstrelTheme.subtleBorder
    }
    T.Overlay.modal: Rectangle {
        color: Qt.rgba(0, 0, 0, 0.5)
    }
}
