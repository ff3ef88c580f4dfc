import QtQuick
import Korvantis.State
import Korvantis.Screens

// The devices for sound in and out, and the master volume.
CardFrame {
    id: card

    required property AudioMixerStore mixer
    required property SoundPaneModel sound

    // A picker of a device. A new list makes the picker forget what is chosen, so it is told again.
    component DevicePicker: PickerField {
        id: picker

        required property string title
        required property int selectedIndex

        currentIndex: selectedIndex
        Accessible.name: title + ": " + displayText
        onModelChanged: currentIndex = Qt.binding(() => picker.selectedIndex)
    }

    Item {
        width: parent.width
        implicitHeight: Math.max(caption.implicitHeight, refresh.implicitHeight)

        SymbolView {
            id: captionSymbol

            objectName: "routingSymbol"
            anchors.verticalCenter: parent.verticalCenter
            name: "speaker.wave.3.fill"
            size: 11
            tint: OstrelTheme.ink1
            opacity: 0.6
        }
        FigureText {
            id: caption

            objectName: "routingCaption"
            anchors.left: captionSymbol.right
            anchors.leftMargin: 6
            anchors.right: refresh.left
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            text: "SYSTEM AUDIO ROUTING & MASTER OUTPUT"
            font: OstrelFont.system(11, Font.Bold, 0.6)
            opacity: 0.6
        }
        QuietButton {
            id: refresh

            objectName: "refreshDevices"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            symbol: "arrow.clockwise"
            text: "Refresh CoreAudio"
            ground: OstrelTheme.elevatedCard
            hoverGround: OstrelTheme.rowHover
            leftPadding: 10
            rightPadding: 10
            onClicked: card.mixer.refreshAudioDevices()
        }
    }
    Row {
        id: pickers

        width: parent.width
        spacing: 12

        DevicePicker {
            objectName: "outputPicker"
            width: (pickers.width - pickers.spacing) / 2
            caption: "Output"
            title: "Output Device"
            model: card.sound.outputs
            selectedIndex: card.sound.outputIndex
            onActivated: card.mixer.selectOutputDevice(Number(currentValue))
        }
        DevicePicker {
            objectName: "inputPicker"
            width: (pickers.width - pickers.spacing) / 2
            caption: "Input"
            title: "Input Microphone"
            model: card.sound.inputs
            selectedIndex: card.sound.inputIndex
            onActivated: card.mixer.selectInputDevice(Number(currentValue))
        }
    }
    Item {
        width: parent.width
        implicitHeight: Math.max(mute.implicitHeight, master.implicitHeight)

        QuietButton {
            id: mute

            objectName: "masterMute"
            // The glyph stands flush with what is above it.
            x: -padding
            anchors.verticalCenter: parent.verticalCenter
            symbol: card.mixer.isMasterMuted ? "speaker.slash.fill" : "speaker.wave.3.fill"
            fontSize: 14
            ink: card.mixer.isMasterMuted ? OstrelTheme.strainRed : OstrelTheme.ink1
            hoverInk: ink
            hint: card.mixer.isMasterMuted ? "Unmute the Master Output" : "Mute the Master Output"
            onClicked: card.mixer.isMasterMuted = !card.mixer.isMasterMuted
        }
        VolumeSlider {
            id: master

            objectName: "masterSlider"
            anchors.left: mute.right
            anchors.leftMargin: 4
            anchors.right: percent.left
            anchors.rightMargin: 10
            anchors.verticalCenter: parent.verticalCenter
            value: card.mixer.masterVolume
            Accessible.name: "Master Volume"
            onChosen: volume => card.mixer.masterVolume = volume
        }
        FigureText {
            id: percent

            objectName: "masterText"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: 40
            horizontalAlignment: Text.AlignRight
            text: card.sound.masterText
            font: OstrelFont.monospaced(12, Font.Medium)
        }
    }
}
