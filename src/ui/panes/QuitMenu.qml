import QtQuick
import QtQuick.Controls.Basic
import Korvantis.Screens

// The two ways to stop an application.
Menu {
    id: menu

    property string groupID
    property string groupName

    signal quitGroup(string groupID, bool force)

    function openFor(id: string, name: string, button: Item) {
        groupID = id;
        groupName = name;
        popup(button, button.width - width, button.height + 4);
    }

    width: Math.min(320, Math.max(180, forceEntry.implicitWidth + 8))
    padding: 4
    enter: null
    exit: null

    component Entry: MenuItem {
        id: entry

        property color ink: OstrelTheme.ink1

        implicitHeight: 30
        leftPadding: 10
        rightPadding: 10
        arrow: null
        indicator: null
        Accessible.role: Accessible.MenuItem
        Accessible.name: text

        contentItem: Text {
            text: entry.text
            textFormat: Text.PlainText
            elide: Text.ElideMiddle
            font: OstrelFont.system(12)
            color: entry.ink
            verticalAlignment: Text.AlignVCenter
        }
        background: Rectangle {
            radius: 6
            color: entry.highlighted ? OstrelTheme.rowHover : "transparent"
        }
    }

    Entry {
        objectName: "quitEntry"
        text: "Quit " + menu.groupName
        onTriggered: menu.quitGroup(menu.groupID, false)
    }
    Entry {
        id: forceEntry

        objectName: "forceQuitEntry"
        text: "Force Quit " + menu.groupName
        ink: OstrelTheme.strainRed
        onTriggered: menu.quitGroup(menu.groupID, true)
    }

    background: Rectangle {
        implicitWidth: 180
        color: OstrelTheme.elevatedCard
        radius: 9
        border.width: 1
        border.color: OstrelTheme.subtleBorder
    }
}
