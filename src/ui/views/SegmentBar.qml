pragma ComponentBehavior: Bound

import QtQuick
import Korvantis.Screens

// A bar of coloured shares of one whole, 0 to 1 each; what they leave shows the ground.
Rectangle {
    id: bar

    property list<real> shares
    property var colors: []

    implicitHeight: 4
    radius: height / 2
    color: OstrelTheme.elevatedCard
    clip: true

    Row {
        Repeater {
            model: bar.shares.length

            Rectangle {
                required property int index

                width: bar.width * bar.shares[index]
                height: bar.height
                color: bar.colors[index]
            }
        }
    }
}
