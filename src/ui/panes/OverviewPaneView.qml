import QtQuick
import QtQuick.Layouts
import Korvantis.Screens

// The first screen: the verdict on the machine, and everything that runs on it.
PaneView {
    id: pane

    readonly property color tint: {
        switch (overview.state) {
        case OverviewPaneModel.Strain:
            return OstrelTheme.strainRed;
        case OverviewPaneModel.ForgottenServers:
            return OstrelTheme.amberWarning;
        default:
            return OstrelTheme.safeGreen;
        }
    }
    readonly property string icon: {
        switch (overview.state) {
        case OverviewPaneModel.Strain:
            return "exclamationmark.triangle.fill";
        case OverviewPaneModel.ForgottenServers:
            return "server.rack";
        default:
            return "checkmark.shield.fill";
        }
    }
    readonly property string label: {
        switch (overview.state) {
        case OverviewPaneModel.Strain:
            return "ACTIVE SYSTEM STRAIN";
        case OverviewPaneModel.ForgottenServers:
            return "FORGOTTEN DEV SERVERS";
        default:
            return "SYSTEM HEALTH NOMINAL";
        }
    }

    OverviewPaneModel {
        id: overview

        store: pane.store
    }
    ApplicationList {
        id: list

        store: pane.store
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 16
        spacing: 14

        DiagnosticBanner {
            Layout.fillWidth: true
            icon: pane.icon
            label: pane.label
            machine: overview.chipName
            headline: overview.headline
            tint: pane.tint
            onInspect: pane.store.selectedPane = "insights"
        }
        ApplicationListView {
            Layout.fillWidth: true
            Layout.fillHeight: true
            applications: list
            emptySubtitle: "Nothing that runs on this machine can be read."
        }
    }
}
