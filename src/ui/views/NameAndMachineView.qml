import QtQuick
import Korvantis.Screens

// The program's name with the strain dot, and the machine below it.
Column {
    id: view

    required property RootContentModel content

    spacing: 5

    Row {
        spacing: 6

        FigureText {
            objectName: "programName"
            width: Math.min(implicitWidth, view.width - 13)
            elide: Text.ElideRight
            text: "Korvantis"
            font: OstrelFont.system(14, Font.Bold)
            anchors.verticalCenter: parent.verticalCenter
        }
        Rectangle {
            objectName: "strainDot"
            width: 7
            height: 7
            radius: 3.5
            color: view.content.isUnderStrain ? OstrelTheme.strainRed : OstrelTheme.safeGreen
            anchors.verticalCenter: parent.verticalCenter
            Accessible.role: Accessible.Indicator
            Accessible.name: view.content.isUnderStrain ? "Under strain" : "No strain"
        }
    }

    FigureText {
        objectName: "machineLine"
        width: Math.min(implicitWidth, view.width)
        text: view.content.machineLine
        font: OstrelFont.system(10, Font.Medium)
        color: OstrelTheme.ink3
        elide: Text.ElideMiddle
    }
}
