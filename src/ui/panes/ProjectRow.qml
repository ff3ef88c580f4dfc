import QtQuick
import Korvantis.Screens

// A development project; its processes follow below.
CardHead {
    id: view

    symbol: "folder.fill.badge.gearshape"
    symbolColor: OstrelTheme.cpu

    RowFigure {
        text: view.row.memoryText
    }
    RowFigure {
        width: 92
        text: view.row.cpuText
        color: OstrelTheme.ink2
    }
}
