import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Korvantis.Screens

// The wish for a fan's speed. It is kept and shown; no fan obeys it.
Popup {
    id: popup

    required property OverviewPaneModel overview
    property real manualRPMValue: 0

    objectName: "fanPopup"
    width: 300
    padding: 14
    focus: true
    enter: null
    exit: null
    closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside

    contentItem: ColumnLayout {
        spacing: 10

        FigureText {
            text: "SMC Fan Control"
            font: OstrelFont.system(13, Font.DemiBold)
        }
        FigureText {
            Layout.fillWidth: true
            text: "Override automatic macOS thermal fan curve via AppleSMC (F0Md / F0Tg)."
            wrapMode: Text.Wrap
            font: OstrelFont.system(11)
            color: OstrelTheme.ink3
        }
        FigureText {
            objectName: "targetSpeed"
            text: "Target Speed: " + Math.trunc(popup.manualRPMValue) + " RPM"
            font: OstrelFont.system(11, Font.Medium)
        }
        ValueSlider {
            objectName: "fanSlider"
            Layout.fillWidth: true
            from: popup.overview.thermal.minRPM
            to: popup.overview.thermal.maxRPM
            stepSize: 100
            Accessible.name: "Target speed"
            focus: true
            onMoved: popup.manualRPMValue = value
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: 8

            QuietButton {
                objectName: "fanAuto"
                text: "Auto (System)"
                ground: OstrelTheme.rowHover
                hoverGround: OstrelTheme.subtleBorder
                onClicked: {
                    popup.overview.restoreAutomaticFan();
                    popup.close();
                }
            }
            QuietButton {
                objectName: "fanApply"
                text: "Apply Manual RPM"
                ink: OstrelTheme.heat
                ground: OstrelTheme.rowHover
                hoverGround: OstrelTheme.subtleBorder
                onClicked: {
                    popup.overview.applyManualRPM(popup.manualRPMValue);
                    popup.close();
                }
            }
        }
    }
    background: Rectangle {
        radius: 10
        color: OstrelTheme.elevatedCard
        border.width: 1
        border.color: OstrelTheme.subtleBorder
    }
}
