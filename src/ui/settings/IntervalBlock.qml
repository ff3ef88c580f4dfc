pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Korvantis.State
import Korvantis.Screens

// The seconds between ticks to choose from.
SettingsBlock {
    id: block

    required property MonitorStore store

    title: "Sampling Interval"

    RowLayout {
        Layout.fillWidth: true
        spacing: 10

        Repeater {
            model: SettingsChoices.intervals

            ChoiceButton {
                required property choice modelData

                objectName: "settings-interval-" + modelData.value
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                symbol: isSelected ? "checkmark.circle.fill" : ""
                text: modelData.label
                isSelected: block.store.refreshIntervalSeconds === modelData.value
                onClicked: block.store.setRefreshInterval(modelData.value)
            }
        }
    }
    SettingsNote {
        text: "Two seconds again at the next launch."
    }
}
