pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Korvantis.State
import Korvantis.Screens

// The lists to choose from, the filter, and for the applications what else decides on their list.
// Where there is no room for one line it takes two.
GridLayout {
    id: toolbar

    required property MonitorStore store
    required property ProcessesPaneModel processes
    readonly property bool isAppsTab: store.selectedProcessSubTab === "apps"

    function focusSearch() {
        search.forceActiveFocus(Qt.ShortcutFocusReason);
        search.selectAll();
    }

    columns: width < 1120 ? 1 : 2
    columnSpacing: 16
    rowSpacing: 10

    Row {
        spacing: 6
        Accessible.role: Accessible.PageTabList
        Accessible.name: "Lists"

        Repeater {
            model: toolbar.processes.tabs

            SubTabPill {
                required property choice modelData
                required property int index

                objectName: "subTab-" + modelData.name
                text: modelData.label
                badge: toolbar.processes.badges[index] ?? ""
                isSelected: toolbar.store.selectedProcessSubTab === modelData.name
                onClicked: toolbar.store.selectedProcessSubTab = modelData.name
            }
        }
    }
    RowLayout {
        Layout.fillWidth: true
        // As high with the switch as without.
        Layout.minimumHeight: systemToggle.implicitHeight
        spacing: 10

        SearchField {
            id: search

            Layout.fillWidth: true
            placeholderText: "Filter apps, PIDs, :ports, or projects..."
            text: toolbar.store.processSearchText
            onTextEdited: toolbar.store.processSearchText = text
        }
        SystemProcessesToggle {
            id: systemToggle

            objectName: "systemToggle"
            visible: toolbar.isAppsTab
            isOn: toolbar.store.showSystemProcesses
            onClicked: toolbar.store.showSystemProcesses = !isOn
        }
        PickerField {
            objectName: "sortPicker"
            visible: toolbar.isAppsTab
            caption: "Sort"
            model: toolbar.processes.sortFields
            currentIndex: toolbar.processes.indexOfSortField(toolbar.store.processSortField)
            onActivated: toolbar.store.processSortField = currentValue
        }
    }
}
