import QtQuick
import Korvantis.Screens

// A short text on a rounded ground of its own, such as a port or a role.
Rectangle {
    id: chip

    property string text
    property alias font: label.font
    property color ink: OstrelTheme.ink2
    property color ground: OstrelTheme.elevatedCard
    property real sidePadding: 6
    property real topAndBottomPadding: 2

    implicitWidth: label.implicitWidth + 2 * sidePadding
    implicitHeight: label.implicitHeight + 2 * topAndBottomPadding
    color: ground
    radius: Math.min(6, height / 2)

    FigureText {
        id: label

        anchors.fill: parent
        anchors.leftMargin: chip.sidePadding
        anchors.rightMargin: chip.sidePadding
        text: chip.text
        font: OstrelFont.system(10.5, Font.Medium)
        color: chip.ink
        horizontalAlignment: Text.AlignHCenter
    }
}
