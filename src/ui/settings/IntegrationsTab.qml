import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Korvantis.Screens

// How other programs reach this one.
SettingsTabView {
    id: tab

    IntegrationsModel {
        id: integrations
    }

    SettingsScroller {
        objectName: "settingsScroller"
        anchors.fill: parent
        place: "Integrations & MCP"

        SettingsBlock {
            objectName: "bridgeBlock"
            title: "CLI & Model Context Protocol (MCP) Bridge"
            symbol: "terminal.fill"
            caption: integrations.socketPathText

            TextArea {
                id: configuration

                objectName: "settings-configuration"
                Layout.fillWidth: true
                padding: 12
                text: integrations.configurationText
                textFormat: TextEdit.PlainText
                readOnly: true
                selectByMouse: true
                font: OstrelFont.monospaced(12)
                color: OstrelTheme.ink1
                selectionColor: OstrelTheme.cpu
                selectedTextColor: "#FFFFFF"
                KeyNavigation.priority: KeyNavigation.BeforeItem
                Accessible.role: Accessible.EditableText
                Accessible.name: "Client configuration"
                Accessible.readOnly: true

                background: Rectangle {
                    radius: 8
                    color: OstrelTheme.elevatedCard

                    FocusRing {
                        shown: configuration.activeFocus
                    }
                }
            }
        }
    }
}
