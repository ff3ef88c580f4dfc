import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Korvantis.Screens

// The blocks of a tab, one below the other. It scrolls to what the keyboard reaches, and stands
// where it stood when its window shows it again.
Flickable {
    id: scroller

    required property string place
    default property alias blocks: column.data

    // Where it is to stand as soon as there is enough below; 0 when it stands there.
    property real wantedY: 0

    function takeWantedY() {
        if (wantedY === 0)
            return;
        contentY = Math.max(0, Math.min(wantedY, contentHeight - height));
        if (contentY >= wantedY)
            wantedY = 0;
    }
    function showFocus() {
        const spot = KeyboardFocus.focusedByKeyboard(contentItem);
        if (spot.height <= 0)
            return;
        const lowest = Math.min(spot.y - 20, contentHeight - height);
        const highest = spot.y + spot.height + 20 - height;
        contentY = Math.max(0, Math.min(lowest, Math.max(contentY, highest)));
    }

    contentWidth: width
    contentHeight: column.implicitHeight + 32
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ThinScrollBar {
        // Clear of the rounded corner below it.
        bottomPadding: 12
        onPressedChanged: scroller.wantedY = 0
    }
    onMovementStarted: wantedY = 0
    onContentHeightChanged: takeWantedY()
    onHeightChanged: takeWantedY()
    onContentYChanged: if (wantedY === 0)
        ScrollPlaces.keep(scroller, place, contentY)
    Window.onWindowChanged: {
        wantedY = ScrollPlaces.kept(scroller, place);
        takeWantedY();
    }

    ColumnLayout {
        id: column

        x: 20
        y: 16
        width: scroller.width - 40
        spacing: 12
    }

    Connections {
        target: scroller.Window.window

        function onActiveFocusItemChanged() {
            scroller.showFocus();
        }
    }
}
