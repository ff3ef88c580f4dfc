import QtQuick
import QtQuick.Layouts
import Korvantis.State
import Korvantis.Screens

// The GPU and the Neural Engine.
OstrelCardContainer {
    id: view

    required property MonitorStore store
    required property OverviewPaneModel overview

    title: "GPU & Neural"
    iconName: "brain.head.profile"
    accentColor: OstrelTheme.gpu
    headline: overview.gpu.headline
    // Two figures in one line.
    smallestHeadline: 0.5
    subheadline: overview.gpu.subheadline

    SparklineView {
        Layout.fillWidth: true
        values: view.store.gpuHistory
        color: OstrelTheme.gpu
    }
    CardLine {
        name: "VRAM In Use"
        keepsWords: true
        figure: view.overview.gpu.memoryText
    }
    CardLine {
        name: view.overview.gpu.neuralText
        keepsWords: true
        nameColor: view.overview.gpu.isNeuralBusy ? OstrelTheme.neural : OstrelTheme.ink4
        figure: view.overview.gpu.neuralWatts
    }
    CardLine {
        objectName: "neuralHolder"
        name: view.overview.gpu.holderText
        keepsWords: !view.overview.gpu.hasHolder
        fontSize: 10
        nameColor: OstrelTheme.ink3
    }
}
