import QtQuick
import Korvantis.State
import Korvantis.Screens

// The settings of a window of their own, built anew when the theme changes.
FocusScope {
    id: themed

    required property MonitorStore store

    signal close

    function build() {
        loader.setSource(Qt.resolvedUrl("SettingsModalView.qml"), {
            store: store,
            focus: true
        });
    }

    implicitWidth: loader.implicitWidth
    implicitHeight: loader.implicitHeight
    Component.onCompleted: build()

    Rectangle {
        id: ground

        anchors.fill: parent
        color: OstrelTheme.canvas
    }
    Loader {
        id: loader

        anchors.fill: parent
        focus: true
    }
    Connections {
        target: themed.store.look

        function onEffectiveIsDarkChanged() {
            const name = KeyboardFocus.focusedName(themed);
            const cursor = KeyboardFocus.focusedCursor(themed);
            ground.color = OstrelTheme.canvas;
            themed.build();
            KeyboardFocus.focus(themed, name, cursor);
        }
    }
    Connections {
        target: loader.item as SettingsModalView

        function onClose() {
            themed.close();
        }
    }
}
