import QtQuick
import QtQuick.Controls

// The grey header above a group of table rows.
Rectangle {
    property alias text: title.text

    implicitHeight: 36
    color: "#efeff4"
    Accessible.role: Accessible.Heading
    Accessible.name: text

    Label {
        id: title
        anchors.left: parent.left
        anchors.leftMargin: 16
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 6
        font.pixelSize: 13
        font.capitalization: Font.AllUppercase
        color: "#6d6d72"
    }
}
