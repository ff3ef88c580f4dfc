import QtQuick
import QtQuick.Layouts
import Korvantis.State
import Korvantis.Screens

// The processor: its load, its cores, and who uses it most.
OstrelCardContainer {
    id: view

    required property MonitorStore store
    required property OverviewPaneModel overview

    title: "CPU"
    iconName: "cpu.fill"
    accentColor: OstrelTheme.cpu
    headline: overview.cpu.headline
    subheadline: overview.cpu.subheadline

    SparklineView {
        Layout.fillWidth: true
        values: view.store.cpuHistory
        color: OstrelTheme.cpu
    }
    CoreBars {
        objectName: "coreBars"
        Layout.fillWidth: true
        shares: view.overview.cpu.coreShares
        performanceCores: view.overview.cpu.performanceCores
    }
    CardLine {
        name: view.overview.cpu.loadText
        keepsWords: true
        figure: view.overview.cpu.coresText
        figureColor: OstrelTheme.ink3
    }
    CardLine {
        objectName: "topApp"
        visible: name !== ""
        hasDot: true
        symbolColor: OstrelTheme.cpu
        name: view.overview.cpu.topName
        figure: view.overview.cpu.topPercent
    }
}
