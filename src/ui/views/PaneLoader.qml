import QtQuick
import Korvantis.State

// The selected pane. It is made when it is shown and gone, with its local state, when it is left.
Loader {
    id: loader

    required property MonitorStore store

    // What a pane scrolls stays between the bars.
    clip: true

    readonly property string fileName: {
        switch (store.selectedPane) {
        case "processes":
            return "ProcessesPaneView.qml";
        case "insights":
            return "InsightsPaneView.qml";
        case "history":
            return "HistoryPaneView.qml";
        case "agents":
            return "AgentsPaneView.qml";
        case "sound":
            return "SoundPaneView.qml";
        default:
            return "OverviewPaneView.qml";
        }
    }

    function show() {
        setSource(Qt.resolvedUrl(fileName), {
            store: store
        });
    }

    Component.onCompleted: {
        show();
        fileNameChanged.connect(show);
    }
}
