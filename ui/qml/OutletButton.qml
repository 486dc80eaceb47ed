import QtQuick
import QtQuick.Controls
import Vantrel.Ui

// A button drawn for a ButtonOutlet. Tapping, Space and Return all click it.
Button {
    id: button

    property ButtonOutlet outlet

    objectName: outlet ? outlet.objectName : ""
    visible: outlet ? !outlet.hidden : false
    enabled: outlet ? outlet.enabled : false
    opacity: outlet ? outlet.alpha : 1
    text: outlet ? outlet.title : ""
    icon.source: outlet ? outlet.image : ""
    palette.buttonText: outlet && outlet.titleColor.a > 0 ? outlet.titleColor : Theme.accentColor
    Accessible.name: outlet ? (outlet.title.length > 0 ? outlet.title : outlet.objectName) : ""

    contentItem: Text {
        text: button.text
        font: button.font
        color: button.palette.buttonText
        opacity: button.enabled ? 1 : 0.4
        horizontalAlignment: button.outlet ? (button.outlet.contentHorizontalAlignment & Qt.AlignHorizontal_Mask)
                                             || Text.AlignHCenter : Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
    background: Rectangle {
        implicitWidth: 64
        implicitHeight: 40
        radius: button.outlet ? button.outlet.cornerRadius : 0
        color: button.outlet && button.outlet.backgroundColor.a > 0 ? button.outlet.backgroundColor : "transparent"
        border.width: button.visualFocus ? 2 : 0
        border.color: Theme.accentColor
        opacity: button.down ? 0.6 : 1
    }

    onClicked: if (outlet) outlet.click()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
}
