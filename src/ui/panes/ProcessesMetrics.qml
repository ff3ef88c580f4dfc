pragma Singleton

import QtQuick

// The sizes that the rows of the processes pane share.
QtObject {
    readonly property int cardRadius: 12
    // Between two cards, and below the last row of a card of several.
    readonly property int gap: 8
    readonly property int cardPadding: 12
    // How far what is inside a card stands to the right of its name.
    readonly property int indent: 66
    readonly property int pid: 84
    readonly property int cpu: 68
    readonly property int memory: 68
    readonly property int energy: 64
    readonly property int network: 84
    // Rows narrower than this set their figures closer.
    readonly property int narrowWidth: 900

    function rowHeight(kind: string): int {
        switch (kind) {
        case "caption":
            return 28;
        case "helperShare":
            return 22;
        case "process":
        case "projectProcess":
            return 28;
        case "port":
            return 50;
        default:
            return 58;
        }
    }
}
