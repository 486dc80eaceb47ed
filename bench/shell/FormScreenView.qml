import QtQuick

// A stand-in screen with the weight of a real one: a title bar and a list of labelled rows.
Rectangle {
    required property QtObject controller
    property string heading: "Screen"
    color: "white"

    Rectangle {
        id: bar
        width: parent.width
        height: 56
        color: "#1d2b3a"
        Text { anchors.centerIn: parent; text: heading; color: "white"; font.pixelSize: 18 }
    }
    ListView {
        anchors { top: bar.bottom; left: parent.left; right: parent.right; bottom: parent.bottom }
        model: 30
        delegate: Rectangle {
            required property int index
            width: ListView.view.width
            height: 48
            color: index % 2 ? "#f4f6f8" : "white"
            Text { x: 16; anchors.verticalCenter: parent.verticalCenter; text: "Row " + index; font.pixelSize: 15 }
            Rectangle {
                x: parent.width - 140; width: 120; height: 30; radius: 4
                anchors.verticalCenter: parent.verticalCenter
                border.color: "#c0c6cc"
                Text { anchors.centerIn: parent; text: "value " + index; color: "#555" }
            }
        }
    }
}
