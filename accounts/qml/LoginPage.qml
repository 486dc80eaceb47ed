import QtQuick
import QtQuick.Controls
import Vantrel.Ui

// The sign-in page, laid out as a short static table, with the fingerprint prompt over it
// while a check waits for a finger.
Item {
    id: page

    required property QtObject controller

    ScrollingForm {
        anchors.fill: parent
        leadingSpace: 24
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

    // The fingerprint prompt takes the keys while it shows: Escape cancels the check.
    FocusScope {
        anchors.fill: parent
        visible: page.controller.biometricPromptVisible
        onVisibleChanged: if (visible) forceActiveFocus()
        Keys.onEscapePressed: page.controller.cancelBiometricCheck()

        Rectangle {
            anchors.fill: parent
            color: "#80000000"
        }
        MouseArea { anchors.fill: parent } // the page underneath waits

        // A sheet near the bottom, clear of the busy indicator in the middle.
        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 40
            width: Math.min(parent.width - 60, 300)
            height: prompt.implicitHeight + 40
            radius: 14
            color: "white"

            Column {
                id: prompt

                anchors.centerIn: parent
                width: parent.width - 40
                spacing: 12

                Label {
                    width: parent.width
                    horizontalAlignment: Text.AlignHCenter
                    font.bold: true
                    wrapMode: Text.Wrap
                    text: page.controller.biometricPromptReason
                }
                Label {
                    width: parent.width
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.Wrap
                    text: qsTr("Touch the fingerprint reader")
                }
                Button {
                    objectName: "biometricCancelButton"
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: qsTr("Cancel")
                    onClicked: page.controller.cancelBiometricCheck()
                }
            }
        }
    }
}
