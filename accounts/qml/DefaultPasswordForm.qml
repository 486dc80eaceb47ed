import QtQuick
import QtQuick.Controls
import Vantrel.Ui

// The new password twice, the live warning and the info button.
Column {
    id: form

    required property QtObject controller

    spacing: 10

    OutletTextField { outlet: form.controller.passwordTextField; width: form.width }
    OutletTextField { outlet: form.controller.confirmPasswordTextField; width: form.width }
    Row {
        width: form.width
        spacing: 8
        OutletLabel {
            outlet: form.controller.passwordErrorLabel
            width: parent.width - info.width - 8
            anchors.verticalCenter: parent.verticalCenter
        }
        OutletButton { id: info; outlet: form.controller.passwordInfoButton }
    }
}
