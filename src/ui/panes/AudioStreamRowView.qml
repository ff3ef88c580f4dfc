import QtQuick
import Korvantis.State
import Korvantis.Screens

// One application in the mixer.
Item {
    id: row

    required property AudioMixerStore mixer
    required property string appID
    required property string appName
    required property string bundlePath
    required property string statusText
    required property bool isMuted
    required property real volume
    required property string volumeText
    required property string description
    // Someone is at one of its controls.
    readonly property bool isInUse: mute.activeFocus || mute.down || slider.activeFocus || slider.pressed

    implicitHeight: 40
    Accessible.role: Accessible.ListItem
    Accessible.name: description

    AppIconView {
        id: icon

        objectName: "icon"
        anchors.verticalCenter: parent.verticalCenter
        bundlePath: row.bundlePath
    }
    Column {
        anchors.left: icon.right
        anchors.leftMargin: 10
        anchors.right: mute.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        FigureText {
            objectName: "appName"
            width: parent.width
            text: row.appName
            font: OstrelFont.system(13, Font.Medium)
        }
        FigureText {
            objectName: "status"
            width: parent.width
            text: row.statusText
            font: OstrelFont.system(10.5)
            color: OstrelTheme.ink3
        }
    }
    QuietButton {
        id: mute

        objectName: "mute-" + row.appID
        anchors.right: slider.left
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        symbol: row.isMuted ? "speaker.slash.fill" : "speaker.wave.2.fill"
        fontSize: 13
        ink: OstrelTheme.ink1
        hint: (row.isMuted ? "Unmute " : "Mute ") + row.appName
        onClicked: row.mixer.toggleAppMute(row.appID)
    }
    VolumeSlider {
        id: slider

        objectName: "volume-" + row.appID
        anchors.right: end.left
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        width: 220
        value: row.volume
        Accessible.name: "Volume of " + row.appName
        onChosen: volume => row.mixer.setAppVolume(row.appID, volume)
        // Taken hold of is touched: the row stays, also when the application's load falls.
        onPressedChanged: if (pressed) row.mixer.setAppVolume(row.appID, row.volume)
    }
    FigureText {
        id: end

        objectName: "volumeText"
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: 44
        horizontalAlignment: Text.AlignRight
        text: row.volumeText
        font: OstrelFont.monospaced(11.5)
        color: row.isMuted ? OstrelTheme.ink3 : OstrelTheme.ink2
    }
}
