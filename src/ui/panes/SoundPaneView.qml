import QtQuick
import Korvantis.Screens

// Not built yet, and says so.
PaneView {
    EmptyStateView {
        anchors.centerIn: parent
        icon: "slider.horizontal.below.waveform"
        title: "Sound Is Not There Yet"
        subtitle: "The mixer and the audio devices are still being built."
    }
}
