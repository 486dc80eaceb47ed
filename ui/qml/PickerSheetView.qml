import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Vantrel.Ui

// A picker sheet: a wheel of rows under a bar with "Cancel", the title and "Done".
// A tap on a row, Up and Down, or typing the start of a row select; Return chooses; Escape or
// a tap beside the sheet cancels. The controller holds the selection: the wheel follows it.
FocusScope {
    id: sheetView

    required property PickerSheet controller

    focus: true
    Keys.onEscapePressed: sheetView.controller.cancel()
    Keys.onReturnPressed: sheetView.controller.done()
    Keys.onEnterPressed: sheetView.controller.done()
    Keys.onUpPressed: sheetView.controller.selectedIndex = sheetView.controller.selectedIndex - 1
    Keys.onDownPressed: sheetView.controller.selectedIndex = sheetView.controller.selectedIndex + 1
    Keys.onPressed: (event) => {
        if (event.text.length > 0 && (event.modifiers & ~Qt.ShiftModifier) === 0) {
            sheetView.controller.keyboardSearch(event.text);
            event.accepted = true;
        }
    }

    Rectangle {
        anchors.fill: parent
        color: "#66000000"
        MouseArea {
            anchors.fill: parent
            onClicked: sheetView.controller.cancel()
        }
    }

    Rectangle {
        objectName: "pickerSheet"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: 260
        color: "#f7f7f7"

        MouseArea { anchors.fill: parent } // taps on the sheet stay on it

        ToolBar {
            id: bar
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: parent.top
            height: 44
            background: Rectangle { color: "#e9e9ee" }

            RowLayout {
                anchors.fill: parent
                anchors.leftMargin: 8
                anchors.rightMargin: 8

                ToolButton {
                    objectName: "pickerCancel"
                    text: "Cancel"
                    focusPolicy: Qt.NoFocus
                    palette.buttonText: Theme.accentColor
                    Accessible.name: text
                    onClicked: sheetView.controller.cancel()
                }
                Label {
                    Layout.fillWidth: true
                    horizontalAlignment: Text.AlignHCenter
                    elide: Text.ElideRight
                    text: sheetView.controller.title
                    font.bold: true
                    Accessible.name: text
                }
                ToolButton {
                    objectName: "pickerDone"
                    text: "Done"
                    font.bold: true
                    focusPolicy: Qt.NoFocus
                    palette.buttonText: Theme.accentColor
                    Accessible.name: text
                    onClicked: sheetView.controller.done()
                }
            }
        }

        Tumbler {
            id: wheel
            objectName: "pickerWheel"
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: bar.bottom
            anchors.bottom: parent.bottom
            model: sheetView.controller.rows
            visibleItemCount: 5
            wrap: false
            currentIndex: Math.max(0, sheetView.controller.selectedIndex)
            onCurrentIndexChanged: sheetView.controller.selectedIndex = currentIndex
            Accessible.name: sheetView.controller.title

            delegate: Label {
                required property string modelData
                required property int index
                objectName: "pickerRow_" + index
                text: modelData
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                font.pixelSize: 21
                opacity: 1.0 - Math.abs(Tumbler.displacement) / (wheel.visibleItemCount / 2)

                TapHandler { onTapped: sheetView.controller.selectedIndex = index }
            }
        }

        // A mouse wheel or touchpad turns the wheel one row per notch, however fast the frames
        // come (the wheel's own handling flicks, and how far a flick runs depends on timing).
        // Presses and drags go through to the wheel.
        MouseArea {
            property real pending: 0

            anchors.fill: wheel
            acceptedButtons: Qt.NoButton
            onWheel: (event) => {
                pending += event.angleDelta.y;
                const rows = pending > 0 ? Math.floor(pending / 120) : Math.ceil(pending / 120);
                pending -= rows * 120;
                sheetView.controller.selectedIndex = wheel.currentIndex - rows;
            }
        }
    }
}
