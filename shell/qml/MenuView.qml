import QtQuick
import QtQuick.Controls
import Vantrel.Ui
import Vantrel.Shell

// The side menu: its rows on the dark menu colour, the version line at the bottom.
Rectangle {
    id: menu

    required property MenuController controller

    color: "#1f2a36"

    ListView {
        id: table
        objectName: "menuTableView"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: versionLine.top
        anchors.topMargin: 24
        clip: true
        model: menu.controller.tableView.model

        delegate: ItemDelegate {
            id: row

            required property int index
            required property string title
            required property bool rowEnabled

            objectName: "menuRow" + index
            width: ListView.view.width
            height: 44
            leftPadding: 20
            rightPadding: 20
            enabled: rowEnabled
            Accessible.name: title
            onClicked: menu.controller.tableView.userSelectedRow(index, 0)

            contentItem: Item {
                Label {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: row.index !== menu.controller.messagesRow
                    text: row.title
                    color: "white"
                    opacity: row.enabled ? 1 : 0.4
                    font.pixelSize: 17
                }
                OutletLabel {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: row.index === menu.controller.messagesRow
                    outlet: menu.controller.messageLabel
                    opacity: row.enabled ? 1 : 0.4
                    font.pixelSize: 17
                }
            }
        }
    }

    OutletLabel {
        id: versionLine
        anchors.left: parent.left
        anchors.bottom: parent.bottom
        anchors.margins: 20
        outlet: menu.controller.versionLabel
        font.pixelSize: 13
    }
}
