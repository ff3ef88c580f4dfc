import QtQuick
import QtQuick.Layouts
import Korvantis.Screens

// A choice of one out of a few, with its name at its left. It follows `chosen`; what the user wants
// comes by `picked`.
RowLayout {
    id: row

    required property string label
    required property string chosen
    property alias choices: picker.model
    property alias pickerName: picker.objectName
    property int fieldWidth: 230

    signal picked(string name)

    Layout.fillWidth: true
    spacing: 12

    FigureText {
        Layout.fillWidth: true
        text: row.label
        font: OstrelFont.system(12)
        color: OstrelTheme.ink2
        Accessible.ignored: true
    }
    PickerField {
        id: picker

        Layout.preferredWidth: row.fieldWidth
        caption: row.label
        showsCaption: false
        // Counted first, so that it is looked up again once the choices are there.
        currentIndex: count > 0 ? indexOfValue(row.chosen) : -1
        onActivated: row.picked(currentValue)
    }
}
