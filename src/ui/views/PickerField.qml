pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Korvantis.Screens

// A choice of one out of a few, in a small menu.
ComboBox {
    id: picker

    required property string caption
    // Off where the caption stands beside the field.
    property bool showsCaption: true
    property color outline: OstrelTheme.hairline

    textRole: "label"
    valueRole: "name"
    font: OstrelFont.system(12, Font.Medium)
    leftPadding: 11
    rightPadding: 28
    topPadding: 7
    bottomPadding: 7
    hoverEnabled: true
    Accessible.role: Accessible.ComboBox
    Accessible.name: caption + ": " + displayText

    contentItem: Row {
        spacing: 6

        Text {
            visible: picker.showsCaption
            text: picker.caption
            textFormat: Text.PlainText
            font: OstrelFont.system(12)
            color: OstrelTheme.ink3
        }
        Text {
            width: Math.max(0, Math.min(implicitWidth, picker.availableWidth - x))
            text: picker.displayText
            textFormat: Text.PlainText
            elide: Text.ElideRight
            font: picker.font
            color: OstrelTheme.ink1
        }
    }

    indicator: SymbolView {
        x: picker.width - width - 9
        anchors.verticalCenter: parent.verticalCenter
        name: "chevron.up.chevron.down"
        size: 10
        tint: OstrelTheme.ink3
    }

    background: Rectangle {
        implicitWidth: 132
        color: picker.hovered ? OstrelTheme.elevatedCard : OstrelTheme.cardBackground
        radius: 8
        border.width: picker.visualFocus ? 1.5 : 1
        border.color: picker.visualFocus ? OstrelTheme.cpu : picker.outline
    }

    delegate: ItemDelegate {
        id: entry

        required property choice modelData
        required property int index

        width: ListView.view ? ListView.view.width : 0
        height: 28
        highlighted: picker.highlightedIndex === index
        Accessible.role: Accessible.ListItem
        Accessible.name: modelData.label

        contentItem: Text {
            text: entry.modelData.label
            textFormat: Text.PlainText
            elide: Text.ElideRight
            font: OstrelFont.system(12, picker.currentIndex === entry.index ? Font.DemiBold : Font.Normal)
            color: OstrelTheme.ink1
            verticalAlignment: Text.AlignVCenter
        }
        background: Rectangle {
            color: entry.highlighted ? OstrelTheme.rowHover : "transparent"
            radius: 6
        }
    }

    popup: Popup {
        y: picker.height + 4
        width: picker.width
        padding: 4
        implicitHeight: contentItem.implicitHeight + 8
        margins: 8
        enter: null
        exit: null

        contentItem: ListView {
            clip: true
            implicitHeight: Math.min(contentHeight, 280)
            model: picker.delegateModel
            currentIndex: picker.highlightedIndex
            ScrollBar.vertical: ThinScrollBar {}
        }
        background: Rectangle {
            color: OstrelTheme.elevatedCard
            radius: 9
            border.width: 1
            border.color: OstrelTheme.subtleBorder
        }
    }
}
