import QtQuick
import QtQuick.Controls.Basic
import Korvantis.Screens

// A scroll bar that is there only when there is something to scroll, without fading.
ScrollBar {
    id: bar

    policy: size < 1 ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
    padding: 2
    minimumSize: 0.06

    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: bar.pressed || bar.hovered ? OstrelTheme.ink3 : OstrelTheme.subtleBorder
    }
    background: null
}
