import QtQuick
import QtQuick.Layouts
import Korvantis.Screens

// The bar below the panes: the rhythm of the ticks, what was counted, and the machine's load.
Rectangle {
    id: bar

    required property RootContentModel content

    objectName: "statusBar"
    color: OstrelTheme.cardBackground
    implicitHeight: row.implicitHeight + 14

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.leftMargin: 16
        anchors.rightMargin: 16
        anchors.topMargin: 7
        anchors.bottomMargin: 7
        spacing: 8

        Rectangle {
            objectName: "tickDot"
            Layout.preferredWidth: 6
            Layout.preferredHeight: 6
            radius: 3
            color: OstrelTheme.safeGreen
        }
        FigureText {
            objectName: "tickText"
            text: bar.content.tickText
            font: OstrelFont.system(10.5)
            color: OstrelTheme.ink3
        }
        FigureText {
            objectName: "countsText"
            Layout.leftMargin: 6
            Layout.fillWidth: true
            text: bar.content.countsText
            font: OstrelFont.system(10.5)
            color: OstrelTheme.ink4
        }
        FigureText {
            objectName: "figuresText"
            text: bar.content.figuresText
            font: OstrelFont.monospaced(10.5)
            color: OstrelTheme.ink2
        }
    }
}
