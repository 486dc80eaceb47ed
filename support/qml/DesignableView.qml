import QtQuick

// A view with the layout-time look screens give it: rounded corners, a border and a shadow.
Item {
    id: view

    property real cornerRadius: 0
    property real borderWidth: 0
    property color borderColor: "transparent"
    property real shadowRadius: 3
    property real shadowOpacity: 0
    property size shadowOffset: Qt.size(0, -3)
    property color shadowColor: "black"
    property alias color: face.color
    default property alias content: face.data

    DesignableShadow {
        anchors.fill: face
        cornerRadius: view.cornerRadius
        blur: view.shadowRadius
        strength: view.shadowOpacity
        shadowColor: view.shadowColor
        offset: view.shadowOffset
    }

    Rectangle {
        id: face
        anchors.fill: parent
        radius: view.cornerRadius
        border.width: view.borderWidth
        border.color: view.borderColor
        color: "transparent"
        clip: view.cornerRadius > 0
    }
}
