import QtQuick
import QtQuick.Controls
import Vantrel.Ui

// The voluntary password change.
Item {
    id: page

    required property QtObject controller

    ScrollingForm {
        anchors.fill: parent
        leadingSpace: 20
        spacing: 14

        OutletTextField { outlet: page.controller.newPasswordTextField; width: parent.width }
        OutletTextField { outlet: page.controller.confirmPasswordTextField; width: parent.width }
        OutletButton { outlet: page.controller.saveButton; width: parent.width }
        OutletButton { outlet: page.controller.cancelButton; width: parent.width }
    }
}
