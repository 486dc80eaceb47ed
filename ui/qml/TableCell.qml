import QtQuick
import QtQuick.Controls

// The look of a table row: a title, an optional detail line and disclosure mark, a thin
// separator. Rows with their own content put it in the cell as children.
ItemDelegate {
    id: cell

    property string title
    property string detail
    property bool disclosure: false
    property bool separator: true

    implicitHeight: Math.max(44, column.implicitHeight + 16)
    width: ListView.view ? ListView.view.width : implicitWidth
    Accessible.name: title

    contentItem: Item {
        Column {
            id: column
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.rightMargin: cell.disclosure ? 20 : 0
            anchors.verticalCenter: parent.verticalCenter
            spacing: 2

            Label {
                width: parent.width
                text: cell.title
                visible: text.length > 0
                font.pixelSize: 17
                elide: Text.ElideRight
            }
            Label {
                width: parent.width
                text: cell.detail
                visible: text.length > 0
                font.pixelSize: 13
                color: "#8e8e93"
                wrapMode: Text.Wrap
                maximumLineCount: 3
                elide: Text.ElideRight
            }
        }
        Label {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            visible: cell.disclosure
            text: "\u203a"
            font.pixelSize: 22
            color: "#c7c7cc"
        }
    }

    Rectangle {
        anchors.left: parent.left
        anchors.leftMargin: 16
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: 1
        color: "#c8c7cc"
        visible: cell.separator
    }
}
