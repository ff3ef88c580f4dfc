pragma ComponentBehavior: Bound

import QtQuick
import Korvantis.State
import Korvantis.Screens

// The tabs of the panes.
FrameView {
    id: tabs

    required property MonitorStore store
    required property RootContentModel content
    required property bool isCompactPopover

    implicitWidth: row.implicitWidth + 6
    implicitHeight: row.implicitHeight + 6
    Accessible.role: Accessible.PageTabList
    Accessible.name: "Panes"

    Row {
        id: row

        anchors.centerIn: parent
        spacing: 2

        Repeater {
            model: tabs.content.tabs

            PaneTabButton {
                required property paneTab modelData

                tab: modelData
                sidePadding: tabs.isCompactPopover ? 9 : 12
                // With the icons too, the panel has no room left for the program's name.
                showsIcon: !tabs.isCompactPopover
                isSelected: tabs.store.selectedPane === tab.pane
                badge: tab.pane === "insights" ? tabs.content.insightBadge : ""
                onClicked: tabs.store.selectedPane = tab.pane
            }
        }
    }
}
