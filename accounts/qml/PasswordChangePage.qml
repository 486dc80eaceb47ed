import QtQuick
import QtQuick.Controls
import Vantrel.Ui

// The voluntary password change.
Column {
    id: page

    required property QtObject controller

    padding: 20
    spacing: 14

    OutletTextField { outlet: page.controller.newPasswordTextField; width: page.width - 40 }
    OutletTextField { outlet: page.controller.confirmPasswordTextField; width: page.width - 40 }
    OutletButton { outlet: page.controller.saveButton; width: page.width - 40 }
    OutletButton { outlet: page.controller.cancelButton; width: page.width - 40 }
}
