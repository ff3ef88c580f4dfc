import QtQuick
import Korvantis.Screens

// One window of a plan: its name, at the end what is used of it, and the bar below.
Item {
    id: quota

    required property string name
    required property string used
    required property real percent
    required property color ink
    required property color tint
    property real fontSize: 11

    implicitHeight: bar.y + bar.height

    FigureText {
        id: nameText

        objectName: "label"
        width: Math.max(0, Math.min(implicitWidth, usedText.x - 6))
        text: quota.name
        font: OstrelFont.system(quota.fontSize)
        color: OstrelTheme.ink2
    }
    FigureText {
        id: usedText

        objectName: "used"
        anchors.right: parent.right
        width: Math.min(implicitWidth, parent.width)
        text: quota.used
        font: OstrelFont.system(quota.fontSize, Font.Medium)
        color: quota.ink
    }
    ShareBar {
        id: bar

        objectName: "bar"
        anchors.top: nameText.bottom
        anchors.topMargin: 6
        width: parent.width
        name: quota.name
        percent: quota.percent
        tint: quota.tint
    }
}
