pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Korvantis.Screens

// The selected list. Up and Down go through the rows, Right and Left open and close an
// application, the menu key or Shift+F10 asks how to quit it.
ListView {
    id: list

    required property ProcessesPaneModel processes
    // The cards end here; the scroll bar stands beyond.
    property int endMargin: 16
    // The ring around the current row is for the keyboard: a click needs none.
    property bool showsFocusRing: false
    property bool leftWithWindow: false

    objectName: "processesList"
    clip: true
    model: processes.rows
    reuseItems: true
    activeFocusOnTab: true
    keyNavigationEnabled: true
    currentIndex: -1
    boundsBehavior: Flickable.StopAtBounds
    highlightMoveDuration: 0
    Accessible.role: Accessible.List
    ScrollBar.vertical: ThinScrollBar {}

    function currentRow(): ProcessesListRow {
        return currentItem as ProcessesListRow;
    }
    function setExpanded(expanded: bool) {
        const row = currentRow();
        if (!row)
            return;
        if (row.isGroup && row.row.isExpanded !== expanded)
            row.toggleExpanded();
        else if (!row.isGroup && !expanded && row.row.groupID !== "")
            // From inside a card to its head.
            currentIndex = processes.indexOfGroup(row.row.groupID);
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
    function goBy(rows: int) {
        currentIndex = Math.max(0, Math.min(count - 1, currentIndex + rows));
    }
    function showFromStart() {
        currentIndex = -1;
        positionViewAtBeginning();
    }

    onActiveFocusChanged: {
        showsFocusRing = activeFocus;
        if (!activeFocus) {
            leftWithWindow = !Window.active;
            return;
        }
        if (currentIndex < 0 && count > 0)
            currentIndex = 0;
        // It may have been scrolled away. When only the window comes back, the eyes are where they
        // were.
        if (currentIndex >= 0 && !leftWithWindow)
            positionViewAtIndex(currentIndex, ListView.Contain);
    }
    onCurrentItemChanged: {
        // To the row itself and not to a button that it had when it was last current, so that a
        // screen reader says the row.
        KeyboardFocus.gather(currentItem ?? list);
        showsFocusRing = activeFocus;
    }
    Keys.onRightPressed: setExpanded(true)
    Keys.onLeftPressed: setExpanded(false)
    Keys.onReturnPressed: toggleCurrent()
    Keys.onEnterPressed: toggleCurrent()
    Keys.onSpacePressed: toggleCurrent()
    Keys.onMenuPressed: openCurrentQuitMenu()
    Keys.onPressed: event => {
        event.accepted = true;
        const page = Math.max(1, Math.floor(height / 66) - 1);
        if (event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier)
            openCurrentQuitMenu();
        else if (event.key === Qt.Key_Home)
            goBy(-count);
        else if (event.key === Qt.Key_End)
            goBy(count);
        else if (event.key === Qt.Key_PageDown)
            goBy(page);
        else if (event.key === Qt.Key_PageUp)
            goBy(-page);
        else
            event.accepted = false;
    }

    delegate: ProcessesListRow {
        width: ListView.view.width - list.endMargin
        showsFocusRing: ListView.isCurrentItem && list.showsFocusRing
        onClicked: {
            list.currentIndex = index;
            list.forceActiveFocus(Qt.MouseFocusReason);
            KeyboardFocus.gather(this);
            list.showsFocusRing = false;
        }
        onToggleExpanded: list.processes.toggleExpanded(row.groupID)
        onQuit: force => list.processes.quitGroup(row.groupID, force)
        onOpenQuitMenu: button => quitMenu.openFor(row.groupID, row.title, button)
        onStop: list.processes.stopProcess(row)
        onButtonPressed: isPressed => isPressed ? list.processes.hold() : list.processes.release()
    }

    Connections {
        target: list.processes

        function onRowsAboutToChange() {
            const last = list.indexAt(1, list.contentY + list.height);
            list.processes.rows.setShown(list.indexAt(1, list.contentY), last < 0 ? list.count : last, list.currentIndex);
        }
    }
    QuitMenu {
        id: quitMenu

        onQuitGroup: (groupID, force) => list.processes.quitGroup(groupID, force)
    }
}
