import QtQuick
import Korvantis.Screens

// The frame around a small group of controls.
Rectangle {
    color: OstrelTheme.cardBackground
    radius: 10
    border.width: 1
    border.color: OstrelTheme.hairline
}
