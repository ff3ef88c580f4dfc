import QtQuick
import QtQuick.Layouts
import Korvantis.State
import Korvantis.Screens

// The memory: how much is used, by what, and whether it runs short.
OstrelCardContainer {
    id: view

    required property MonitorStore store
    required property OverviewPaneModel overview

    title: "Memory"
    iconName: "memorychip.fill"
    accentColor: OstrelTheme.memory
    headline: overview.memory.headline
    subheadline: overview.memory.subheadline

    SparklineView {
        Layout.fillWidth: true
        values: view.store.memoryHistory
        color: OstrelTheme.memory
    }
    RowLayout {
        Layout.fillWidth: true
        spacing: 6

        SegmentBar {
            Layout.fillWidth: true
            shares: [view.overview.memory.appShare, view.overview.memory.wiredShare, view.overview.memory.compressedShare]
            colors: [OstrelTheme.memory, OstrelTheme.cpu, OstrelTheme.neural]
        }
        Rectangle {
            objectName: "pressureMark"
            Layout.preferredWidth: 7
            Layout.preferredHeight: 7
            radius: 3.5
            color: view.overview.memory.pressureColor
            Accessible.role: Accessible.Indicator
            Accessible.name: "Memory pressure " + view.overview.memory.subheadline
        }
    }
    CardLine {
        name: view.overview.memory.appText
        keepsWords: true
        figure: view.overview.memory.wiredText
        figureColor: OstrelTheme.ink2
    }
    CardLine {
        name: view.overview.memory.swapText
        keepsWords: true
        fontSize: 10
        nameColor: OstrelTheme.ink3
    }
}
