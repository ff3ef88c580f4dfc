import QtQuick
import Korvantis.Screens

// One application: whether it may be quit and why, its figures, and the ways to quit it. The name
// gives way first, in its middle.
Item {
    id: view

    required property ProcessesListRow delegate
    readonly property processesRow row: delegate.row

    RowButton {
        id: chevron

        objectName: "chevron"
        delegate: view.delegate
        x: -6
        anchors.verticalCenter: parent.verticalCenter
        padding: 6
        leftPadding: 6
        rightPadding: 6
        symbol: view.row.isExpanded ? "chevron.down" : "chevron.right"
        fontSize: 9
        Accessible.name: (view.row.isExpanded ? "Close " : "Open ") + view.row.title
        onClicked: delegate.toggleExpanded()
    }
    AppIconView {
        id: icon

        x: 20
        anchors.verticalCenter: parent.verticalCenter
        bundlePath: view.row.bundlePath
    }
    Item {
        id: words

        anchors.left: icon.right
        anchors.leftMargin: 10
        anchors.right: metrics.left
        anchors.rightMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        height: badge.height + (reason.visible ? reason.height + 2 : 0)

        FigureText {
            id: name

            anchors.verticalCenter: badge.verticalCenter
            width: Math.max(0, Math.min(Math.ceil(implicitWidth), words.width - badge.width - 8 - (helpers.visible ? helpers.width + 8 : 0)))
            text: view.row.title
            font: OstrelFont.system(13, Font.DemiBold)
            elide: Text.ElideMiddle
        }
        ChipView {
            id: helpers

            objectName: "helpers"
            visible: text !== ""
            anchors.left: name.right
            anchors.leftMargin: 8
            anchors.verticalCenter: badge.verticalCenter
            text: view.row.countText
            font: OstrelFont.system(10, Font.Medium)
            ground: Qt.alpha(OstrelTheme.subtleBorder, 0.7)
        }
        QuitSafetyBadgeView {
            id: badge

            anchors.left: helpers.visible ? helpers.right : name.right
            anchors.leftMargin: 8
            verdict: view.row.verdict
        }
        FigureText {
            id: reason

            objectName: "reason"
            visible: text !== ""
            anchors.top: badge.bottom
            anchors.topMargin: 2
            width: parent.width
            text: view.row.subtitle
            font: OstrelFont.system(10)
            color: OstrelTheme.ink3
            // In a narrow list it needs two lines.
            wrapMode: Text.WordWrap
            maximumLineCount: 2
        }
    }
    Row {
        id: metrics

        anchors.right: quit.left
        anchors.rightMargin: view.delegate.isNarrow ? 12 : 20
        anchors.verticalCenter: parent.verticalCenter
        spacing: view.delegate.isNarrow ? 0 : 10

        MetricColumn {
            width: ProcessesMetrics.cpu
            value: view.row.cpuText
            label: "CPU"
            ink: view.row.isHot ? OstrelTheme.heat : OstrelTheme.ink1
        }
        MetricColumn {
            width: ProcessesMetrics.memory
            value: view.row.memoryText
            label: "MEMORY"
        }
        MetricColumn {
            width: ProcessesMetrics.energy
            value: view.row.energyText
            label: "ENERGY"
            ink: OstrelTheme.ink2
        }
        MetricColumn {
            width: ProcessesMetrics.network
            value: view.row.networkText
            label: "NET"
            ink: OstrelTheme.ink3
        }
    }
    QuitButton {
        id: quit

        delegate: view.delegate
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
    }
}
