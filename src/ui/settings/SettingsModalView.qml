pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Korvantis.State
import Korvantis.Screens

// The settings. Every control takes effect at once.
FocusScope {
    id: view

    required property MonitorStore store

    signal close

    implicitWidth: 560
    implicitHeight: content.implicitHeight

    SettingsModel {
        id: settings

        look: view.store.look
    }

    component Caption: FigureText {
        Layout.fillWidth: true
        font: OstrelFont.system(13, Font.DemiBold)
    }
    component Note: FigureText {
        Layout.fillWidth: true
        font: OstrelFont.system(11)
        color: OstrelTheme.ink3
    }

    ColumnLayout {
        id: content

        width: parent.width
        spacing: 0

        RowLayout {
            Layout.fillWidth: true
            Layout.leftMargin: 16
            Layout.rightMargin: 16
            Layout.topMargin: 10
            Layout.bottomMargin: 10

            FigureText {
                Layout.fillWidth: true
                text: "Korvantis Preferences"
                font: OstrelFont.system(15, Font.Bold)
            }
            QuietButton {
                objectName: "closeSettings"
                focus: true
                symbol: "xmark"
                hint: "Close"
                onClicked: view.close()
            }
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.preferredHeight: 1
            color: OstrelTheme.hairline
        }
        ColumnLayout {
            Layout.fillWidth: true
            Layout.margins: 20
            spacing: 10

            Caption {
                text: "Theme & Appearance Mode"
            }
            Note {
                text: settings.systemLookText
            }
            RowLayout {
                Layout.fillWidth: true
                spacing: 10

                Repeater {
                    model: settings.themeModes

                    ChoiceButton {
                        required property choice modelData

                        objectName: "settings-theme-" + modelData.name
                        Layout.fillWidth: true
                        Layout.preferredWidth: 1
                        symbol: modelData.iconName
                        text: modelData.label
                        isSelected: view.store.look.themeMode === modelData.name
                        onClicked: view.store.look.themeMode = modelData.name
                    }
                }
            }
            Note {
                text: settings.themeModeText
            }
            Caption {
                Layout.topMargin: 14
                text: "Sampling Interval"
            }
            RowLayout {
                Layout.fillWidth: true
                spacing: 10

                Repeater {
                    model: settings.intervals

                    ChoiceButton {
                        required property choice modelData

                        objectName: "settings-interval-" + modelData.value
                        Layout.fillWidth: true
                        Layout.preferredWidth: 1
                        symbol: isSelected ? "checkmark.circle.fill" : ""
                        text: modelData.label
                        isSelected: view.store.refreshIntervalSeconds === modelData.value
                        onClicked: view.store.setRefreshInterval(modelData.value)
                    }
                }
            }
            Note {
                text: "Two seconds again at the next launch."
            }
        }
    }
}
