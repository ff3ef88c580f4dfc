pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Korvantis.State
import Korvantis.Screens

// The looks to choose from, and what the chosen one means.
SettingsBlock {
    id: block

    required property LookStore look

    title: "Theme & Appearance Mode"
    caption: appearance.systemLookText

    AppearanceSettingsModel {
        id: appearance

        look: block.look
    }
    RowLayout {
        Layout.fillWidth: true
        spacing: 10

        Repeater {
            model: SettingsChoices.themeModes

            ChoiceButton {
                required property choice modelData

                objectName: "settings-theme-" + modelData.name
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                symbol: modelData.iconName
                text: modelData.label
                isSelected: block.look.themeMode === modelData.name
                onClicked: block.look.themeMode = modelData.name
            }
        }
    }
    SettingsNote {
        objectName: "themeModeText"
        text: appearance.themeModeText
    }
}
