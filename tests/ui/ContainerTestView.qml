import QtQuick
import Vantrel.Ui

// A screen with a slot where its embed segue's child is drawn.
Item {
    id: container
    required property QtObject controller

    EmbeddedView {
        objectName: "contactDetailsSlot"
        anchors.fill: parent
        anchors.topMargin: 100
        controller: container.controller
        slot: "contactDetails"
    }
}
