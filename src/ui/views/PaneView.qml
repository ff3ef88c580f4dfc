import QtQuick
import Korvantis.State

// What all panes have in common.
FocusScope {
    required property MonitorStore store
}
