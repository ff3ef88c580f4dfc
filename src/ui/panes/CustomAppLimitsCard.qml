pragma ComponentBehavior: Bound

import QtQuick
import Korvantis.Screens

// The user's limits on applications, and the controls that add one.
FocusScope {
    id: card

    required property InsightsPaneModel pane
    readonly property bool isBusy: editorView.isBusy

    implicitHeight: Math.ceil(content.implicitHeight) + 32

    FrameView {
        anchors.fill: parent
        radius: 12
    }
    Column {
        id: content

        x: 16
        y: 16
        width: card.width - 32
        spacing: 12

        SectionCaption {
            text: "CUSTOM APP THRESHOLD RULES"
        }
        Column {
            objectName: "limitList"
            width: parent.width
            visible: limits.count > 0
            spacing: 6
            Accessible.role: Accessible.List
            Accessible.name: "Rules"

            Repeater {
                id: limits

                objectName: "limits"
                model: card.pane.limits

                AppLimitRow {
                    width: content.width
                    onRemove: card.pane.removeLimit(limitID)
                }
                onItemRemoved: (index, item) => {
                    const gone = item as AppLimitRow;
                    if (!gone.activeFocus)
                        return;
                    const next = itemAt(Math.min(index, count - 1)) as AppLimitRow;
                    if (next)
                        next.takeFocus(gone.focusReason);
                    else
                        editorView.takeFocus(gone.focusReason);
                }
            }
        }
        AppLimitEditorView {
            id: editorView

            width: parent.width
            editor: card.pane.editor
        }
    }
}
