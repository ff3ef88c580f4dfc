import QtQuick
import Korvantis.Screens

// What runs on the machine, folded into what it means, to be searched, judged and stopped.
PaneView {
    id: pane

    readonly property string tab: store.selectedProcessSubTab

    function tabLabel(): string {
        for (let index = 0; index < processes.tabs.length; ++index) {
            if (processes.tabs[index].name === tab)
                return processes.tabs[index].label;
        }
        return "";
    }

    onTabChanged: list.showFromStart()

    ProcessesPaneModel {
        id: processes

        store: pane.store
    }
    ProcessesToolbar {
        id: toolbar

        anchors.top: parent.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.margins: 16
        store: pane.store
        processes: processes
    }
    IdleServersHeader {
        id: header

        objectName: "idleServersHeader"
        visible: pane.tab === "idleServers" && list.count > 0
        anchors.top: toolbar.bottom
        anchors.topMargin: 12
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: 16
        anchors.rightMargin: 16
        onStopAll: pane.store.stopAllIdleServers()
    }
    ProcessesListView {
        id: list

        anchors.top: header.visible ? header.bottom : toolbar.bottom
        anchors.topMargin: header.visible ? 8 : 12
        anchors.left: parent.left
        anchors.leftMargin: 16
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        bottomMargin: 8
        processes: processes
        Accessible.name: pane.tabLabel()
    }
    EmptyStateView {
        objectName: "emptyState"
        visible: list.count === 0 && title !== ""
        anchors.centerIn: list
        anchors.horizontalCenterOffset: -list.endMargin / 2
        icon: processes.emptyState.icon
        title: processes.emptyState.title
        subtitle: processes.emptyState.subtitle
    }

    Shortcut {
        sequence: "Ctrl+F"
        onActivated: toolbar.focusSearch()
    }
}
