import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Vantrel.Ui

// A navigation controller: the bar in the app's colours, then the top screen below it.
Item {
    id: navigation

    required property NavigationController controller
    readonly property ViewController topController: controller.topViewController
    readonly property NavigationItem topItem: topController ? topController.navigationItem : null

    Rectangle {
        id: bar
        objectName: "navigationBar"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        height: navigation.controller.navigationBarHidden ? 0 : 44
        visible: !navigation.controller.navigationBarHidden
        color: Theme.navigationBarColor

        RowLayout {
            anchors.fill: parent
            anchors.leftMargin: 8
            anchors.rightMargin: 8
            spacing: 4

            ToolButton {
                objectName: "backButton"
                visible: navigation.controller.backButtonVisible
                text: "\u2039 " + navigation.backTitle()
                palette.buttonText: Theme.tintColor
                Accessible.name: "Back"
                onClicked: navigation.controller.goBack()
            }
            OutletBarButton {
                outlet: navigation.topItem ? navigation.topItem.leftBarButtonItem : null
                visible: outlet !== null && !outlet.hidden
            }
            Item { Layout.fillWidth: true }
            OutletBarButton {
                outlet: navigation.topItem ? navigation.topItem.rightBarButtonItem : null
                visible: outlet !== null && !outlet.hidden
            }
        }

        Label {
            objectName: "navigationTitle"
            anchors.centerIn: parent
            width: parent.width - 160
            horizontalAlignment: Text.AlignHCenter
            elide: Text.ElideRight
            text: navigation.topItem ? navigation.topItem.title : ""
            color: Theme.titleColor
            font.bold: true
            font.pixelSize: 17
            Accessible.role: Accessible.TitleBar
            Accessible.name: text
        }
    }

    function backTitle() {
        const stack = navigation.controller.viewControllers;
        if (stack.length < 2)
            return "";
        const previous = stack[stack.length - 2].navigationItem.title;
        return previous.length > 0 && previous.length < 14 ? previous : "Back";
    }

    Item {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: bar.bottom
        anchors.bottom: parent.bottom

        Repeater {
            model: navigation.controller.viewControllerModel

            delegate: ControllerView {
                anchors.fill: parent
                visible: controller === navigation.topController
                focus: visible
            }
        }
    }
}
