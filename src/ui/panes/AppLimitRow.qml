import QtQuick
import Korvantis.Screens

// One of the user's limits.
FocusScope {
    id: row

    required property string limitID
    required property string appName
    required property string bundlePath
    required property string ruleText
    required property string description

    readonly property int focusReason: trash.focusReason

    signal remove

    // For the row that follows a removed one, so that the keyboard goes on from there.
    function takeFocus(reason: int) {
        trash.forceActiveFocus(reason);
    }

    implicitHeight: Math.ceil(words.implicitHeight) + 16
    Accessible.role: Accessible.ListItem
    Accessible.name: description

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: OstrelTheme.elevatedCard
    }
    AppIconView {
        id: icon

        x: 12
        anchors.verticalCenter: parent.verticalCenter
        bundlePath: row.bundlePath
        fallbackSymbol: "app.fill"
        size: 24
    }
    Column {
        id: words

        anchors.left: icon.right
        anchors.leftMargin: 10
        anchors.right: trash.left
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        FigureText {
            objectName: "appName"
            width: parent.width
            text: row.appName
            font: OstrelFont.system(12.5, Font.Medium)
        }
        FigureText {
            objectName: "rule"
            width: parent.width
            text: row.ruleText
            font: OstrelFont.system(11.5)
            color: OstrelTheme.ink2
        }
    }
    QuietButton {
        id: trash

        objectName: "trash"
        focus: true
        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        symbol: "trash"
        hint: "Remove Rule"
        fontSize: 12
        ink: OstrelTheme.strainRed
        hoverGround: OstrelTheme.subtleBorder
        Accessible.name: "Remove Rule: " + row.description
        onClicked: row.remove()
    }
}
