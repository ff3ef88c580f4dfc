import QtQuick
import QtQuick.Layouts
import Korvantis.Screens

// One finding.
Rectangle {
    id: row

    required property string iconName
    required property string title
    required property string metricText
    required property string detail
    required property string description

    implicitHeight: content.implicitHeight + 24
    color: hover.hovered ? OstrelTheme.elevatedCard : OstrelTheme.cardBackground
    radius: 12
    border.width: 1
    border.color: OstrelTheme.hairline
    Accessible.role: Accessible.ListItem
    Accessible.name: description

    HoverHandler {
        id: hover
    }

    RowLayout {
        id: content

        anchors.fill: parent
        anchors.margins: 12
        spacing: 12

        Rectangle {
            Layout.preferredWidth: 34
            Layout.preferredHeight: 34
            Layout.alignment: Qt.AlignTop
            radius: 17
            color: Qt.alpha(OstrelTheme.heat, 0.18)

            SymbolView {
                anchors.centerIn: parent
                name: row.iconName
                size: 14
                tint: OstrelTheme.heat
            }
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 4

            RowLayout {
                spacing: 8

                FigureText {
                    Layout.fillWidth: true
                    Layout.maximumWidth: implicitWidth + 1
                    text: row.title
                    font: OstrelFont.system(13, Font.Bold)
                    elide: Text.ElideMiddle
                }
                Rectangle {
                    visible: row.metricText !== ""
                    implicitWidth: metric.implicitWidth + 14
                    implicitHeight: metric.implicitHeight + 5
                    radius: height / 2
                    color: Qt.alpha(OstrelTheme.heat, 0.18)

                    FigureText {
                        id: metric

                        anchors.centerIn: parent
                        text: row.metricText
                        font: OstrelFont.monospaced(10.5, Font.DemiBold)
                        color: OstrelTheme.heat
                    }
                }
                Item {
                    Layout.fillWidth: true
                }
            }
            FigureText {
                Layout.fillWidth: true
                text: row.detail
                font: OstrelFont.system(12)
                color: OstrelTheme.ink2
                wrapMode: Text.Wrap
                elide: Text.ElideNone
            }
        }
    }
}
