import QtQuick
import QtQuick.Controls.Basic
import Korvantis.Screens

// A field for a short text. `label` says what it is for, to those who can't see what stands beside
// it. `textEdited` follows the user's typing only, not a text that is set from outside.
FocusScope {
    id: entry

    property alias text: field.text
    property string placeholderText
    property string label

    signal textEdited(string text)

    implicitWidth: 160
    implicitHeight: field.implicitHeight

    TextField {
        id: field

        anchors.fill: parent
        focus: true
        leftPadding: 10
        rightPadding: 10
        topPadding: 7
        bottomPadding: 7
        placeholderText: entry.placeholderText
        font: OstrelFont.system(12)
        color: OstrelTheme.ink1
        placeholderTextColor: OstrelTheme.ink3
        selectionColor: OstrelTheme.cpu
        selectedTextColor: "#FFFFFF"
        selectByMouse: true
        Accessible.role: Accessible.EditableText
        Accessible.name: entry.label !== "" ? entry.label : placeholderText
        onTextEdited: entry.textEdited(text)

        background: Rectangle {
            color: OstrelTheme.cardBackground
            radius: 8
            border.width: field.activeFocus ? 1.5 : 1
            border.color: field.activeFocus ? OstrelTheme.cpu : OstrelTheme.subtleBorder
        }
    }
}
