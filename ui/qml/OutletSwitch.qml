import QtQuick
import QtQuick.Controls
import Vantrel.Ui

Switch {
    id: control

    property SwitchOutlet outlet

    objectName: outlet ? outlet.objectName : ""
    visible: outlet ? !outlet.hidden : false
    enabled: outlet ? outlet.enabled : false
    checked: outlet ? outlet.on : false
    Accessible.name: outlet ? outlet.objectName : ""
    // toggled comes from the user only; the binding above follows the controller.
    onToggled: if (outlet) outlet.userToggled(checked)
}
