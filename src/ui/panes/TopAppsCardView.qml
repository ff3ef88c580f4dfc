pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Korvantis.Screens

// The applications with the most memory, and a way to quit each.
OstrelCardContainer {
    id: view

    required property OverviewPaneModel overview

    title: "Top Apps"
    iconName: "square.stack.3d.up.fill"
    accentColor: OstrelTheme.neural
    headline: overview.topApps.headline
    subheadline: overview.topApps.subheadline

    Repeater {
        id: apps

        objectName: "topApps"
        model: view.overview.largestApps

        TopAppRow {
            Layout.fillWidth: true
            onButtonPressed: isPressed => isPressed ? view.overview.hold() : view.overview.release()
            onQuit: view.overview.quitApp(row.id)
        }
        onItemRemoved: (index, item) => {
            const gone = item as TopAppRow;
            const next = itemAt(Math.min(index, count - 1)) as TopAppRow;
            if (gone.hasKeyboard && next)
                next.takeFocus(gone.focusReason);
        }
    }
}
