import QtQuick
import QtQuick.Layouts
import Korvantis.State
import Korvantis.Screens

// When phone briefs go out by themselves, and what the next one would say.
SettingsBlock {
    id: block

    required property RemoteAlertStore alerts
    required property RemoteAlertsModel briefs

    title: "Automatic Triggers & Live Brief Preview"

    SettingsToggle {
        objectName: "settings-notifyOnStrain"
        text: "Auto-send alert when Mac experiences sustained CPU, Memory, or Thermal strain"
        isOn: block.alerts.notifyOnStrain
        onClicked: block.alerts.notifyOnStrain = !isOn
    }
    SettingsPicker {
        pickerName: "settings-schedule"
        label: "Scheduled Briefs"
        choices: SettingsChoices.schedules
        chosen: block.alerts.schedule
        onPicked: name => block.alerts.schedule = name
    }
    RowLayout {
        Layout.fillWidth: true
        spacing: 12

        SettingsNote {
            text: "Least time from one strain alert to the next."
        }
        NumberStepper {
            objectName: "settings-cooldown"
            from: 5
            // One that was set higher by hand is not pulled down by a step.
            to: Math.max(240, value)
            stepSize: 5
            value: block.briefs.cooldownMinutes
            text: block.briefs.cooldownText
            onMoved: value => block.alerts.cooldownMinutes = value
        }
    }
    Rectangle {
        Layout.fillWidth: true
        implicitHeight: preview.implicitHeight + 20
        radius: 8
        color: OstrelTheme.elevatedCard

        FigureText {
            id: preview

            objectName: "briefPreview"
            x: 12
            y: 10
            width: parent.width - 24
            text: block.briefs.previewText
            font: OstrelFont.monospaced(10)
            lineHeight: 1.25
            wrapMode: Text.Wrap
            elide: Text.ElideNone
        }
    }
}
