import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T
import Korvantis.State
import Korvantis.Screens

// The settings as a sheet over the window; Escape closes it. Its content is there only while it is
// shown.
Popup {
    id: sheet

    required property MonitorStore store

    objectName: "settingsSheet"
    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: parent ? Math.min(loader.implicitWidth, parent.width - 32) : 0
    height: parent ? Math.min(loader.implicitHeight, parent.height - 32) : 0
    modal: true
    focus: true
    padding: 0
    visible: store.showSettingsModal
    closePolicy: Popup.CloseOnEscape
    enter: null
    exit: null
    onAboutToShow: loader.setSource(Qt.resolvedUrl("SettingsModalView.qml"), {
        store: store,
        focus: true
    })
    onClosed: {
        store.showSettingsModal = false;
        loader.source = "";
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

    Loader {
        id: loader

        anchors.fill: parent
        focus: true
    }
    Connections {
        target: loader.item as SettingsModalView

        function onClose() {
            sheet.store.showSettingsModal = false;
        }
    }
}
