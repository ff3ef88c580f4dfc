pragma ComponentBehavior: Bound

import QtQuick
import Korvantis.Screens

// One running agent.
Rectangle {
    id: row

    required property string toolName
    required property string stateLabel
    required property color stateColor
    required property string pidText
    required property string projectText
    required property list<string> childNames
    required property string cpuText
    required property string memoryText
    required property string description
    readonly property bool isNarrow: width < 900

    implicitHeight: 58
    color: OstrelTheme.cardBackground
    radius: 12
    border.width: 1
    border.color: OstrelTheme.hairline
    Accessible.role: Accessible.ListItem
    Accessible.name: description

    Rectangle {
        id: mark

        x: 14
        anchors.verticalCenter: parent.verticalCenter
        width: 34
        height: 34
        radius: 9
        color: Qt.alpha(row.stateColor, 0.18)

        SymbolView {
            objectName: "symbol"
            anchors.centerIn: parent
            name: "terminal.fill"
            size: 14
            tint: row.stateColor
        }
    }
    Column {
        anchors.left: mark.right
        anchors.leftMargin: 12
        anchors.right: children.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4

        Item {
            width: parent.width
            implicitHeight: Math.max(tool.implicitHeight, stateChip.implicitHeight)

            FigureText {
                id: tool

                objectName: "tool"
                anchors.verticalCenter: parent.verticalCenter
                width: Math.max(0, Math.min(implicitWidth, parent.width - stateChip.implicitWidth - pid.implicitWidth - 16))
                text: row.toolName
                font: OstrelFont.system(13, Font.DemiBold)
            }
            ChipView {
                id: stateChip

                objectName: "state"
                anchors.left: tool.right
                anchors.leftMargin: 8
                anchors.verticalCenter: parent.verticalCenter
                text: row.stateLabel
                font: OstrelFont.system(10, Font.DemiBold)
                ink: row.stateColor
                ground: Qt.alpha(row.stateColor, 0.16)
            }
            FigureText {
                id: pid

                objectName: "pid"
                anchors.left: stateChip.right
                anchors.leftMargin: 8
                anchors.verticalCenter: parent.verticalCenter
                text: row.pidText
                font: OstrelFont.system(10.5)
                color: OstrelTheme.ink3
                elide: Text.ElideNone
            }
        }
        FigureText {
            objectName: "project"
            width: parent.width
            text: row.projectText
            font: OstrelFont.system(11)
            color: OstrelTheme.ink3
            elide: Text.ElideMiddle
        }
    }
    Row {
        id: children

        objectName: "children"
        anchors.right: figures.left
        anchors.rightMargin: spacing * 2
        anchors.verticalCenter: parent.verticalCenter
        spacing: 6

        Repeater {
            model: row.childNames.length

            ChipView {
                required property int index

                width: Math.min(implicitWidth, row.isNarrow ? 84 : 140)
                text: row.childNames[index] ?? ""
            }
        }
    }
    Column {
        id: figures

        anchors.right: parent.right
        anchors.rightMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        // Wide enough for all but the largest figures, so that the chips stand still.
        width: Math.max(86, cpu.implicitWidth, memory.implicitWidth)
        spacing: 4

        FigureText {
            id: cpu

            objectName: "cpu"
            anchors.right: parent.right
            text: row.cpuText
            font: OstrelFont.monospaced(11.5)
            color: OstrelTheme.ink2
            elide: Text.ElideNone
        }
        FigureText {
            id: memory

            objectName: "memory"
            anchors.right: parent.right
            text: row.memoryText
            font: OstrelFont.monospaced(11.5, Font.Medium)
            elide: Text.ElideNone
        }
    }
}
