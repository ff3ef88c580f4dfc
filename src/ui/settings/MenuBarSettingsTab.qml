import QtQuick
import QtQuick.Layouts
import Korvantis.Screens

// What the status item shows.
SettingsTabView {
    id: tab

    SettingsScroller {
        objectName: "settingsScroller"
        anchors.fill: parent
        place: "Menu Bar"

        SettingsBlock {
            FigureText {
                objectName: "readoutsCaption"
                Layout.fillWidth: true
                text: "Select which live telemetry readouts appear in the macOS Menu Bar status item:"
                font: OstrelFont.system(12)
                color: OstrelTheme.ink2
                wrapMode: Text.Wrap
                elide: Text.ElideNone
            }
            ReadoutGrid {
                Layout.fillWidth: true
                settings: tab.store.menuBarSettings
            }
        }
        SettingsBlock {
            SettingsPicker {
                pickerName: "settings-displayStyle"
                label: "Display Style"
                choices: SettingsChoices.displayStyles
                chosen: tab.store.menuBarSettings.displayStyle
                onPicked: name => tab.store.menuBarSettings.displayStyle = name
            }
            SettingsPicker {
                pickerName: "settings-colorMode"
                label: "Colour Mode"
                choices: SettingsChoices.colorModes
                chosen: tab.store.menuBarSettings.colorMode
                onPicked: name => tab.store.menuBarSettings.colorMode = name
            }
        }
    }
}
