import QtQuick
import Korvantis.Screens

// A figure over what it is of.
Item {
    id: metric

    required property string value
    required property string label
    property color ink: OstrelTheme.ink1

    implicitHeight: figure.implicitHeight + caption.implicitHeight + 1

    FigureText {
        id: figure

        width: parent.width
        text: metric.value
        font: OstrelFont.monospaced(11.5, Font.DemiBold)
        color: metric.ink
        elide: Text.ElideNone
        horizontalAlignment: Text.AlignRight
        Accessible.name: metric.label + " " + text
    }
    FigureText {
        id: caption

        anchors.top: figure.bottom
        anchors.topMargin: 1
        width: parent.width
        text: metric.label
        font: OstrelFont.rounded(8.5, Font.Bold)
        color: OstrelTheme.ink3
        elide: Text.ElideNone
        horizontalAlignment: Text.AlignRight
        Accessible.ignored: true
    }
}
