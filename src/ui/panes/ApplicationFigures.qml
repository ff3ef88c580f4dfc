import QtQuick
import Korvantis.Screens

// The figures of one row, right-aligned under the names of their columns.
Row {
    id: figures

    required property string cpuText
    required property string memoryText
    required property string diskText
    required property string readText
    required property string writeText
    required property bool isHot
    required property bool isGroup
    required property bool isNarrow

    component Figure: Text {
        property bool isStrong: false

        font: OstrelFont.monospaced(11.5, isStrong ? Font.DemiBold : Font.Normal)
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignRight
        color: OstrelTheme.ink2
        Accessible.role: Accessible.StaticText
    }

    Figure {
        width: ApplicationColumns.cpu
        text: figures.cpuText
        isStrong: figures.isGroup
        color: figures.isHot ? OstrelTheme.heat : figures.isGroup ? OstrelTheme.ink1 : OstrelTheme.ink2
        Accessible.name: "CPU " + text
    }
    Figure {
        width: ApplicationColumns.memory
        text: figures.memoryText
        isStrong: figures.isGroup
        color: figures.isGroup ? OstrelTheme.ink1 : OstrelTheme.ink2
        Accessible.name: "Memory " + text
    }
    Figure {
        width: ApplicationColumns.rate
        text: figures.diskText
        isStrong: figures.isGroup
        Accessible.name: "Disk " + text
    }
    Figure {
        visible: !figures.isNarrow
        width: ApplicationColumns.rate
        text: figures.readText
        color: OstrelTheme.ink3
        Accessible.name: "Read " + text
    }
    Figure {
        visible: !figures.isNarrow
        width: ApplicationColumns.rate
        text: figures.writeText
        color: OstrelTheme.ink3
        Accessible.name: "Write " + text
    }
}
