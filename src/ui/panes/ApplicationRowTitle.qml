import QtQuick
import QtQuick.Layouts
import Korvantis.Screens

// What a row is about: an application with the number of its processes, or one process with its
// pid, role and ports. The name gives way first, in its middle.
RowLayout {
    id: title

    required property string name
    required property string iconName
    required property string countText
    required property string pidText
    required property string roleText
    required property string portsText
    required property bool isGroup
    required property bool isExpanded

    spacing: 9

    SymbolView {
        visible: title.isGroup
        name: title.isExpanded ? "chevron.down" : "chevron.right"
        size: 9
        tint: OstrelTheme.ink3
        Layout.preferredWidth: 12
    }
    Rectangle {
        visible: title.isGroup
        Layout.preferredWidth: 24
        Layout.preferredHeight: 24
        radius: 6
        color: OstrelTheme.elevatedCard

        SymbolView {
            anchors.centerIn: parent
            name: title.iconName
            size: 11
            tint: OstrelTheme.ink2
        }
    }
    FigureText {
        visible: !title.isGroup
        Layout.leftMargin: ApplicationColumns.indent
        Layout.minimumWidth: 84
        text: title.pidText
        font: OstrelFont.monospaced(11)
        color: OstrelTheme.ink3
    }
    FigureText {
        Layout.fillWidth: true
        // No wider than its text, so that what follows stands next to it.
        Layout.maximumWidth: implicitWidth + 1
        text: title.name
        font: OstrelFont.system(title.isGroup ? 12.5 : 12, title.isGroup ? Font.DemiBold : Font.Normal)
        color: title.isGroup ? OstrelTheme.ink1 : OstrelTheme.ink2
        elide: Text.ElideMiddle
    }
    FigureText {
        visible: text !== ""
        text: title.isGroup ? title.countText : title.roleText
        font: OstrelFont.system(11)
        color: OstrelTheme.ink3
    }
    FigureText {
        visible: text !== ""
        Layout.maximumWidth: 180
        text: title.portsText
        font: OstrelFont.monospaced(11)
        color: OstrelTheme.network
    }
    Item {
        Layout.fillWidth: true
    }
}
