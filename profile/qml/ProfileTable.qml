import QtCore
import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import Vantrel.Ui

// The contact details: photo, role, names, position, e-mail and telephone numbers, the
// messaging switch. The controller enables the inputs while the hub is editing.
Flickable {
    id: form

    required property QtObject controller

    contentHeight: column.implicitHeight + 32
    clip: true
    boundsBehavior: Flickable.StopAtBounds

    component Caption: Label {
        font.pixelSize: 13
        color: "#6d6d72"
    }
    component Field: OutletTextField {
        width: column.width
        maximumLength: form.controller.maximumTextLength
    }

    FormColumn {
        id: column

        availableWidth: form.width
        y: 16
        spacing: 6

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
            Field { outlet: form.controller.mobileTelephoneNumberTextField; width: column.width - 98 }
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
            Field { outlet: form.controller.workTelephoneNumberTextField; width: column.width - 98 }
        }
    }

    FileDialog {
        id: photoDialog
        objectName: "photoDialog"

        title: qsTr("Choose a photo")
        currentFolder: StandardPaths.writableLocation(StandardPaths.PicturesLocation)
        nameFilters: [qsTr("Pictures (*.jpg *.jpeg *.png *.bmp *.gif *.webp *.heic)"), qsTr("All files (*)")]
        onAccepted: form.controller.photoPicked(selectedFile)
    }

    Connections {
        target: form.controller
        function onPhotoPickerRequested() { photoDialog.open(); }
    }
}
