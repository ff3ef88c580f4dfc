import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Korvantis.Screens

// A setting that is on or off, with its name at its left. It shows `isOn` and never changes it by
// itself.
CheckBox {
    id: toggle

    required property bool isOn

    Layout.fillWidth: true
    padding: 0
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

    contentItem: RowLayout {
        spacing: 12

        Text {
            Layout.fillWidth: true
            text: toggle.text
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            font: OstrelFont.system(12)
            color: toggle.hovered ? OstrelTheme.ink1 : OstrelTheme.ink2
        }
        Rectangle {
            Layout.preferredWidth: 36
            Layout.preferredHeight: 20
            radius: 10
            color: toggle.isOn ? OstrelTheme.safeGreen : OstrelTheme.subtleBorder

            Rectangle {
                x: toggle.isOn ? parent.width - width - 2 : 2
                anchors.verticalCenter: parent.verticalCenter
                width: 16
                height: 16
                radius: 8
                color: "#FFFFFF"
            }
            FocusRing {
                anchors.margins: -3
                radius: 13
                shown: toggle.visualFocus
            }
        }
    }
}
