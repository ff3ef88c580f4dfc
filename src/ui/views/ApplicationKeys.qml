import QtQuick

// The keys that work in every window of the program.
Item {
    id: keys

    signal preferences

    Shortcut {
        sequence: "Ctrl+Q"
        onActivated: Qt.quit()
    }
    Shortcut {
        sequence: "Ctrl+,"
        onActivated: keys.preferences()
    }
}
