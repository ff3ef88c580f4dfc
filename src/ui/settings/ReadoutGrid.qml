pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Korvantis.State
import Korvantis.Screens

// The readouts of the status item, each to be ticked or not.
GridLayout {
    id: grid

    required property MenuBarSettingsStore settings

    function isEnabled(name: string): bool {
        for (let index = 0; index < readouts.enabledReadouts.length; ++index) {
            if (readouts.enabledReadouts[index] === name)
                return true;
        }
        return false;
    }

    columns: 2
    columnSpacing: 8
    rowSpacing: 8
    Accessible.role: Accessible.Grouping
    Accessible.name: "Readouts"

    MenuBarSettingsModel {
        id: readouts

        settings: grid.settings
    }

    component ReadoutButton: CheckBox {
        id: button

        required property string symbol
        required property bool isOn
        // The last one that is on can't be turned off.
        required property bool isLast

        leftPadding: 10
        rightPadding: 10
        topPadding: 7
        bottomPadding: 7
        focusPolicy: Qt.StrongFocus
        hoverEnabled: true
        // Screen readers are told the role of the type, whatever is said here; what is chosen is told below.
        checked: isOn
        // It never changes by itself.
        nextCheckState: () => button.isOn ? Qt.Checked : Qt.Unchecked
        indicator: null
        Accessible.role: Accessible.CheckBox
        Accessible.name: text
        Accessible.description: isLast ? hint.text : ""
        Accessible.checkable: true
        Accessible.checked: isOn
        Accessible.onPressAction: clicked()
        Accessible.onToggleAction: clicked()

        contentItem: Row {
            spacing: 9

            SymbolView {
                objectName: "tick"
                anchors.verticalCenter: parent.verticalCenter
                name: button.isOn ? "checkmark.circle.fill" : "circle"
                size: 13
                tint: button.isOn ? OstrelTheme.cpu : OstrelTheme.ink4
            }
            SymbolView {
                anchors.verticalCenter: parent.verticalCenter
                name: button.symbol
                size: 12
                tint: button.isOn ? OstrelTheme.ink1 : OstrelTheme.ink3
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: button.text
                textFormat: Text.PlainText
                font: OstrelFont.system(12, Font.Medium)
                color: button.isOn ? OstrelTheme.ink1 : OstrelTheme.ink2
            }
        }
        background: Rectangle {
            radius: 8
            color: button.hovered ? OstrelTheme.rowHover : OstrelTheme.elevatedCard

            FocusRing {
                shown: button.visualFocus
            }
        }

        HintView {
            id: hint

            visible: button.isLast && button.hovered
            text: "At least one readout stays on"
        }
    }

    Repeater {
        model: SettingsChoices.readouts

        ReadoutButton {
            required property choice modelData

            objectName: "settings-readout-" + modelData.name
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            symbol: modelData.iconName
            text: modelData.label
            isOn: grid.isEnabled(modelData.name)
            isLast: isOn && readouts.enabledReadouts.length === 1
            onClicked: readouts.toggle(modelData.name)
        }
    }
}
