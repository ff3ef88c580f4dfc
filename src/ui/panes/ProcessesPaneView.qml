import QtQuick
import QtQuick.Layouts
import Korvantis.Screens

// What runs on the machine, to be searched, sorted, opened and stopped.
PaneView {
    id: pane

    ProcessesPaneModel {
        id: processes
    }
    ApplicationList {
        id: list

        store: pane.store
        followsPicker: true
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 16
        spacing: 12

        RowLayout {
            Layout.fillWidth: true
            spacing: 10

            SearchField {
                id: search

                Layout.fillWidth: true
                placeholderText: "Filter apps, PIDs, :ports, or projects..."
                text: pane.store.processSearchText
                onTextEdited: pane.store.processSearchText = text
            }
            PickerField {
                id: sort

                objectName: "sortPicker"
                caption: "Sort"
                model: processes.sortFields
                currentIndex: processes.indexOfSortField(pane.store.processSortField)
                onActivated: pane.store.processSortField = currentValue
            }
        }
        ApplicationListView {
            Layout.fillWidth: true
            Layout.fillHeight: true
            applications: list
            emptyTitle: "No Matches"
            emptySubtitle: "No name, PID or port contains what you typed."
        }
    }

    Shortcut {
        sequence: "Ctrl+F"
        onActivated: search.forceActiveFocus(Qt.ShortcutFocusReason)
    }
}
