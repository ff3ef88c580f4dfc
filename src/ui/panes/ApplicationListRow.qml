import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Korvantis.Screens

// One row of the list of applications.
ItemDelegate {
    id: row

    required property int index
    required property bool isGroup
    required property string groupID
    required property string name
    required property string iconName
    required property string countText
    required property string pidText
    required property string roleText
    required property string portsText
    required property string cpuText
    required property string memoryText
    required property string diskText
    required property string readText
    required property string writeText
    required property bool isHot
    required property bool isExpanded
    required property string description

    property bool showsFocusRing: false
    readonly property bool isNarrow: width < ApplicationColumns.narrowWidth

    signal toggleExpanded
    signal openQuitMenu(Item button)
    signal stopProcess

    height: isGroup ? ApplicationColumns.groupRowHeight : ApplicationColumns.processRowHeight
    topPadding: 0
    bottomPadding: 0
    leftPadding: ApplicationColumns.sideMargin
    rightPadding: ApplicationColumns.sideMargin
    hoverEnabled: true
    // The list has the keyboard and moves through its rows.
    focusPolicy: Qt.NoFocus
    Accessible.role: Accessible.ListItem
    Accessible.name: description
    Accessible.description: isGroup ? isExpanded ? "Opened" : "Closed" : ""
    onClicked: if (isGroup)
        toggleExpanded()

    contentItem: RowLayout {
        spacing: 0

        ApplicationRowTitle {
            Layout.fillWidth: true
            name: row.name
            iconName: row.iconName
            countText: row.countText
            pidText: row.pidText
            roleText: row.roleText
            portsText: row.portsText
            isGroup: row.isGroup
            isExpanded: row.isExpanded
        }
        ApplicationFigures {
            cpuText: row.cpuText
            memoryText: row.memoryText
            diskText: row.diskText
            readText: row.readText
            writeText: row.writeText
            isHot: row.isHot
            isGroup: row.isGroup
            isNarrow: row.isNarrow
        }
        Item {
            Layout.preferredWidth: ApplicationColumns.action
            Layout.fillHeight: true

            QuietButton {
                objectName: "rowAction"
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                padding: 5
                leftPadding: 8
                rightPadding: 8
                text: row.isGroup ? "Quit" : ""
                symbol: row.isGroup ? "" : "xmark.circle"
                trailingSymbol: row.isGroup ? "chevron.down" : ""
                hint: row.isGroup ? "" : "Stop " + row.name
                ink: OstrelTheme.ink3
                hoverGround: OstrelTheme.subtleBorder
                // Only those of the current row stand in the tab order, or it would never end.
                focusPolicy: row.ListView.isCurrentItem || activeFocus ? Qt.StrongFocus : Qt.ClickFocus
                Accessible.name: (row.isGroup ? "Quit " : "Stop ") + row.name
                onClicked: row.isGroup ? row.openQuitMenu(this) : row.stopProcess()
            }
        }
    }

    background: Rectangle {
        color: row.hovered ? OstrelTheme.rowHover : row.isGroup ? "transparent" : Qt.alpha(OstrelTheme.elevatedCard, 0.35)

        Rectangle {
            anchors.bottom: parent.bottom
            anchors.left: parent.left
            anchors.leftMargin: ApplicationColumns.sideMargin + (row.isGroup ? 0 : ApplicationColumns.indent)
            anchors.right: parent.right
            height: 1
            color: OstrelTheme.hairline
        }
        FocusRing {
            anchors.margins: 2
            // Clear of the scroll bar.
            anchors.rightMargin: 11
            radius: 6
            shown: row.showsFocusRing
        }
    }
}
