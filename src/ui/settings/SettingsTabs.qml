pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Korvantis.State
import Korvantis.Screens

// The tabs of the settings.
FrameView {
    id: tabs

    required property MonitorStore store

    implicitWidth: row.implicitWidth + 6
    implicitHeight: row.implicitHeight + 6
    Accessible.role: Accessible.PageTabList
    Accessible.name: "Settings"

    component SettingsTabButton: TabButton {
        id: button

        required property bool isSelected
        readonly property color ink: isSelected ? OstrelTheme.ink1 : OstrelTheme.ink2

        leftPadding: 14
        rightPadding: 14
        topPadding: 6
        bottomPadding: 6
        focusPolicy: Qt.StrongFocus
        hoverEnabled: true
        // Screen readers are told the role of the type, whatever is said here; what is chosen is told below.
        checkable: false
        Accessible.role: Accessible.PageTab
        Accessible.name: text
        Accessible.selected: isSelected
        Accessible.onPressAction: clicked()

        contentItem: Text {
            text: button.text
            textFormat: Text.PlainText
            font: OstrelFont.system(12.5, button.isSelected ? Font.Bold : Font.Medium)
            color: button.ink
        }
        background: Rectangle {
            radius: 8
            color: button.isSelected ? OstrelTheme.elevatedCard
                                     : button.hovered ? Qt.alpha(OstrelTheme.elevatedCard, 0.55) : "transparent"

            FocusRing {
                shown: button.visualFocus
            }
        }
    }

    Row {
        id: row

        anchors.centerIn: parent
        spacing: 2

        Repeater {
            model: SettingsChoices.tabs

            SettingsTabButton {
                required property string modelData

                objectName: "settings-tab-" + modelData
                text: modelData
                isSelected: tabs.store.selectedSettingsTab === modelData
                onClicked: tabs.store.selectedSettingsTab = modelData
            }
        }
    }
}
