import QtQuick
import QtQuick.Layouts
import Korvantis.Screens

// The phone briefs: their two channels, when they go out, and how the last one fared.
SettingsTabView {
    id: tab

    RemoteAlertsModel {
        id: briefs

        store: tab.store
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        SettingsScroller {
            objectName: "settingsScroller"
            Layout.fillWidth: true
            Layout.fillHeight: true
            place: "Remote Alerts"

            IMessageBlock {
                objectName: "iMessageBlock"
                alerts: tab.store.remoteAlerts
                briefs: briefs
            }
            WhatsAppBlock {
                objectName: "whatsAppBlock"
                alerts: tab.store.remoteAlerts
                briefs: briefs
            }
            TriggersBlock {
                alerts: tab.store.remoteAlerts
                briefs: briefs
            }
        }
        // Outside of what scrolls, so that the answer to a test is seen wherever its button is.
        BriefStatusLine {
            Layout.fillWidth: true
            text: briefs.statusText
            isError: tab.store.remoteAlerts.lastStatusIsError
        }
    }
}
