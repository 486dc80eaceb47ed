import QtQuick
import QtQuick.Controls

// A label with rounded corners, a border and a shadow set at layout time.
Label {
    id: label

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
        cornerRadius: label.cornerRadius
        borderWidth: label.borderWidth
        borderColor: label.borderColor
        shadowRadius: label.shadowRadius
        shadowOpacity: label.shadowOpacity
        shadowOffset: label.shadowOffset
        shadowColor: label.shadowColor
        color: label.fillColor
    }
}
