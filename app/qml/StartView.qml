import QtQuick
import QtQuick.Controls
import Vantrel.Ui

// The empty start-up screen: the app's name on the brand colour.
Rectangle {
    id: root

    required property QtObject controller

    color: Theme.navigationBarColor
    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("Vantrel PRO")

    Column {
        anchors.centerIn: parent
        spacing: 8

        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("Vantrel PRO")
            color: Theme.titleColor
            font.pixelSize: 34
            font.bold: true
        }
        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("Freelance media, on call")
            color: Theme.titleColor
            font.pixelSize: 17
        }
    }
}
