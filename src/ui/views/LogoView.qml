import QtQuick
import Korvantis.Screens

// The application's icon, or a drawn stand-in when the bundle holds none.
Item {
    id: logo

    required property url appIconSource

    objectName: "logo"
    implicitWidth: 30
    implicitHeight: 30
    Accessible.ignored: true

    Image {
        id: icon

        anchors.fill: parent
        source: logo.appIconSource
        sourceSize.width: 60
        sourceSize.height: 60
        smooth: true
        mipmap: true
    }

    Image {
        anchors.centerIn: parent
        width: 28
        height: 28
        visible: icon.status !== Image.Ready
        source: "qrc:/korvantis/logo.svg"
        sourceSize.width: 28
        sourceSize.height: 28

        SymbolView {
            anchors.centerIn: parent
            name: "chart.bar.xaxis.ascending"
            size: 14
            tint: "#FFFFFF"
        }
    }
}
