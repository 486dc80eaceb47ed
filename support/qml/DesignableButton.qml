import QtQuick
import QtQuick.Controls

// A button with rounded corners, a border and a shadow set at layout time.
Button {
    id: button

    property real cornerRadius: 0
    property real borderWidth: 0
    property color borderColor: "transparent"
    property real shadowRadius: 3
    property real shadowOpacity: 0
    property size shadowOffset: Qt.size(0, -3)
    property color shadowColor: "black"
    property color fillColor: "transparent"

    Accessible.name: text

    background: DesignableView {
        implicitWidth: 64
        implicitHeight: 40
        cornerRadius: button.cornerRadius
        borderWidth: button.visualFocus ? Math.max(2, button.borderWidth) : button.borderWidth
        borderColor: button.borderColor
        shadowRadius: button.shadowRadius
        shadowOpacity: button.shadowOpacity
        shadowOffset: button.shadowOffset
        shadowColor: button.shadowColor
        color: button.fillColor
        opacity: button.down ? 0.6 : 1
    }
}
