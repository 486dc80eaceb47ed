import QtQuick
import QtQuick.Controls
import Vantrel.Ui

// A navigation-bar or toolbar button drawn for a BarButtonItemOutlet.
ToolButton {
    property BarButtonItemOutlet outlet
    property color tint: Theme.tintColor

    objectName: outlet ? outlet.objectName : ""
    visible: outlet ? !outlet.hidden : false
    enabled: outlet ? outlet.enabled : false
    text: outlet ? outlet.title : ""
    icon.source: outlet ? outlet.image : ""
    font.bold: outlet ? outlet.style === BarButtonItemOutlet.Done : false
    palette.buttonText: tint
    icon.color: tint
    display: outlet && outlet.title.length === 0 ? AbstractButton.IconOnly : AbstractButton.TextBesideIcon
    Accessible.name: outlet ? (outlet.title.length > 0 ? outlet.title : outlet.objectName) : ""
    onClicked: if (outlet) outlet.click()
}
