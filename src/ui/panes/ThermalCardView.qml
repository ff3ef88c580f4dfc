import QtQuick
import QtQuick.Layouts
import Korvantis.State
import Korvantis.Screens

// Temperatures, power and the fan.
OstrelCardContainer {
    id: view

    required property MonitorStore store
    required property OverviewPaneModel overview

    title: "Thermal & Power"
    iconName: "flame.fill"
    accentColor: OstrelTheme.heat
    headline: overview.thermal.headline
    subheadline: overview.thermal.subheadline

    SparklineView {
        Layout.fillWidth: true
        values: view.store.tempHistory
        color: OstrelTheme.heat
    }
    CardLine {
        objectName: "hottest"
        name: view.overview.thermal.hottestName
        smallestName: 7
        figure: view.overview.thermal.hottestText
        figureColor: view.overview.thermal.isHot ? OstrelTheme.strainRed : OstrelTheme.ink1
    }
    RowLayout {
        Layout.fillWidth: true
        spacing: 6

        FigureText {
            objectName: "fanText"
            Layout.fillWidth: true
            text: view.overview.thermal.fanText
            font: OstrelFont.system(11)
            fontSizeMode: Text.HorizontalFit
            minimumPointSize: 5
            color: OstrelTheme.ink2
        }
        QuietButton {
            id: fanButton

            objectName: "fanControl"
            text: view.overview.thermal.fanButton
            fontSize: 10
            padding: 4
            ground: OstrelTheme.elevatedCard
            hoverGround: OstrelTheme.rowHover
            onClicked: fanControl.open()

            FanControlPopup {
                id: fanControl

                x: fanButton.width - width
                y: fanButton.height + 6
                overview: view.overview
            }
        }
    }
}
