pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Korvantis.Screens

// The applications of this machine in a card. Up and Down go through the rows, Right and Left
// open and close an application, the menu key or Shift+F10 asks how to quit it.
Rectangle {
    id: card

    required property ApplicationList applications
    property string emptyTitle: "No Processes"
    property string emptySubtitle

    color: OstrelTheme.cardBackground
    radius: 12
    border.width: 1
    border.color: OstrelTheme.hairline

    ApplicationListHeader {
        id: header

        anchors.top: parent.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.margins: 1
    }

    ListView {
        id: list

        objectName: "applicationList"
        anchors.top: header.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: 1
        anchors.topMargin: 0
        anchors.bottomMargin: 8
        clip: true
        model: card.applications.rows
        // The ring around the current row is for the keyboard: a click needs none.
        property bool showsFocusRing: false

        activeFocusOnTab: true
        keyNavigationEnabled: true
        currentIndex: -1
        boundsBehavior: Flickable.StopAtBounds
        highlightMoveDuration: 0
        Accessible.role: Accessible.List
        Accessible.name: "Applications"
        ScrollBar.vertical: ThinScrollBar {}

        function currentRow(): ApplicationListRow {
            return currentItem as ApplicationListRow;
        }
        function setExpanded(expanded: bool) {
            const row = currentRow();
            if (row && row.isGroup && row.isExpanded !== expanded)
                row.toggleExpanded();
        }
        function toggleCurrent() {
            const row = currentRow();
            if (row && row.isGroup)
                row.toggleExpanded();
        }
        function openCurrentQuitMenu() {
            const row = currentRow();
            if (row && row.isGroup)
                row.openQuitMenu(row);
        }

        onActiveFocusChanged: {
            showsFocusRing = activeFocus;
            if (activeFocus && currentIndex < 0 && count > 0)
                currentIndex = 0;
        }
        onCurrentItemChanged: {
            // Away from the button of the row that was current.
            KeyboardFocus.gather(list);
            showsFocusRing = activeFocus;
        }
        Keys.onRightPressed: setExpanded(true)
        Keys.onLeftPressed: setExpanded(false)
        Keys.onReturnPressed: toggleCurrent()
        Keys.onEnterPressed: toggleCurrent()
        Keys.onSpacePressed: toggleCurrent()
        Keys.onMenuPressed: openCurrentQuitMenu()
        Keys.onPressed: event => {
            if (event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier) {
                openCurrentQuitMenu();
                event.accepted = true;
            } else if (event.key === Qt.Key_Home || event.key === Qt.Key_End) {
                currentIndex = event.key === Qt.Key_Home ? 0 : count - 1;
                event.accepted = true;
            } else if (event.key === Qt.Key_PageDown || event.key === Qt.Key_PageUp) {
                const page = Math.max(1, Math.floor(height / ApplicationColumns.groupRowHeight) - 1);
                const target = currentIndex + (event.key === Qt.Key_PageDown ? page : -page);
                currentIndex = Math.max(0, Math.min(count - 1, target));
                event.accepted = true;
            }
        }

        delegate: ApplicationListRow {
            width: ListView.view.width
            showsFocusRing: ListView.isCurrentItem && list.showsFocusRing
            onClicked: {
                list.currentIndex = index;
                list.forceActiveFocus(Qt.MouseFocusReason);
                KeyboardFocus.gather(list);
                list.showsFocusRing = false;
            }
            onToggleExpanded: card.applications.toggleExpanded(groupID)
            onOpenQuitMenu: button => quitMenu.openFor(groupID, name, button)
            onStopProcess: card.applications.stopProcess(index)
        }
    }

    EmptyStateView {
        visible: list.count === 0
        anchors.centerIn: parent
        icon: "magnifyingglass"
        title: card.emptyTitle
        subtitle: card.emptySubtitle
    }

    QuitMenu {
        id: quitMenu

        onQuitGroup: (groupID, force) => card.applications.quitGroup(groupID, force)
    }
}
