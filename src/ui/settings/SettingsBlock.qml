import QtQuick
import QtQuick.Layouts
import Korvantis.Screens

// A group of settings under a title.
Rectangle {
    id: block

    property string title
    property string symbol
    property string caption
    default property alias rows: column.data

    Layout.fillWidth: true
    implicitHeight: column.implicitHeight + 28
    color: OstrelTheme.cardBackground
    radius: 12
    border.width: 1
    border.color: OstrelTheme.hairline

    ColumnLayout {
        id: column

        x: 16
        y: 14
        width: block.width - 32
        spacing: 10

        RowLayout {
            visible: block.title !== ""
            Layout.fillWidth: true
            spacing: 8

            SymbolView {
                visible: block.symbol !== ""
                name: block.symbol
                size: 14
                tint: OstrelTheme.cpu
            }
            FigureText {
                Layout.fillWidth: true
                text: block.title
                font: OstrelFont.system(13, Font.DemiBold)
                Accessible.role: Accessible.Heading
            }
        }
        SettingsNote {
            objectName: "blockCaption"
            visible: block.caption !== ""
            Layout.topMargin: -6
            text: block.caption
        }
    }
}
