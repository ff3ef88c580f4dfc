import QtQuick
import QtQuick.Controls.Basic
import Korvantis.Screens

// A slider of a volume, 0 to 1. It asks for a volume and shows the one that it is given, so it
// never runs away from what is stored.
ValueSlider {
    id: slider

    signal chosen(real volume)

    // Whole steps of 5 percent from the keyboard: sums of them would not read as such.
    function nudge(percent: real) {
        chosen(Math.max(0, Math.min(100, Math.round(value * 100) + percent)) / 100);
    }

    accent: OstrelTheme.cpu
    snapMode: Slider.NoSnap
    Accessible.role: Accessible.Slider
    Accessible.onIncreaseAction: nudge(5)
    Accessible.onDecreaseAction: nudge(-5)
    onMoved: chosen(value)
    Keys.onLeftPressed: nudge(mirrored ? 5 : -5)
    Keys.onRightPressed: nudge(mirrored ? -5 : 5)
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_Home || event.key === Qt.Key_End;
        if (event.accepted)
            chosen(event.key === Qt.Key_Home ? 0 : 1);
    }
}
