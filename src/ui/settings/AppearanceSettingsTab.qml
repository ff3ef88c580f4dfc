import QtQuick
import Korvantis.Screens

// Units, look and pace of the screens.
SettingsTabView {
    id: tab

    SettingsScroller {
        objectName: "settingsScroller"
        anchors.fill: parent
        place: "Appearance"

        SettingsBlock {
            SettingsPicker {
                pickerName: "settings-palette"
                label: "Chart Palette"
                choices: SettingsChoices.palettes
                chosen: tab.store.look.palette
                onPicked: name => tab.store.look.palette = name
            }
            SettingsPicker {
                pickerName: "settings-temperatureUnit"
                label: "Temperature Unit"
                choices: SettingsChoices.temperatureUnits
                chosen: tab.store.look.temperatureUnit
                onPicked: name => tab.store.look.temperatureUnit = name
            }
            SettingsPicker {
                pickerName: "settings-retention"
                label: "History Retention"
                choices: SettingsChoices.retentions
                chosen: tab.store.look.retention
                onPicked: name => tab.store.look.retention = name
            }
            SettingsPicker {
                pickerName: "settings-density"
                label: "Density"
                choices: SettingsChoices.densities
                chosen: tab.store.look.density
                onPicked: name => tab.store.look.density = name
            }
            SettingsToggle {
                objectName: "settings-windowFloats"
                text: "Keep Window Floating"
                isOn: tab.store.look.windowFloats
                onClicked: tab.store.look.windowFloats = !isOn
            }
        }
        ThemeBlock {
            look: tab.store.look
        }
        IntervalBlock {
            store: tab.store
        }
    }
}
