import QtQuick
import QtQuick.Layouts
import Korvantis.State
import Korvantis.Screens

// The network: rates, what went through since the start, and the open ports.
OstrelCardContainer {
    id: view

    required property MonitorStore store
    required property OverviewPaneModel overview

    title: "Network"
    iconName: "network"
    accentColor: OstrelTheme.network
    headline: overview.network.headline
    // Two rates in one line: half a size is better than half a figure.
    smallestHeadline: 0.5

    SparklineView {
        Layout.fillWidth: true
        values: view.store.netInHistory
        color: OstrelTheme.network
    }
    CardLine {
        symbol: "arrow.down.circle.fill"
        symbolColor: OstrelTheme.network
        name: view.overview.network.sessionIn
        keepsWords: true
    }
    CardLine {
        symbol: "arrow.up.circle.fill"
        symbolColor: OstrelTheme.network
        name: view.overview.network.sessionOut
        keepsWords: true
    }
    CardLine {
        name: view.overview.network.portsText
        keepsWords: true
        nameColor: OstrelTheme.ink3
    }
}
