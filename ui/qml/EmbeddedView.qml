import QtQuick
import Vantrel.Ui

// The place in a screen's view where the child screen of an embed segue is drawn.
// `slot` is the segue's identifier.
Item {
    id: embedded

    property ViewController controller
    property string slot

    // Reading childViewControllers makes the binding follow the container's children.
    readonly property ViewController child: controller && controller.childViewControllers.length >= 0
                                           ? controller.childViewControllerForSlot(slot) : null

    Loader {
        anchors.fill: parent
        active: embedded.child !== null
        focus: true
        sourceComponent: ControllerView {
            controller: embedded.child
        }
    }
}
