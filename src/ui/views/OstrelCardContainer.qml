import QtQuick
import QtQuick.Layouts
import Korvantis.Screens

// The frame of a card: what it is about, one big figure, a line on it, and whatever is put inside.
FocusScope {
    id: card

    required property string title
    required property string iconName
    required property color accentColor
    required property string headline
    property string subheadline
    // How far the big figure may shrink before it is cut.
    property real smallestHeadline: 0.85
    // A card that leads somewhere reacts to clicks and takes the keyboard focus.
    property bool isTappable: false
    readonly property bool isHovered: pointer.hovered
    default property alias content: body.data

    signal tapped

    implicitWidth: 240
    implicitHeight: stack.implicitHeight + 32
    activeFocusOnTab: isTappable
    Accessible.role: isTappable ? Accessible.Button : Accessible.Grouping
    Accessible.name: title + ": " + headline + (subheadline === "" ? "" : ", " + subheadline)
    Accessible.onPressAction: if (isTappable) tapped()
    Keys.onSpacePressed: if (isTappable) tapped()
    Keys.onReturnPressed: if (isTappable) tapped()

    HoverHandler {
        id: pointer
    }
    TapHandler {
        enabled: card.isTappable
        onTapped: card.tapped()
    }

    Rectangle {
        objectName: "frame"
        anchors.fill: parent
        radius: 12
        color: card.isHovered ? OstrelTheme.elevatedCard : OstrelTheme.cardBackground
        border.width: 1
        border.color: card.isHovered ? Qt.alpha(card.accentColor, 0.45) : OstrelTheme.hairline

        Behavior on color {
            ColorAnimation {
                objectName: "groundFade"
                duration: 140
                easing.type: Easing.OutQuad
            }
        }
        Behavior on border.color {
            ColorAnimation {
                objectName: "borderFade"
                duration: 140
                easing.type: Easing.OutQuad
            }
        }
        FocusRing {
            radius: 12
            shown: card.activeFocus && card.isTappable
        }
    }

    ColumnLayout {
        id: stack

        x: 16
        y: 16
        width: card.width - 32
        spacing: 10

        Row {
            spacing: 6

            SymbolView {
                objectName: "icon"
                name: card.iconName
                size: 12
                tint: card.accentColor
                anchors.verticalCenter: parent.verticalCenter
            }
            FigureText {
                objectName: "title"
                text: card.title.toUpperCase()
                font: OstrelFont.rounded(11, Font.Bold, 0.6)
                color: OstrelTheme.ink2
                anchors.verticalCenter: parent.verticalCenter
            }
        }
        FigureText {
            readonly property font wanted: OstrelFont.rounded(22, Font.Bold)

            objectName: "headline"
            Layout.fillWidth: true
            text: card.headline
            font: wanted
            fontSizeMode: Text.HorizontalFit
            minimumPointSize: Math.max(1, Math.floor(wanted.pointSize * card.smallestHeadline))
            elide: Text.ElideRight
        }
        FigureText {
            objectName: "subheadline"
            visible: text !== ""
            Layout.fillWidth: true
            text: card.subheadline
            font: OstrelFont.monospaced(11, Font.Medium)
            fontSizeMode: Text.HorizontalFit
            minimumPointSize: 5
            color: OstrelTheme.ink3
            elide: Text.ElideRight
        }
        ColumnLayout {
            id: body

            Layout.fillWidth: true
            Layout.fillHeight: true
            spacing: 10
        }
    }
}
