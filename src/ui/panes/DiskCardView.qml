pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Korvantis.State
import Korvantis.Screens

// The disk: room, rates and the mounted volumes.
OstrelCardContainer {
    id: view

    required property MonitorStore store
    required property OverviewPaneModel overview

    title: "Disk & Volumes"
    iconName: "internaldrive.fill"
    accentColor: OstrelTheme.disk
    headline: overview.disk.headline
    subheadline: overview.disk.subheadline

    SparklineView {
        Layout.fillWidth: true
        values: view.overview.diskHistory
        color: OstrelTheme.disk
    }
    CardLine {
        name: view.overview.disk.readText
        keepsWords: true
        figure: view.overview.disk.writeText
        figureColor: OstrelTheme.ink2
    }
    Repeater {
        model: view.overview.disk.volumes.length

        CardLine {
            required property int index
            readonly property cardRow row: view.overview.disk.volumes[index]

            symbol: row.icon
            name: row.name
            figure: row.figure
        }
    }
}
