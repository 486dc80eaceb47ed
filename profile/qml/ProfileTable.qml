import QtQuick
import QtQuick.Controls
import Vantrel.Ui

// The contact details: photo, role, names, position, e-mail and telephone numbers, the
// messaging switch. The controller enables the inputs while the hub is editing.
ScrollingForm {
    id: form

    required property QtObject controller

    spacing: 6

    component Caption: Label {
        font.pixelSize: 13
        color: "#6d6d72"
    }
    component Field: OutletTextField {
        width: form.rowWidth
        maximumLength: form.controller.maximumTextLength
    }

    Row {
        spacing: 16

        OutletImage {
            outlet: form.controller.profilePictureView
            width: 96
            height: 96

            Rectangle {
                anchors.fill: parent
                z: -1
                radius: 8
                color: "#e5e5ea"
            }
        }
        OutletButton {
            anchors.verticalCenter: parent.verticalCenter
            outlet: form.controller.choosePhotoButton
        }
    }

    Caption { text: qsTr("Role") }
    Field { outlet: form.controller.roleTextField }
    Caption { text: qsTr("Name") }
    Field { outlet: form.controller.firstNameTextField }
    Field { outlet: form.controller.lastNameTextField }
    Caption { text: qsTr("Position") }
    Field { outlet: form.controller.positionTextField }
    Caption { text: qsTr("Email") }
    Field { outlet: form.controller.emailAddressTextField }
    Caption { text: qsTr("Mobile") }
    Row {
        spacing: 8
        Field { outlet: form.controller.countryCodeTextField; width: 90 }
        Field { outlet: form.controller.mobileTelephoneNumberTextField; width: form.rowWidth - 98 }
    }
    Row {
        spacing: 10
        OutletSwitch { outlet: form.controller.whatsAppSwitch }
        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Reachable on WhatsApp")
        }
    }
    Caption { text: qsTr("Work") }
    Row {
        spacing: 8
        Field { outlet: form.controller.workCountryCodeTextField; width: 90 }
        Field { outlet: form.controller.workTelephoneNumberTextField; width: form.rowWidth - 98 }
    }
}
