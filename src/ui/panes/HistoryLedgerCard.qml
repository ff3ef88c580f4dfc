pragma ComponentBehavior: Bound

import QtQuick
import Korvantis.Screens

// What the thirstiest applications of the range have used.
Rectangle {
    id: card

    required property HistoryPaneModel history

    implicitHeight: rows.y + rows.implicitHeight + (rows.implicitHeight > 0 ? 16 : 4)
    color: OstrelTheme.cardBackground
    radius: 12
    border.width: 1
    border.color: OstrelTheme.hairline

    component LedgerStat: Column {
        id: stat

        required property string caption
        required property string value

        width: 82
        spacing: 2

        FigureText {
            width: parent.width
            text: stat.caption
            font: OstrelFont.system(8.5, Font.Medium)
            color: OstrelTheme.ink3
        }
        FigureText {
            width: parent.width
            text: stat.value
            font: OstrelFont.monospaced(11)
        }
    }

    SectionCaption {
        id: caption

        objectName: "ledgerTitle"
        x: 16
        y: 16
        text: card.history.ledgerTitle
    }
    Column {
        id: rows

        objectName: "ledger"
        anchors.top: caption.bottom
        anchors.topMargin: 12
        anchors.left: parent.left
        anchors.leftMargin: 16
        anchors.right: parent.right
        anchors.rightMargin: 16
        spacing: 6
        Accessible.role: Accessible.List
        Accessible.name: caption.text

        Repeater {
            model: card.history.ledger.length

            Rectangle {
                id: row

                required property int index
                readonly property historyLedgerRow app: card.history.ledger[index]

                objectName: "ledger-" + index
                width: rows.width
                implicitHeight: stats.implicitHeight + 16
                radius: 8
                color: OstrelTheme.elevatedCard
                Accessible.role: Accessible.ListItem
                Accessible.name: app.description

                AppIconView {
                    id: icon

                    objectName: "icon"
                    x: 12
                    anchors.verticalCenter: parent.verticalCenter
                    bundlePath: row.app.bundlePath
                    fallbackSymbol: "app.fill"
                }
                FigureText {
                    objectName: "name"
                    anchors.left: icon.right
                    anchors.leftMargin: 10
                    anchors.verticalCenter: parent.verticalCenter
                    width: 180
                    text: row.app.name
                    font: OstrelFont.system(12.5, Font.Medium)
                }
                Row {
                    id: stats

                    objectName: "stats"
                    anchors.right: parent.right
                    anchors.rightMargin: 12
                    anchors.verticalCenter: parent.verticalCenter

                    LedgerStat {
                        caption: "CPU TIME"
                        value: row.app.cpuTime
                    }
                    LedgerStat {
                        caption: "AVG RAM"
                        value: row.app.averageMemory
                    }
                    LedgerStat {
                        caption: "PEAK RAM"
                        value: row.app.peakMemory
                    }
                    LedgerStat {
                        caption: "ENERGY"
                        value: row.app.energy
                    }
                    LedgerStat {
                        caption: "NET I/O"
                        value: row.app.network
                    }
                    LedgerStat {
                        caption: "DISK I/O"
                        value: row.app.disk
                    }
                }
            }
        }
    }
}
