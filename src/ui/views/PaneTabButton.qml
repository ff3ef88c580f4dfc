import QtQuick
import QtQuick.Controls.Basic
import Korvantis.Screens

// One tab of the navigation bar, with its keyboard shortcut.
TabButton {
    id: tabButton

    required property paneTab tab
    required property bool isSelected
    // The number of findings; empty for none and on all other tabs.
    property string badge
    property int sidePadding: 12
    property bool showsIcon: true

    readonly property color ink: isSelected ? OstrelTheme.ink1 : OstrelTheme.ink2

    objectName: "tab-" + tab.pane
    text: tab.title
    leftPadding: sidePadding
    rightPadding: sidePadding
    topPadding: 6
    bottomPadding: 6
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    // Screen readers are told the role of the type, whatever is said here; what is chosen is told below.
    checkable: false
    Accessible.role: Accessible.PageTab
    Accessible.name: badge === "" ? tab.title : tab.title + ", " + badge + " findings"
    Accessible.selected: isSelected
    Accessible.onPressAction: clicked()

    contentItem: Row {
        spacing: 6

        SymbolView {
            objectName: "icon"
            visible: tabButton.showsIcon
            name: tabButton.tab.iconName
            size: 11.5
            tint: tabButton.ink
            anchors.verticalCenter: parent.verticalCenter
        }
        Text {
            objectName: "title"
            text: tabButton.text
            textFormat: Text.PlainText
            font: OstrelFont.system(12.5, tabButton.isSelected ? Font.Bold : Font.Medium)
            color: tabButton.ink
            anchors.verticalCenter: parent.verticalCenter
        }
        BadgeView {
            objectName: "badge"
            visible: count !== ""
            count: tabButton.badge
            ink: tabButton.ink
            anchors.verticalCenter: parent.verticalCenter
        }
    }

    background: Rectangle {
        radius: 8
        color: tabButton.isSelected ? OstrelTheme.elevatedCard
                                    : tabButton.hovered ? Qt.alpha(OstrelTheme.elevatedCard, 0.55) : "transparent"

        FocusRing {
            shown: tabButton.visualFocus
        }
    }

    Shortcut {
        sequence: tabButton.tab.shortcut
        onActivated: tabButton.clicked()
    }
}
