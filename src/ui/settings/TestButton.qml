import QtQuick
import QtQuick.Layouts
import Korvantis.Screens

// Sends a brief over one channel now.
QuietButton {
    Layout.preferredWidth: Math.max(implicitWidth, 124)
    symbol: "paperplane.fill"
    fontSize: 12
    padding: 8
    leftPadding: 12
    rightPadding: 12
    ink: OstrelTheme.ink1
    ground: OstrelTheme.elevatedCard
    hoverGround: OstrelTheme.subtleBorder
}
