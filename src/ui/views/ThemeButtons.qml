pragma ComponentBehavior: Bound

import QtQuick
import Korvantis.State
import Korvantis.Screens

// One small button for each look.
FrameView {
    id: buttons

    required property LookStore look
    required property RootContentModel content
    required property bool isCompactPopover

    implicitWidth: row.implicitWidth + 6
    implicitHeight: row.implicitHeight + 6

    Row {
        id: row

        anchors.centerIn: parent
        spacing: 2

        Repeater {
            model: buttons.content.themeModes

            QuietButton {
                id: button

                required property choice modelData
                readonly property bool isSelected: buttons.look.themeMode === modelData.name

                objectName: "theme-" + modelData.name
                symbol: modelData.iconName
                text: buttons.isCompactPopover ? "" : modelData.shortLabel
                hint: "Appearance: " + modelData.label
                fontSize: 10.5
                padding: 5
                topPadding: 6
                bottomPadding: 6
                spacing: 4
                ink: isSelected ? OstrelTheme.ink1 : OstrelTheme.ink3
                ground: isSelected ? OstrelTheme.elevatedCard : "transparent"
                Accessible.role: Accessible.RadioButton
                Accessible.name: hint
                Accessible.checked: isSelected
                onClicked: buttons.look.themeMode = modelData.name
            }
        }
    }
}
