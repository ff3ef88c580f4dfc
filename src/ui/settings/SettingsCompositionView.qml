import QtQuick
import Korvantis.State
import Korvantis.Screens

// The settings over a darkened root view, for a product picture.
Item {
    id: composition

    required property MonitorStore store

    OstrelRootContentView {
        width: 1220
        height: 790
        store: composition.store
        isCompactPopover: false
    }
    Rectangle {
        width: 1220
        height: 790
        color: Qt.rgba(0, 0, 0, 0.5)
    }

    Item {
        x: (1220 - modal.implicitWidth) / 2
        // Taller than a sheet, so that the picture shows as much as it can.
        y: 20
        width: modal.implicitWidth
        height: 750

        // A soft shadow without shader effects, which the software renderer lacks: twelve layers
        // that add up to the wanted darkness at the edge.
        Repeater {
            model: 12

            Rectangle {
                required property int index

                anchors.fill: parent
                anchors.margins: index - 12
                radius: 26 - index
                color: Qt.rgba(0, 0, 0, 0.064)
            }
        }
        Rectangle {
            anchors.fill: parent
            color: OstrelTheme.canvas
            radius: 14
            border.width: 1
            border.color: OstrelTheme.subtleBorder
        }
        SettingsModalView {
            id: modal

            anchors.fill: parent
            store: composition.store
        }
    }
}
