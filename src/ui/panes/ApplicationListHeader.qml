import QtQuick
import Korvantis.Screens

// The names of the columns.
Item {
    id: header

    readonly property bool isNarrow: width < ApplicationColumns.narrowWidth

    implicitHeight: 32

    component Caption: FigureText {
        font: OstrelFont.rounded(9.5, Font.Bold, 0.5)
        color: OstrelTheme.ink3
        horizontalAlignment: Text.AlignRight
    }

    Caption {
        height: parent.height
        anchors.left: parent.left
        anchors.leftMargin: ApplicationColumns.sideMargin + 22
        horizontalAlignment: Text.AlignLeft
        text: "APPLICATION"
    }
    Row {
        anchors.right: parent.right
        anchors.rightMargin: ApplicationColumns.sideMargin + ApplicationColumns.action
        anchors.verticalCenter: parent.verticalCenter

        Caption {
            width: ApplicationColumns.cpu
            text: "CPU"
        }
        Caption {
            width: ApplicationColumns.memory
            text: "MEMORY"
        }
        Caption {
            width: ApplicationColumns.rate
            text: "DISK"
        }
        Caption {
            visible: !header.isNarrow
            width: ApplicationColumns.rate
            text: "READ"
        }
        Caption {
            visible: !header.isNarrow
            width: ApplicationColumns.rate
            text: "WRITE"
        }
    }
    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: OstrelTheme.hairline
    }
}
