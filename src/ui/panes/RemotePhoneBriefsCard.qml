import QtQuick
import Korvantis.State
import Korvantis.Screens

// A shortcut to the phone briefs: what is switched on, a brief now, and the way to their settings.
FocusScope {
    id: card

    required property InsightsPaneModel pane
    required property RemoteAlertStore alerts
    // The user has asked for a brief just now and looks for what became of it.
    readonly property bool isAnswering: answer.running

    implicitHeight: Math.ceil(content.implicitHeight) + 32

    Timer {
        id: answer

        interval: 500
    }

    component Channel: Row {
        id: channel

        required property string name
        required property bool isOn

        spacing: 6
        Accessible.role: Accessible.StaticText
        Accessible.name: name + (isOn ? ": on" : ": off")

        Rectangle {
            objectName: "dot"
            width: 7
            height: 7
            radius: 3.5
            color: channel.isOn ? OstrelTheme.safeGreen : OstrelTheme.ink4
            anchors.verticalCenter: parent.verticalCenter
        }
        FigureText {
            objectName: "label"
            text: channel.name
            font: OstrelFont.system(11, Font.Medium)
            color: channel.isOn ? OstrelTheme.ink1 : OstrelTheme.ink3
            Accessible.ignored: true
            anchors.verticalCenter: parent.verticalCenter
        }
    }

    FrameView {
        anchors.fill: parent
        radius: 12
    }
    Column {
        id: content

        x: 16
        y: 16
        width: card.width - 32
        spacing: 10

        Item {
            width: parent.width
            height: Math.max(caption.implicitHeight, channels.implicitHeight)

            Row {
                id: caption

                spacing: 6
                anchors.verticalCenter: parent.verticalCenter

                SymbolView {
                    name: "iphone.radiowaves.left.and.right"
                    size: 12
                    tint: OstrelTheme.safeGreen
                    anchors.verticalCenter: parent.verticalCenter
                }
                SectionCaption {
                    text: "REMOTE PHONE BRIEFS (iMESSAGE & WHATSAPP)"
                    anchors.verticalCenter: parent.verticalCenter
                }
            }
            Row {
                id: channels

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                spacing: 8

                Rectangle {
                    width: iMessage.implicitWidth + 18
                    height: iMessage.implicitHeight + 8
                    radius: height / 2
                    color: OstrelTheme.elevatedCard

                    Channel {
                        id: iMessage

                        objectName: "iMessageChip"
                        anchors.centerIn: parent
                        name: "iMessage"
                        isOn: card.alerts.iMessageEnabled
                    }
                }
                Rectangle {
                    width: whatsApp.implicitWidth + 18
                    height: whatsApp.implicitHeight + 8
                    radius: height / 2
                    color: OstrelTheme.elevatedCard

                    Channel {
                        id: whatsApp

                        objectName: "whatsAppChip"
                        anchors.centerIn: parent
                        name: "WhatsApp"
                        isOn: card.alerts.whatsAppEnabled
                    }
                }
            }
        }
        Column {
            width: parent.width
            spacing: 4

            FigureText {
                width: parent.width
                text: "Receive live Mac health summaries & automatic strain alerts on your phone"
                font: OstrelFont.system(13, Font.DemiBold)
                wrapMode: Text.Wrap
                elide: Text.ElideNone
            }
            FigureText {
                width: parent.width
                text: "Connect your Apple iMessage or WhatsApp number to get a 4-line status brief (CPU, Memory Pressure, Thermal/Watts, AI Agents & Idle Servers) on schedule or whenever your Mac is under heavy strain."
                font: OstrelFont.system(11.5)
                color: OstrelTheme.ink2
                wrapMode: Text.Wrap
                elide: Text.ElideNone
                lineHeight: 1.15
            }
        }
        Row {
            spacing: 10

            QuietButton {
                objectName: "sendBrief"
                // Wide enough for both of its texts, so that its neighbour stays where it is.
                width: Math.max(implicitWidth, 152)
                enabled: !card.alerts.isSending
                symbol: "paperplane.fill"
                text: card.pane.sendBriefText
                fontSize: 12
                fontWeight: Font.DemiBold
                leftPadding: 12
                rightPadding: 12
                ink: OstrelTheme.safeGreen
                ground: Qt.alpha(OstrelTheme.safeGreen, 0.16)
                hoverGround: Qt.alpha(OstrelTheme.safeGreen, 0.3)
                onClicked: {
                    answer.restart();
                    card.pane.sendInstantBrief();
                }
            }
            QuietButton {
                objectName: "configureBriefs"
                symbol: "slider.horizontal.3"
                text: "Configure iMessage & WhatsApp…"
                fontSize: 12
                leftPadding: 12
                rightPadding: 12
                ground: OstrelTheme.elevatedCard
                hoverGround: OstrelTheme.subtleBorder
                onClicked: card.pane.configureBriefs()
            }
        }
        FigureText {
            objectName: "briefStatus"
            visible: text !== ""
            width: parent.width
            text: card.alerts.lastStatusMessage
            font: OstrelFont.system(11)
            color: card.alerts.lastStatusIsError ? OstrelTheme.strainRed : OstrelTheme.safeGreen
            wrapMode: Text.Wrap
            elide: Text.ElideNone
        }
    }
}
