import QtQuick
import Korvantis.State
import Korvantis.Screens

// The bar above the panes: the machine, the tabs, and the controls of the program.
Item {
    id: bar

    required property MonitorStore store
    required property RootContentModel content
    required property bool isCompactPopover
    required property bool offersFullWindow

    signal openFullWindow

    implicitHeight: Math.max(names.implicitHeight, tabs.implicitHeight) + 20

    LogoView {
        id: logo

        x: 16
        anchors.verticalCenter: parent.verticalCenter
        appIconSource: bar.content.appIconSource
    }
    NameAndMachineView {
        id: names

        objectName: "namesView"
        anchors.left: logo.right
        anchors.leftMargin: 8
        anchors.right: tabs.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        content: bar.content
    }
    PaneTabs {
        id: tabs

        objectName: "paneTabs"
        // In the middle, unless the controls on the right need the room.
        x: Math.round(Math.min((bar.width - width) / 2, controls.x - 8 - width))
        anchors.verticalCenter: parent.verticalCenter
        store: bar.store
        content: bar.content
        isCompactPopover: bar.isCompactPopover
    }

    Row {
        id: controls

        objectName: "barControls"
        anchors.right: parent.right
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8

        QuietButton {
            objectName: "openFullWindow"
            visible: bar.offersFullWindow
            anchors.verticalCenter: parent.verticalCenter
            symbol: "arrow.up.left.and.arrow.down.right"
            hint: "Open Full Korvantis Window"
            ground: OstrelTheme.elevatedCard
            onClicked: bar.openFullWindow()
        }
        ThemeButtons {
            anchors.verticalCenter: parent.verticalCenter
            look: bar.store.look
            content: bar.content
            isCompactPopover: bar.isCompactPopover
        }
        FramedButton {
            anchors.verticalCenter: parent.verticalCenter
            buttonName: "sampleNow"
            symbol: "arrow.clockwise"
            hint: "Sample Now"
            onClicked: bar.store.refreshTick()
        }
        FramedButton {
            anchors.verticalCenter: parent.verticalCenter
            buttonName: "gear"
            symbol: "gearshape.fill"
            hint: "Korvantis Preferences (⌘,)"
            onClicked: bar.store.showSettingsModal = true
        }
    }

    component FramedButton: FrameView {
        id: framed

        property alias buttonName: button.objectName
        property alias symbol: button.symbol
        property alias hint: button.hint

        signal clicked

        implicitWidth: button.implicitWidth + 6
        implicitHeight: button.implicitHeight + 6

        QuietButton {
            id: button

            anchors.centerIn: parent
            padding: 6
            onClicked: framed.clicked()
        }
    }
}
