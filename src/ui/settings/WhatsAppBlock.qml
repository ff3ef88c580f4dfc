import QtQuick
import QtQuick.Layouts
import Korvantis.State
import Korvantis.Screens

// Phone briefs by WhatsApp.
SettingsBlock {
    id: block

    required property RemoteAlertStore alerts
    required property RemoteAlertsModel briefs

    title: "WhatsApp Remote Bridge"
    symbol: "phone.bubble.fill"

    SettingsToggle {
        objectName: "settings-whatsAppEnabled"
        text: "Enable WhatsApp"
        isOn: block.alerts.whatsAppEnabled
        onClicked: block.alerts.whatsAppEnabled = !isOn
    }
    SettingsPicker {
        pickerName: "settings-whatsAppMode"
        label: "Delivery Mode"
        fieldWidth: 350
        choices: SettingsChoices.deliveryModes
        chosen: block.alerts.whatsAppMode
        onPicked: name => block.alerts.whatsAppMode = name
    }
    TextEntry {
        objectName: "settings-whatsAppPhone"
        Layout.fillWidth: true
        placeholderText: "WhatsApp Number (+15551234567)"
        text: block.alerts.whatsAppPhone
        onTextEdited: text => block.alerts.whatsAppPhone = text
    }
    RowLayout {
        Layout.fillWidth: true
        spacing: 10

        TextEntry {
            objectName: "settings-whatsAppApiKeyOrWebhook"
            Layout.fillWidth: true
            placeholderText: "CallMeBot API Key or Webhook URL (optional)"
            text: block.alerts.whatsAppApiKeyOrWebhook
            onTextEdited: text => block.alerts.whatsAppApiKeyOrWebhook = text
        }
        TestButton {
            objectName: "settings-testWhatsApp"
            text: block.briefs.testWhatsAppText
            onClicked: block.briefs.testWhatsApp()
        }
    }
}
