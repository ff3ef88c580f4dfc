import QtQuick
import QtQuick.Controls.Basic
import Korvantis.Screens

// One row of a list of the processes pane: the piece of the card behind it, and on it the view of
// what the row stands for. A focus scope, since the list gives its current row the focus again and
// again, which must not take it from a button inside.
FocusScope {
    id: delegate

    required property int index
    required property processesRow row

    property bool showsFocusRing: false
    readonly property bool isGroup: row.kind === "appGroup"
    readonly property bool isCardOfOneRow: row.isFirstOfCard && row.isLastOfCard
    readonly property bool isInnerLine: row.kind === "caption" || row.kind === "helperShare"
    readonly property bool isNarrow: width < ProcessesMetrics.narrowWidth
    readonly property int gapBelow: row.isLastOfCard ? ProcessesMetrics.gap : 0
    // The last row of a card of several keeps clear of its rounded corners.
    readonly property int innerBottom: row.isLastOfCard && !row.isFirstOfCard ? 8 : 0
    readonly property bool isCurrent: ListView.isCurrentItem

    signal clicked
    signal toggleExpanded
    signal quit(bool force)
    signal openQuitMenu(Item button)
    signal stop
    signal buttonPressed(bool isPressed)

    readonly property string fileName: {
        switch (row.kind) {
        case "appGroup":
            return "AppGroupRowView.qml";
        case "caption":
            return "RowCaption.qml";
        case "helperShare":
            return "HelperShareRow.qml";
        case "process":
            return "ProcessTreeRow.qml";
        case "project":
            return "ProjectRow.qml";
        case "projectProcess":
            return "ProjectProcessRow.qml";
        case "container":
            return "ContainerRow.qml";
        case "port":
            return "PortRow.qml";
        default:
            return "IdleServerRow.qml";
        }
    }

    function show() {
        (face.contentItem as Loader).setSource(Qt.resolvedUrl(fileName), {
            delegate: delegate
        });
    }

    height: ProcessesMetrics.rowHeight(row.kind) + innerBottom + gapBelow
    Accessible.role: Accessible.ListItem
    Accessible.name: row.description
    Accessible.description: isGroup ? row.isExpanded ? "Opened" : "Closed" : ""
    // A row that is put by must not keep the keyboard.
    // A row that is kept for later is painted by nobody, but screen readers would still find it.
    ListView.onPooled: {
        KeyboardFocus.gather(delegate);
        visible = false;
    }
    ListView.onReused: visible = true
    onClicked: if (isGroup)
        toggleExpanded()
    Component.onCompleted: {
        show();
        fileNameChanged.connect(show);
    }

    AbstractButton {
        id: face

        anchors.fill: parent
        bottomPadding: delegate.innerBottom + delegate.gapBelow
        leftPadding: ProcessesMetrics.cardPadding
        rightPadding: ProcessesMetrics.cardPadding
        bottomInset: delegate.gapBelow
        hoverEnabled: true
        // The list has the keyboard and moves through its rows.
        focusPolicy: Qt.NoFocus
        Accessible.ignored: true
        onClicked: delegate.clicked()

        contentItem: Loader {}

        background: Item {
            clip: !delegate.isCardOfOneRow

            // Reaches beyond the edges at which the card goes on, so that only its own corners show.
            Rectangle {
                y: delegate.row.isFirstOfCard ? 0 : -ProcessesMetrics.cardRadius
                width: parent.width
                height: parent.height - y + (delegate.row.isLastOfCard ? 0 : ProcessesMetrics.cardRadius)
                radius: ProcessesMetrics.cardRadius
                color: face.hovered && delegate.row.isFirstOfCard ? OstrelTheme.elevatedCard : OstrelTheme.cardBackground
                border.width: 1
                border.color: OstrelTheme.hairline
            }
            Rectangle {
                visible: face.hovered && !delegate.row.isFirstOfCard && !delegate.isInnerLine
                anchors.fill: parent
                anchors.leftMargin: ProcessesMetrics.indent - 8
                anchors.rightMargin: 6
                anchors.bottomMargin: delegate.innerBottom
                radius: 6
                color: OstrelTheme.rowHover
            }
            FocusRing {
                anchors.topMargin: delegate.row.isFirstOfCard ? 0 : 1
                anchors.leftMargin: delegate.row.isFirstOfCard ? 0 : ProcessesMetrics.indent - 8
                anchors.rightMargin: delegate.row.isFirstOfCard ? 0 : 6
                anchors.bottomMargin: delegate.innerBottom + (delegate.row.isFirstOfCard ? 0 : 1)
                radius: delegate.row.isFirstOfCard ? ProcessesMetrics.cardRadius : 6
                shown: delegate.showsFocusRing
            }
        }
    }
}
