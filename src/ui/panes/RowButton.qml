import QtQuick
import Korvantis.Screens

// A button of a row. While it is down, ticks leave its row where it is.
QuietButton {
    required property ProcessesListRow delegate

    padding: 5
    leftPadding: 9
    rightPadding: 9
    ink: OstrelTheme.ink3
    hoverGround: OstrelTheme.subtleBorder
    // Only the buttons of the current row stand in the tab order, or it would never end.
    focusPolicy: delegate.isCurrent || activeFocus ? Qt.StrongFocus : Qt.NoFocus
    onDownChanged: delegate.buttonPressed(down)
    // Its row may have been scrolled away.
    onVisualFocusChanged: if (visualFocus) delegate.ListView.view.positionViewAtIndex(delegate.index, ListView.Contain)
    Component.onDestruction: if (down && delegate)
        delegate.buttonPressed(false)
}
