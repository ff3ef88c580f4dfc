import QtQuick
import QtQuick.Controls.Basic
import Korvantis.Screens

// Whether more than the applications is listed.
CheckBox {
    id: toggle

    required property bool isOn

    text: "System Processes"
    padding: 7
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    // Screen readers are told the role of the type, whatever is said here; what is chosen is told below.
    checked: isOn
    // It never changes by itself.
    nextCheckState: () => toggle.isOn ? Qt.Checked : Qt.Unchecked
    indicator: null
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: isOn
    Accessible.onPressAction: clicked()
    Accessible.onToggleAction: clicked()

    contentItem: Row {
        spacing: 8

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            width: 28
            height: 16
            radius: 8
            color: toggle.isOn ? OstrelTheme.cpu : OstrelTheme.subtleBorder

            Rectangle {
                x: toggle.isOn ? parent.width - width - 2 : 2
                y: 2
                width: 12
                height: 12
                radius: 6
                color: "#FFFFFF"
            }
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: toggle.text
            textFormat: Text.PlainText
            font: OstrelFont.system(12, Font.Medium)
            color: toggle.isOn || toggle.hovered ? OstrelTheme.ink1 : OstrelTheme.ink2
        }
    }
    background: Item {
        FocusRing {
            radius: 8
            shown: toggle.visualFocus
        }
    }
}
