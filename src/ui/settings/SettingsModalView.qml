import QtQuick
import QtQuick.Layouts
import Korvantis.State
import Korvantis.Screens

// The settings. Every control takes effect at once.
FocusScope {
    id: view

    required property MonitorStore store

    signal close

    readonly property string fileName: {
        switch (store.selectedSettingsTab) {
        case "Appearance":
            return "AppearanceSettingsTab.qml";
        case "Remote Alerts":
            return "RemoteAlertsTab.qml";
        case "Integrations & MCP":
            return "IntegrationsTab.qml";
        default:
            return "MenuBarSettingsTab.qml";
        }
    }

    function show() {
        tab.setSource(Qt.resolvedUrl(fileName), {
            store: store
        });
    }

    implicitWidth: 680
    implicitHeight: 640
    Component.onCompleted: {
        show();
        fileNameChanged.connect(show);
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            Layout.fillWidth: true
            Layout.leftMargin: 16
            Layout.rightMargin: 16
            Layout.topMargin: 10
            Layout.bottomMargin: 10

            FigureText {
                objectName: "settingsTitle"
                Layout.fillWidth: true
                text: "Korvantis Preferences"
                font: OstrelFont.system(15, Font.Bold)
                Accessible.role: Accessible.Heading
            }
            QuietButton {
                objectName: "closeSettings"
                focus: true
                symbol: "xmark"
                hint: "Close"
                onClicked: view.close()
            }
        }
        SettingsTabs {
            objectName: "settingsTabs"
            Layout.alignment: Qt.AlignHCenter
            Layout.bottomMargin: 12
            store: view.store
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.preferredHeight: 1
            color: OstrelTheme.hairline
        }
        Loader {
            id: tab

            objectName: "settingsTab"
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }
}
