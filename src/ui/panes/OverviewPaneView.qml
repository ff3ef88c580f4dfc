import QtQuick
import QtQuick.Layouts
import Korvantis.Screens

// The first screen: the verdict on the machine, over eight cards.
PaneView {
    id: pane

    readonly property color tint: {
        switch (overviewModel.state) {
        case OverviewPaneModel.Strain:
            return OstrelTheme.strainRed;
        case OverviewPaneModel.ForgottenServers:
            return OstrelTheme.amberWarning;
        default:
            return OstrelTheme.safeGreen;
        }
    }
    readonly property string icon: {
        switch (overviewModel.state) {
        case OverviewPaneModel.Strain:
            return "exclamationmark.triangle.fill";
        case OverviewPaneModel.ForgottenServers:
            return "server.rack";
        default:
            return "checkmark.shield.fill";
        }
    }
    readonly property string label: {
        switch (overviewModel.state) {
        case OverviewPaneModel.Strain:
            return "ACTIVE SYSTEM STRAIN";
        case OverviewPaneModel.ForgottenServers:
            return "FORGOTTEN DEV SERVERS";
        default:
            return "SYSTEM HEALTH NOMINAL";
        }
    }

    OverviewPaneModel {
        id: overviewModel

        store: pane.store
    }

    PaneScroller {
        anchors.fill: parent
        focus: true
        name: "Overview"

        DiagnosticBanner {
            objectName: "banner"
            width: parent.width
            icon: pane.icon
            label: pane.label
            machine: overviewModel.chipName
            headline: overviewModel.headline
            tint: pane.tint
            stopServersText: overviewModel.stopServersText
            onStopServers: pane.store.stopAllIdleServers()
            onInspect: pane.store.selectedPane = "insights"
        }
        GridLayout {
            objectName: "cards"
            width: parent.width
            columns: 4
            columnSpacing: 12
            rowSpacing: 12

            CPUCardView {
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                store: pane.store
                overview: overviewModel
            }
            MemoryCardView {
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                store: pane.store
                overview: overviewModel
            }
            GPUCardView {
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                store: pane.store
                overview: overviewModel
            }
            ThermalCardView {
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                store: pane.store
                overview: overviewModel
            }
            NetworkCardView {
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                store: pane.store
                overview: overviewModel
            }
            DiskCardView {
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                store: pane.store
                overview: overviewModel
            }
            BatteryCardView {
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                overview: overviewModel
            }
            TopAppsCardView {
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                overview: overviewModel
            }
        }
    }
}
