import QtQuick
import QtQuick.Layouts
import Korvantis.Screens

// The controls that put a new limit together.
RowLayout {
    id: view

    required property AppLimitEditor editor
    // The user is at a control that must not move away.
    readonly property bool isBusy: limit.activeFocus || appPicker.down || figurePicker.down

    function takeFocus(reason: int) {
        appPicker.forceActiveFocus(reason);
    }
    // What the limit really is, once the typing is over.
    function settleLimit() {
        limit.text = editor.limitText();
    }

    spacing: 12

    component Label: FigureText {
        font: OstrelFont.system(12)
        color: OstrelTheme.ink3
        elide: Text.ElideNone
        // The control beside it says the same.
        Accessible.ignored: true
    }

    Label {
        Layout.rightMargin: -6
        text: "App"
    }
    PickerField {
        id: appPicker

        objectName: "appPicker"
        Layout.fillWidth: true
        Layout.minimumWidth: 120
        Layout.preferredWidth: 220
        Layout.maximumWidth: 300
        caption: "App"
        showsCaption: false
        outline: OstrelTheme.subtleBorder
        model: view.editor.apps
        currentIndex: view.editor.appIndex
        onActivated: view.editor.selectedAppID = currentValue

        Binding {
            target: view.editor
            property: "holdsApps"
            value: appPicker.down
        }
    }
    Label {
        Layout.rightMargin: -6
        text: "Metric"
    }
    PickerField {
        id: figurePicker

        objectName: "figurePicker"
        Layout.preferredWidth: 145
        Layout.minimumWidth: 145
        caption: "Metric"
        showsCaption: false
        outline: OstrelTheme.subtleBorder
        model: view.editor.figures
        currentIndex: view.editor.figureIndex
        onActivated: index => view.editor.figureIndex = index
    }
    Label {
        Layout.rightMargin: -6
        text: "Limit:"
    }
    TextEntry {
        id: limit

        objectName: "limitField"
        Layout.preferredWidth: 72
        label: "Limit:"
        placeholderText: "150"
        text: view.editor.limitText()
        onTextEdited: text => view.editor.typeLimit(text)
        onActiveFocusChanged: if (!activeFocus) view.settleLimit()
        Keys.onReturnPressed: view.settleLimit()
        Keys.onEnterPressed: view.settleLimit()
    }
    NumberStepper {
        objectName: "minutesStepper"
        value: view.editor.limitMinutes
        from: 1
        to: 60
        stepSize: 1
        text: view.editor.minutesText
        Accessible.name: "Minutes: " + text
        onMoved: value => view.editor.limitMinutes = value
    }
    QuietButton {
        objectName: "addRule"
        text: "Add Rule"
        fontSize: 12
        fontWeight: Font.DemiBold
        leftPadding: 12
        rightPadding: 12
        ink: OstrelTheme.cpu
        ground: Qt.alpha(OstrelTheme.cpu, 0.16)
        hoverGround: Qt.alpha(OstrelTheme.cpu, 0.3)
        onClicked: view.editor.addRule()
    }
    Item {
        Layout.fillWidth: true
    }
}
