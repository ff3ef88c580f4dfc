import QtQuick
import Korvantis.Screens

// Not built yet, and says so.
PaneView {
    EmptyStateView {
        anchors.centerIn: parent
        icon: "sparkles.rectangle.stack.fill"
        title: "Agents Is Not There Yet"
        subtitle: "The sessions of coding agents are still being built. Their processes are listed on Processes."
    }
}
