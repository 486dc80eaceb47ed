import QtQuick
import QtQuick.Controls
import Vantrel.Ui

// The sign-in page, laid out as a short static table.
Flickable {
    id: page

    required property QtObject controller

    contentHeight: column.implicitHeight + 48
    clip: true

    Column {
        id: column

        x: 20
        y: 24
        width: page.width - 40
        spacing: 14

        Label {
            width: parent.width
            text: qsTr("Vantrel PRO")
            font.pixelSize: 30
            font.bold: true
            color: Theme.navigationBarColor
            horizontalAlignment: Text.AlignHCenter
        }
        OutletTextField { outlet: page.controller.userNameTextField; width: parent.width }
        OutletTextField { outlet: page.controller.passwordTextField; width: parent.width }
        Row {
            spacing: 10
            OutletSwitch { outlet: page.controller.rememberMeSwitch }
            Label {
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Remember me")
            }
        }
        OutletButton {
            outlet: page.controller.loginButton
            width: parent.width
            palette.buttonText: "white"
            background: Rectangle {
                implicitHeight: 44
                radius: page.controller.loginButton.cornerRadius
                color: Theme.navigationBarColor
                opacity: parent.down ? 0.7 : 1
            }
        }
        OutletButton { outlet: page.controller.loginWithBiometricsButton; width: parent.width }
        OutletButton { outlet: page.controller.forgotPasswordButton; width: parent.width }
        OutletButton { outlet: page.controller.registerButton; width: parent.width }
        OutletButton { outlet: page.controller.informationButton; width: parent.width }
        OutletLabel {
            outlet: page.controller.versionLabel
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            color: "grey"
        }
    }
}
