import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Vantrel.Ui

// An alert over a dimmed screen, centred (or an action sheet at the bottom). Return chooses the
// preferred action (drawn bold, never a destructive one) or the button Tab moved to; Escape,
// and for a sheet a tap beside it, chooses the action that backs out.
FocusScope {
    id: alertView

    required property AlertController controller
    readonly property bool sheet: controller.preferredStyle === AlertController.ActionSheet

    focus: true
    Keys.onEscapePressed: (event) => { event.accepted = alertView.controller.cancel(); }
    Keys.onReturnPressed: (event) => { event.accepted = alertView.controller.choosePreferred(); }
    Keys.onEnterPressed: (event) => { event.accepted = alertView.controller.choosePreferred(); }

    Rectangle {
        anchors.fill: parent
        color: "#66000000"
        MouseArea { // the screen below takes no taps
            anchors.fill: parent
            onClicked: if (alertView.sheet) alertView.controller.cancel()
        }
    }

    Rectangle {
        id: box
        objectName: "alertBox"
        x: (parent.width - width) / 2
        y: alertView.sheet ? parent.height - height - 20 : (parent.height - height) / 2
        width: alertView.sheet ? parent.width - 20 : Math.min(parent.width - 60, 300)
        height: column.implicitHeight
        radius: 14
        color: "#f2f2f2"

        ColumnLayout {
            id: column
            width: parent.width
            spacing: 0

            Label {
                objectName: "alertTitle"
                Layout.fillWidth: true
                Layout.topMargin: 18
                Layout.leftMargin: 16
                Layout.rightMargin: 16
                visible: text.length > 0
                text: alertView.controller.title
                font.bold: true
                font.pixelSize: 17
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
                Accessible.name: text
            }
            Label {
                objectName: "alertMessage"
                Layout.fillWidth: true
                Layout.topMargin: 4
                Layout.leftMargin: 16
                Layout.rightMargin: 16
                visible: text.length > 0
                text: alertView.controller.message
                font.pixelSize: 13
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
                Accessible.name: text
            }
            Repeater {
                model: alertView.controller.textFields
                delegate: OutletTextField {
                    required property TextFieldOutlet modelData
                    outlet: modelData
                    Layout.fillWidth: true
                    Layout.leftMargin: 16
                    Layout.rightMargin: 16
                    Layout.topMargin: 8
                }
            }
            Item { Layout.preferredHeight: 16 }

            GridLayout {
                Layout.fillWidth: true
                columns: !alertView.sheet && alertView.controller.orderedActions.length === 2 ? 2 : 1
                columnSpacing: 0
                rowSpacing: 0

                Repeater {
                    model: alertView.controller.orderedActions

                    delegate: Button {
                        id: actionButton
                        required property AlertAction modelData
                        objectName: "alertAction_" + modelData.title
                        Layout.fillWidth: true
                        Layout.preferredHeight: 44
                        flat: true
                        // Return goes to the preferred button until Tab moves on.
                        focus: modelData === alertView.controller.preferredAction
                        enabled: modelData.enabled
                        text: modelData.title
                        font.bold: modelData === alertView.controller.preferredAction
                        // A flat button draws its title in the window text colour.
                        palette.windowText: modelData.style === AlertAction.Destructive ? "#ff3b30" : Theme.accentColor
                        Accessible.name: modelData.title
                        onClicked: alertView.controller.choose(modelData)
                        Keys.onReturnPressed: alertView.controller.choose(modelData)
                        Keys.onEnterPressed: alertView.controller.choose(modelData)
                    }
                }
            }
        }
    }
}
