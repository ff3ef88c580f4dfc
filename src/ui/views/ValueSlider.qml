import QtQuick
import QtQuick.Controls.Basic
import Korvantis.Screens

// A slider in the colours of the screens.
Slider {
    id: slider

    property color accent: OstrelTheme.heat

    implicitHeight: 22
    snapMode: Slider.SnapAlways

    background: Rectangle {
        x: slider.leftPadding
        y: slider.topPadding + (slider.availableHeight - height) / 2
        width: slider.availableWidth
        height: 4
        radius: 2
        color: OstrelTheme.subtleBorder

        Rectangle {
            width: slider.visualPosition * parent.width
            height: parent.height
            radius: 2
            color: slider.accent
        }
    }
    handle: Rectangle {
        x: slider.leftPadding + slider.visualPosition * (slider.availableWidth - width)
        y: slider.topPadding + (slider.availableHeight - height) / 2
        width: 16
        height: 16
        radius: 8
        color: "#FFFFFF"
        border.width: 1
        border.color: OstrelTheme.subtleBorder

        FocusRing {
            radius: 8
            shown: slider.visualFocus
        }
    }
}
