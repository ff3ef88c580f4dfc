pragma ComponentBehavior: Bound

import QtQuick
import Korvantis.Screens

// A chip for each port. Those without room are left out rather than cut.
Row {
    id: chips

    required property var ports
    property real room: Infinity

    spacing: 4
    clip: implicitWidth > width
    width: Math.min(implicitWidth, Math.max(0, room))

    Repeater {
        model: chips.ports

        ChipView {
            required property string modelData

            text: modelData
            font: OstrelFont.monospaced(10.5, Font.Medium)
            ink: OstrelTheme.ink2
            ground: Qt.alpha(OstrelTheme.network, 0.2)
            opacity: x + width <= chips.room + 0.5 ? 1 : 0
        }
    }
}
