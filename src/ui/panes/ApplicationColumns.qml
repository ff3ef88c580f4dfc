pragma Singleton

import QtQuick

// The widths that the header and the rows of the list of applications share.
QtObject {
    readonly property int sideMargin: 14
    // How far processes stand to the right of their application.
    readonly property int indent: 46
    readonly property int cpu: 78
    readonly property int memory: 88
    readonly property int rate: 94
    readonly property int action: 78
    readonly property int groupRowHeight: 42
    readonly property int processRowHeight: 32
    // Narrower lists leave out what was read and written on its own.
    readonly property int narrowWidth: 900
}
