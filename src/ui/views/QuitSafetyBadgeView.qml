import QtQuick
import Korvantis.Screens

// The verdict on quitting an application, in a capsule.
Rectangle {
    id: badge

    required property string verdict

    implicitWidth: words.implicitWidth + 14
    implicitHeight: words.implicitHeight + 5
    radius: height / 2
    color: QuitSafetyBadge.ground(verdict)
    Accessible.role: Accessible.StaticText
    Accessible.name: words.text

    Text {
        id: words

        objectName: "words"
        x: 7
        y: 2.5
        text: QuitSafetyBadge.text(badge.verdict)
        textFormat: Text.PlainText
        font: OstrelFont.rounded(10, Font.DemiBold)
        color: QuitSafetyBadge.ink(badge.verdict)
    }
}
