import QtQuick
import QtQuick.Controls.Basic
import Korvantis.Screens

// A field to filter a list by.
TextField {
    id: field

    objectName: "searchField"
    leftPadding: 32
    rightPadding: 30
    topPadding: 7
    bottomPadding: 7
    font: OstrelFont.system(12)
    color: OstrelTheme.ink1
    placeholderTextColor: OstrelTheme.ink3
    selectionColor: OstrelTheme.cpu
    selectedTextColor: "#FFFFFF"
    selectByMouse: true
    Accessible.role: Accessible.EditableText
    Accessible.name: placeholderText
    Accessible.searchEdit: true
    Keys.onEscapePressed: event => {
        event.accepted = text !== "";
        clear();
        textEdited();
    }

    background: Rectangle {
        color: OstrelTheme.cardBackground
        radius: 8
        border.width: field.activeFocus ? 1.5 : 1
        border.color: field.activeFocus ? OstrelTheme.cpu : OstrelTheme.hairline
    }

    SymbolView {
        x: 10
        anchors.verticalCenter: parent.verticalCenter
        name: "magnifyingglass"
        size: 11
        tint: OstrelTheme.ink3
    }
    QuietButton {
        objectName: "clearSearch"
        visible: field.text !== ""
        anchors.right: parent.right
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        padding: 4
        symbol: "xmark.circle.fill"
        hint: "Clear the filter"
        ink: OstrelTheme.ink3
        onClicked: {
            field.clear();
            field.textEdited();
            field.forceActiveFocus();
        }
    }
}
