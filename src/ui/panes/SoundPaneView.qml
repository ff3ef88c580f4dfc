import QtQuick
import Korvantis.Screens

// The devices for sound, and a volume for each application.
PaneView {
    id: pane

    SoundPaneModel {
        id: sound

        store: pane.store
    }

    PaneScroller {
        id: scroller

        anchors.fill: parent
        focus: true
        name: "Sound"

        HardwareDevicesCardView {
            objectName: "hardwareDevicesCard"
            width: parent.width
            mixer: pane.store.audioMixer
            sound: sound
        }
        CardFrame {
            objectName: "perAppVolumeMixerCard"
            width: parent.width

            FigureText {
                objectName: "mixerCaption"
                width: Math.min(implicitWidth, parent.width)
                text: "PER-APPLICATION VOLUME MIXER"
                font: OstrelFont.system(11, Font.Bold, 0.6)
                opacity: 0.6
            }
            AudioStreamsView {
                objectName: "streams"
                width: parent.width
                mixer: pane.store.audioMixer
                sound: sound
                scroller: scroller
            }
        }
    }
}
