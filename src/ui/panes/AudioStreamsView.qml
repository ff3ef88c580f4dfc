pragma ComponentBehavior: Bound

import QtQuick
import Korvantis.State
import Korvantis.Screens

// The applications of the mixer. Of hundreds, only the rows in view are made, and one more that is
// in use; the others leave their room empty.
Item {
    id: streams

    required property AudioMixerStore mixer
    required property SoundPaneModel sound
    required property PaneScroller scroller
    readonly property int step: 44
    // So many beyond either edge of the view, for Tab to go to.
    readonly property int spare: 3

    implicitHeight: Math.max(0, sound.streamCount * step - 4)
    Accessible.role: Accessible.List
    Accessible.name: "Applications"

    function lookAtView() {
        const top = -mapToItem(scroller, 0, 0).y;
        sound.lastStream = Math.floor((top + scroller.height) / step) + spare;
        sound.firstStream = Math.floor(top / step) - spare;
    }

    Component.onCompleted: lookAtView()
    Connections {
        target: streams.scroller

        function onContentYChanged() {
            streams.lookAtView();
        }
        function onContentHeightChanged() {
            streams.lookAtView();
        }
        function onHeightChanged() {
            streams.lookAtView();
        }
    }
    Repeater {
        model: streams.sound.streams

        AudioStreamRowView {
            required property int place

            y: place * streams.step
            width: streams.width
            mixer: streams.mixer
            onIsInUseChanged: {
                if (isInUse)
                    streams.sound.keptStream = appID;
                else if (streams.sound.keptStream === appID)
                    streams.sound.keptStream = "";
            }
        }
    }
}
