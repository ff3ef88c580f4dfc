import QtQuick
import Korvantis.State

// What all tabs of the settings have in common.
FocusScope {
    required property MonitorStore store
}
