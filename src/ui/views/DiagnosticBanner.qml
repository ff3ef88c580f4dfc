import QtQuick
import QtQuick.Layouts
import Korvantis.Screens

// The verdict on the machine: a mark, what it is about, and one sentence.
Rectangle {
    id: banner

    required property string icon
    required property string label
    required property string machine
    required property string headline
    required property color tint

    // Empty: not offered.
    property string stopServersText

    signal inspect
    signal stopServers

    implicitHeight: row.implicitHeight + 20
    color: OstrelTheme.cardBackground
    radius: 12
    border.width: 1
    border.color: Qt.alpha(tint, 0.38)

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.leftMargin: 14
        anchors.rightMargin: 14
        anchors.topMargin: 10
        anchors.bottomMargin: 10
        spacing: 12

        Rectangle {
            Layout.preferredWidth: 34
            Layout.preferredHeight: 34
            radius: 17
            color: Qt.alpha(banner.tint, 0.18)

            SymbolView {
                anchors.centerIn: parent
                name: banner.icon
                size: 14
                tint: banner.tint
            }
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 4

            RowLayout {
                spacing: 8

                FigureText {
                    text: banner.label
                    font: OstrelFont.system(10, Font.Bold, 0.7)
                    color: banner.tint
                }
                Rectangle {
                    Layout.preferredWidth: 1.5
                    Layout.preferredHeight: 10
                    color: OstrelTheme.elevatedCard
                }
                FigureText {
                    Layout.fillWidth: true
                    text: banner.machine
                    font: OstrelFont.system(10)
                    color: OstrelTheme.ink3
                }
            }
            FigureText {
                objectName: "headline"
                Layout.fillWidth: true
                text: banner.headline
                font: OstrelFont.system(13)
                wrapMode: Text.Wrap
                elide: Text.ElideNone
            }
        }
        QuietButton {
            objectName: "stopServers"
            visible: banner.stopServersText !== ""
            symbol: "stop.circle.fill"
            text: banner.stopServersText
            hint: "Stop All Idle Servers"
            ink: OstrelTheme.amberWarning
            ground: Qt.alpha(OstrelTheme.amberWarning, 0.2)
            hoverGround: Qt.alpha(OstrelTheme.amberWarning, 0.32)
            leftPadding: 11
            rightPadding: 11
            onClicked: banner.stopServers()
        }
        QuietButton {
            objectName: "inspectInsights"
            text: "Inspect Insights →"
            ground: OstrelTheme.elevatedCard
            hoverGround: OstrelTheme.rowHover
            leftPadding: 11
            rightPadding: 11
            onClicked: banner.inspect()
        }
    }
}
