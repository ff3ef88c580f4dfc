import QtQuick
import Korvantis.Screens

// A running container. There is nothing to do with it here.
CardHead {
    id: view

    symbol: "shippingbox.fill"
    symbolColor: OstrelTheme.gpu

    RowFigure {
        width: 92
        text: view.row.cpuText
        color: OstrelTheme.ink2
    }
    RowFigure {
        text: view.row.memoryText
    }
}
