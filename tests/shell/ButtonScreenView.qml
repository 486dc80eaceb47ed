import QtQuick
import Vantrel.Ui

// A front screen for the container's view tests: one button in the middle.
Rectangle {
    required property QtObject controller
    color: "white"

    OutletButton {
        anchors.centerIn: parent
        width: 200
        outlet: controller.actionButton
    }
}
