pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as Templates
import Korvantis.Screens

// What a pane puts below each other, with a way to scroll when it does not fit: by wheel, by keys,
// and by itself when the keyboard moves to a control outside the view. What is in view stays in view
// while blocks above it come and go, except at the very top, where news is wanted.
FocusScope {
    id: scroller

    default property alias content: column.data
    property alias spacing: column.spacing
    required property string name
    property real margin: 16
    // A block that must not move for now, also at the top, or null.
    property Item heldBlock: null
    readonly property real contentY: flickable.contentY
    readonly property real contentHeight: flickable.contentHeight
    readonly property real furthest: Math.max(0, flickable.contentHeight - flickable.height)
    readonly property Item focused: Window.activeFocusItem

    function scrollTo(y: real) {
        flickable.contentY = Math.max(0, Math.min(furthest, y));
    }
    function isInside(item: Item): bool {
        for (let ancestor = item; ancestor; ancestor = ancestor.parent) {
            if (ancestor === column)
                return true;
        }
        return false;
    }
    function reveal(item: Item) {
        const top = item.mapToItem(column, 0, 0).y;
        if (top < flickable.contentY)
            scrollTo(top);
        else if (top + item.height + 2 * margin > flickable.contentY + flickable.height)
            scrollTo(top + item.height + 2 * margin - flickable.height);
    }

    // Under a pointer nothing may move away.
    onFocusedChanged: {
        const control = focused as Templates.Control;
        const field = focused as Templates.TextField;
        const isCard = focused instanceof OstrelCardContainer;
        const isByKeyboard = control ? control.visualFocus : field ? field.focusReason !== Qt.MouseFocusReason : isCard;
        if (isByKeyboard && isInside(focused))
            reveal(focused);
    }
    Keys.onPressed: event => {
        const steps = new Map([[Qt.Key_Up, -48], [Qt.Key_Down, 48], [Qt.Key_PageUp, -0.9 * height], [Qt.Key_PageDown, 0.9 * height], [Qt.Key_Home, -contentHeight], [Qt.Key_End, contentHeight]]);
        const step = steps.get(event.key);
        event.accepted = step !== undefined && event.modifiers === Qt.NoModifier && furthest > 0;
        if (event.accepted)
            scrollTo(contentY + step);
    }

    Flickable {
        id: flickable

        objectName: "paneScroller"
        anchors.fill: parent
        contentWidth: width
        contentHeight: column.implicitHeight + 2 * scroller.margin
        boundsBehavior: Flickable.StopAtBounds
        // What has the focus must stay able to.
        activeFocusOnTab: scroller.furthest > 0 || activeFocus
        Accessible.role: Accessible.Pane
        Accessible.name: scroller.name
        ScrollBar.vertical: ThinScrollBar {}

        Column {
            id: column

            x: scroller.margin
            y: scroller.margin
            width: flickable.width - 2 * scroller.margin
            spacing: 14
            onPositioningComplete: {
                const top = flickable.contentY - y;
                const shift = steady.shiftAfterLayout(top, top + flickable.height, scroller.heldBlock);
                if (shift !== 0 && (flickable.contentY > 0 || scroller.heldBlock))
                    scroller.scrollTo(flickable.contentY + shift);
            }
        }
    }
    SteadyScroll {
        id: steady

        column: column
    }
    FocusRing {
        anchors.margins: 2
        shown: flickable.activeFocus
    }
}
