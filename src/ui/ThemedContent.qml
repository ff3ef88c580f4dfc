import QtQuick
import Korvantis.State
import Korvantis.Screens

// The content of a window, which belongs to one look: a change of theme builds it anew, so that
// every colour, read once from the theme, is read again. The keyboard focus returns to where it
// was.
FocusScope {
    id: themed

    required property MonitorStore store
    property bool isCompactPopover: false
    property bool offersFullWindow: false
    // The settings over a darkened root view instead of the root view.
    property bool showsSettingsComposition: false

    signal openFullWindow

    function build() {
        if (showsSettingsComposition)
            loader.setSource(Qt.resolvedUrl("SettingsCompositionView.qml"), {
                store: store
            });
        else
            loader.setSource(Qt.resolvedUrl("OstrelRootContentView.qml"), {
                store: store,
                isCompactPopover: isCompactPopover,
                offersFullWindow: offersFullWindow
            });
    }
    function rebuild() {
        const name = KeyboardFocus.focusedName(themed);
        const cursor = KeyboardFocus.focusedCursor(themed);
        build();
        KeyboardFocus.focus(themed, name, cursor);
    }

    focus: true
    Component.onCompleted: build()
    onShowsSettingsCompositionChanged: build()

    Loader {
        id: loader

        anchors.fill: parent
        focus: true
    }

    Connections {
        target: themed.store.look

        function onEffectiveIsDarkChanged() {
            themed.rebuild();
        }
    }
    Connections {
        target: loader.item as OstrelRootContentView

        function onOpenFullWindow() {
            themed.openFullWindow();
        }
    }
}
