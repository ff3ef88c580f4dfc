import QtQuick
import Korvantis.Screens

// A card without a headline: a frame around whatever is put below each other inside.
Rectangle {
    id: frame

    default property alias content: stack.data
    property alias spacing: stack.spacing
    property real padding: 16

    implicitHeight: stack.implicitHeight + 2 * padding
    color: OstrelTheme.cardBackground
    radius: 12
    border.width: 1
    border.color: OstrelTheme.hairline

    Column {
        id: stack

        x: frame.padding
        y: frame.padding
        width: frame.width - 2 * frame.padding
        spacing: 12
    }
}
