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

    SparklineView {
        Layout.fillWidth: true
        values: view.store.netInHistory
        color: OstrelTheme.network
    }
    CardLine {
        symbol: "arrow.down.circle.fill"
        symbolColor: OstrelTheme.network
        name: view.overview.network.sessionIn
    }
    CardLine {
        symbol: "arrow.up.circle.fill"
        symbolColor: OstrelTheme.network
        name: view.overview.network.sessionOut
    }
    CardLine {
        name: view.overview.network.portsText
        nameColor: OstrelTheme.ink3
    }
}
