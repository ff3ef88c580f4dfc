import QtQuick
import QtQuick.Layouts
import Korvantis.State
import Korvantis.Screens

// Phone briefs by iMessage.
SettingsBlock {
    id: block

    required property RemoteAlertStore alerts
    required property RemoteAlertsModel briefs

    title: "Apple iMessage Bridge (Zero-Cost Native macOS)"
    symbol: "message.fill"
    caption: "Sends Mac health briefs directly through your Mac's signed-in Messages.app to your iPhone, iPad, or Apple Watch."

    SettingsToggle {
        objectName: "settings-iMessageEnabled"
        text: "Enable iMessage"
        isOn: block.alerts.iMessageEnabled
        onClicked: block.alerts.iMessageEnabled = !isOn
    }
    RowLayout {
        Layout.fillWidth: true
        spacing: 10

        TextEntry {
            objectName: "settings-iMessageRecipient"
            Layout.fillWidth: true
            label: "iMessage recipient"
            placeholderText: "Your phone or Apple ID (+15551234567 or you@example.com)"
            text: block.alerts.iMessageRecipient
            onTextEdited: text => block.alerts.iMessageRecipient = text
        }
        TestButton {
            objectName: "settings-testIMessage"
            text: block.briefs.testIMessageText
            onClicked: block.briefs.testIMessage()
        }
    }
}
