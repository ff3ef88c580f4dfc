import QtQuick
import Korvantis.Screens

// Not built yet, and says so.
PaneView {
    EmptyStateView {
        anchors.centerIn: parent
        icon: "chart.xyaxis.line"
        title: "History Is Not There Yet"
        subtitle: "The charts of the past are still being built. What this machine does now is on the Overview."
    }
}
