import QtQuick
import QtQuick.Controls
import Vantrel.Ui

// The forced password change: the form above, confirm and exit below.
Item {
    id: page

    required property QtObject controller

    ScrollingForm {
        anchors.fill: parent
        leadingSpace: 20
        spacing: 14

        Label {
            width: parent.width
            wrapMode: Text.Wrap
            text: qsTr("Your account was set up with a temporary password. Choose a password of your own to continue.")
        }
        EmbeddedView {
            controller: page.controller
            slot: "Table"
            width: parent.width
            height: 220
        }
        OutletButton { outlet: page.controller.confirmButton; width: parent.width }
        OutletButton { outlet: page.controller.exitButton; width: parent.width }
    }
}
