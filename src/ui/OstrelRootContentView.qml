import QtQuick
import QtQuick.Layouts
import Korvantis.State
import Korvantis.Screens

// The one view that frames all screens, in the main window and in the popover. It keeps no state
// of its own.
FocusScope {
    id: root

    required property MonitorStore store
    required property bool isCompactPopover
    // Set in the popover, which then hears of a click by openFullWindow().
    property bool offersFullWindow: false

    signal openFullWindow

    focus: true

    RootContentModel {
        id: rootModel

        store: root.store
    }

    Rectangle {
        anchors.fill: parent
        color: OstrelTheme.canvas
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        TopNavigationBar {
            Layout.fillWidth: true
            store: root.store
            content: rootModel
            isCompactPopover: root.isCompactPopover
            offersFullWindow: root.offersFullWindow
            onOpenFullWindow: root.openFullWindow()
        }

        Rectangle {
            Layout.fillWidth: true
            Layout.preferredHeight: 1
            color: OstrelTheme.hairline
        }

        PaneLoader {
            objectName: "pane"
            Layout.fillWidth: true
            Layout.fillHeight: true
            store: root.store
        }

        Rectangle {
            Layout.fillWidth: true
            Layout.preferredHeight: 1
            color: OstrelTheme.hairline
        }

        BottomStatusBar {
            Layout.fillWidth: true
            content: rootModel
        }
    }

    SettingsSheet {
        store: root.store
    }
}
