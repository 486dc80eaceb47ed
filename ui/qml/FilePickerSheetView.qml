import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Vantrel.Ui

// A file picker sheet sized for a phone: the bar with "Cancel" and the title, the folder with
// a way up and shortcuts, then one column of entries (a thumbnail or a folder mark, the name,
// and size and date on a line below). A tap on an entry opens the folder or picks the file.
// Keys: Up and Down move, Return opens or picks, Backspace goes up, Escape cancels.
FocusScope {
    id: sheetView

    required property FilePickerSheet controller
    readonly property FolderListing listing: controller.listing

    focus: true
    Keys.onEscapePressed: sheetView.controller.cancel()
    Keys.onReturnPressed: sheetView.controller.activate(entries.currentIndex)
    Keys.onEnterPressed: sheetView.controller.activate(entries.currentIndex)
    Keys.onPressed: (event) => {
        if (event.key === Qt.Key_Backspace) {
            sheetView.controller.goUp();
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

    component Shortcut: Button {
        property string folder
        visible: folder.length > 0
        flat: true
        focusPolicy: Qt.NoFocus
        font.pixelSize: 14
        palette.buttonText: Theme.accentColor
        Accessible.name: text
        onClicked: sheetView.controller.openFolder(folder)
    }

    Rectangle {
        objectName: "filePickerSheet"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: Math.min(parent.height - 40, 600)
        radius: 12
        color: "#f7f7f7"

        MouseArea { anchors.fill: parent } // taps on the sheet stay on it

        ColumnLayout {
            anchors.fill: parent
            spacing: 0

            ToolBar {
                Layout.fillWidth: true
                Layout.preferredHeight: 44
                background: Rectangle { color: "#e9e9ee"; radius: 12 }

                ToolButton {
                    objectName: "filePickerCancel"
                    anchors.left: parent.left
                    anchors.leftMargin: 8
                    anchors.verticalCenter: parent.verticalCenter
                    text: "Cancel"
                    focusPolicy: Qt.NoFocus
                    palette.buttonText: Theme.accentColor
                    Accessible.name: text
                    onClicked: sheetView.controller.cancel()
                }
                Label {
                    anchors.centerIn: parent
                    width: parent.width - 200
                    horizontalAlignment: Text.AlignHCenter
                    elide: Text.ElideRight
                    text: sheetView.controller.title
                    font.bold: true
                    Accessible.name: text
                }
            }

            RowLayout {
                Layout.fillWidth: true
                Layout.leftMargin: 8
                Layout.rightMargin: 8
                spacing: 4

                ToolButton {
                    objectName: "filePickerUp"
                    text: "\u2039"
                    font.pixelSize: 22
                    enabled: sheetView.listing.canGoUp
                    focusPolicy: Qt.NoFocus
                    Accessible.name: "Up"
                    onClicked: sheetView.controller.goUp()
                }
                Label {
                    objectName: "filePickerFolder"
                    Layout.fillWidth: true
                    elide: Text.ElideMiddle
                    text: sheetView.listing.folderName
                    font.bold: true
                }
                Shortcut {
                    objectName: "filePickerPictures"
                    text: "Pictures"
                    folder: sheetView.controller.picturesFolder
                }
                Shortcut {
                    objectName: "filePickerHome"
                    text: "Home"
                    folder: sheetView.controller.homeFolder
                }
            }

            ListView {
                id: entries
                objectName: "filePickerEntries"
                Layout.fillWidth: true
                Layout.fillHeight: true
                clip: true
                focus: true
                model: sheetView.listing
                keyNavigationEnabled: true
                boundsBehavior: Flickable.StopAtBounds
                ScrollBar.vertical: ScrollBar {}

                delegate: ItemDelegate {
                    id: entry
                    required property int index
                    required property string name
                    required property url url
                    required property bool isFolder
                    required property string detail

                    objectName: "fileEntry_" + name
                    width: ListView.view.width
                    height: 60
                    highlighted: ListView.isCurrentItem
                    focusPolicy: Qt.NoFocus
                    Accessible.name: name
                    onClicked: sheetView.controller.activate(index)

                    contentItem: Item {
                        Item {
                            id: mark
                            width: 44
                            height: 44
                            anchors.verticalCenter: parent.verticalCenter

                            Image {
                                anchors.fill: parent
                                visible: !entry.isFolder
                                source: entry.isFolder ? "" : entry.url
                                sourceSize: Qt.size(88, 88)
                                fillMode: Image.PreserveAspectCrop
                                asynchronous: true
                            }
                            // A folder: a tab over a body.
                            Rectangle {
                                visible: entry.isFolder
                                x: 4; y: 8; width: 16; height: 8; radius: 2
                                color: "#5aa9e6"
                            }
                            Rectangle {
                                visible: entry.isFolder
                                x: 4; y: 12; width: 36; height: 24; radius: 3
                                color: "#7cc0f2"
                            }
                        }
                        Column {
                            anchors.left: mark.right
                            anchors.leftMargin: 12
                            anchors.right: parent.right
                            anchors.verticalCenter: parent.verticalCenter
                            spacing: 2

                            Label {
                                width: parent.width
                                elide: Text.ElideMiddle
                                text: entry.name
                                font.pixelSize: 16
                            }
                            Label {
                                width: parent.width
                                elide: Text.ElideRight
                                text: entry.detail
                                font.pixelSize: 12
                                color: "#6d6d72"
                            }
                        }
                    }
                }

                Label {
                    anchors.centerIn: parent
                    width: parent.width - 40
                    visible: entries.count === 0
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.Wrap
                    color: "#6d6d72"
                    text: sheetView.listing.error.length > 0 ? sheetView.listing.error : sheetView.controller.emptyText
                }
            }
        }
    }
}
