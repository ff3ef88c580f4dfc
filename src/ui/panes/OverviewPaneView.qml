import QtQuick
import QtQuick.Controls.Basic
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

    Flickable {
        id: scroller

        objectName: "overviewScroller"
        anchors.fill: parent
        contentWidth: width
        contentHeight: column.implicitHeight + 32
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: ThinScrollBar {}

        ColumnLayout {
            id: column

            x: 16
            y: 16
            width: scroller.width - 32
            spacing: 14

            DiagnosticBanner {
                Layout.fillWidth: true
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
                Layout.fillWidth: true
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
}
