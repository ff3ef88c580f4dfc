import QtQuick
import QtQuick.Layouts
import Korvantis.Screens

// What is wrong right now in one sentence, and the four figures that it mostly comes from.
FrameView {
    id: card

    required property InsightsPaneModel pane

    implicitHeight: Math.ceil(content.implicitHeight) + 32
    radius: 12

    Column {
        id: content

        x: 16
        y: 16
        width: card.width - 32
        spacing: 10

        Row {
            spacing: 6

            SymbolView {
                name: "stethoscope"
                size: 12
                tint: OstrelTheme.heat
                anchors.verticalCenter: parent.verticalCenter
            }
            SectionCaption {
                text: "WHAT'S WRONG RIGHT NOW"
                anchors.verticalCenter: parent.verticalCenter
            }
        }
        FigureText {
            objectName: "headline"
            width: parent.width
            text: card.pane.headline
            font: OstrelFont.system(15, Font.Medium)
            wrapMode: Text.Wrap
            elide: Text.ElideNone
        }
        GridLayout {
            objectName: "pills"
            width: parent.width
            columns: width < 560 ? 2 : 4
            columnSpacing: 10
            rowSpacing: 10

            DiagnosticPill {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                title: "CPU Load"
                value: card.pane.cpuLoad
                tint: OstrelTheme.cpu
            }
            DiagnosticPill {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                title: "Memory Pressure"
                value: card.pane.memoryPressure
                tint: OstrelTheme.memory
            }
            DiagnosticPill {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                title: "Thermal"
                value: card.pane.thermal
                tint: OstrelTheme.heat
            }
            DiagnosticPill {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                title: "Idle Dev Servers"
                value: card.pane.idleServers
                tint: card.pane.hasIdleServers ? OstrelTheme.amberWarning : OstrelTheme.safeGreen
            }
        }
    }
}
