import QtQuick
import Korvantis.Screens

// A text that is said aloud as it stands. Never rich text: names come from processes.
Text {
    color: OstrelTheme.ink1
    textFormat: Text.PlainText
    elide: Text.ElideRight
    verticalAlignment: Text.AlignVCenter
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
