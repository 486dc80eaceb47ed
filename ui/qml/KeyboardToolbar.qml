import QtQuick
import QtQuick.Controls
import Vantrel.Ui

// The bar shown above the keyboard while a text input with an accessory toolbar has focus.
// Items before the first flexible space sit on the left, items after the last one on the
// right, anything between them in the middle. (Positioners rather than layouts: the bar's
// items are replaced whenever focus moves between fields.)
ToolBar {
    id: bar

    property ToolbarOutlet toolbar

    readonly property var items: toolbar ? toolbar.items : []
    readonly property int firstFlex: items.findIndex(item => item.flexibleSpace)
    readonly property int lastFlex: {
        for (let i = items.length - 1; i >= 0; --i) {
            if (items[i].flexibleSpace)
                return i;
        }
        return -1;
    }

    objectName: toolbar ? toolbar.objectName : "keyboardToolbar"
    visible: toolbar !== null && !toolbar.hidden
    height: toolbar ? toolbar.height : 0
    background: Rectangle { color: "#d1d5db" }

    component Buttons: Row {
        property var model: []
        spacing: 4
        Repeater {
            model: parent.model
            delegate: OutletBarButton {
                required property BarButtonItemOutlet modelData
                outlet: modelData
                tint: Theme.accentColor
                focusPolicy: Qt.NoFocus // keep the keyboard on the text input
            }
        }
    }

    Buttons {
        anchors.left: parent.left
        anchors.leftMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        model: bar.firstFlex < 0 ? bar.items : bar.items.slice(0, bar.firstFlex)
    }
    Buttons {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.verticalCenter: parent.verticalCenter
        model: bar.firstFlex < 0 ? [] : bar.items.slice(bar.firstFlex + 1, bar.lastFlex)
                                            .filter(item => !item.flexibleSpace)
    }
    Buttons {
        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        model: bar.lastFlex < 0 ? [] : bar.items.slice(bar.lastFlex + 1)
    }
}
