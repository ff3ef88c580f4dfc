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
        model: view.overview.topApps.apps.length

        RowLayout {
            id: row

            required property int index
            readonly property cardRow app: view.overview.topApps.apps[index]

            Layout.fillWidth: true
            spacing: 6

            AppIconView {
                bundlePath: row.app.icon
                fallbackSymbol: "app.fill"
                size: 18
            }
            CardLine {
                name: row.app.name
                figure: row.app.figure
            }
            QuietButton {
                // A tick can bring another application into this row while the button is down.
                property string pressedID

                objectName: "quit-" + row.app.name
                symbol: "xmark.circle.fill"
                hint: "Quit " + row.app.name
                padding: 2
                onPressed: pressedID = row.app.id
                onClicked: {
                    const id = pressedID !== "" ? pressedID : row.app.id;
                    pressedID = "";
                    view.overview.quitApp(id);
                }
                onCanceled: pressedID = ""
            }
        }
    }
}
