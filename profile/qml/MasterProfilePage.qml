import QtQuick
import QtQuick.Controls
import Vantrel.Ui

// The profile hub: the contact details above, save and the account's buttons below. The menu
// and edit buttons sit in the navigation bar.
Item {
    id: page

    required property QtObject controller

    EmbeddedView {
        id: table

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: actions.top
        controller: page.controller
        slot: "Table"
    }

    Rectangle {
        anchors.fill: actions
        color: "#f2f2f7"
    }

    Column {
        id: actions

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        topPadding: 8
        bottomPadding: 12
        spacing: 4

        OutletBarButton {
            outlet: page.controller.saveButton
            anchors.horizontalCenter: parent.horizontalCenter
            tint: Theme.accentColor
        }
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 24

            OutletButton { outlet: page.controller.changePasswordButton }
            OutletButton { outlet: page.controller.deleteProfileButton }
        }
    }
}
