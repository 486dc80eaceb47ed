import QtQuick
import QtQuick.Controls
import Vantrel.Ui

// A small screen drawn the way every screen's view is: outlet components bound to the
// controller handed in by the framework.
Item {
    required property QtObject controller

    Column {
        anchors.fill: parent
        anchors.margins: 20
        spacing: 12

        OutletTextField { outlet: controller.userNameTextField; width: parent.width }
        OutletTextField { outlet: controller.passwordTextField; width: parent.width }
        OutletButton { outlet: controller.loginButton; width: parent.width }
        OutletSwitch { outlet: controller.rememberMeSwitch }
    }
}
