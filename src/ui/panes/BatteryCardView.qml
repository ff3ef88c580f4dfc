pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Korvantis.Screens

// The battery, what keeps the machine awake, and the batteries of connected devices.
OstrelCardContainer {
    id: view

    required property OverviewPaneModel overview

    title: "Battery & Awake"
    iconName: overview.battery.icon
    accentColor: OstrelTheme.battery
    headline: overview.battery.headline
    // A figure and a state in one line.
    smallestHeadline: 0.5
    subheadline: overview.battery.subheadline

    CardLine {
        name: view.overview.battery.cyclesText
        keepsWords: true
        figure: view.overview.battery.temperatureText
        figureColor: OstrelTheme.ink2
    }
    FigureText {
        objectName: "awakeText"
        Layout.fillWidth: true
        visible: text !== ""
        text: view.overview.battery.awakeText
        font: OstrelFont.system(9.5, Font.Bold)
        color: OstrelTheme.amberWarning
    }
    CardLine {
        objectName: "nothingAwake"
        visible: view.overview.battery.awakeText === ""
        symbol: "moon.zzz.fill"
        symbolColor: OstrelTheme.safeGreen
        name: "No processes blocking system sleep"
        keepsWords: true
    }
    Repeater {
        model: view.overview.battery.blockers.length

        CardLine {
            required property int index
            readonly property cardRow row: view.overview.battery.blockers[index]

            symbol: "cup.and.saucer.fill"
            symbolColor: OstrelTheme.amberWarning
            name: row.name
            figure: row.figure
            figureColor: OstrelTheme.ink3
        }
    }
    Repeater {
        model: view.overview.battery.devices.length

        CardLine {
            required property int index
            readonly property cardRow row: view.overview.battery.devices[index]

            symbol: "headphones"
            symbolColor: OstrelTheme.network
            name: row.name
            figure: row.figure
            figureColor: OstrelTheme.battery
        }
    }
}
