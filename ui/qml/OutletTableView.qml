import QtQuick
import QtQuick.Controls
import Vantrel.Ui

// A table drawn for a TableViewOutlet: its model's rows through `delegate` (TableCell gives
// the look), the background view (empty-table text) behind them, separators per the outlet.
// Delegates call `tableView.select(index)` on a tap.
ListView {
    id: list

    property TableViewOutlet outlet
    readonly property bool separators: outlet ? outlet.separatorStyle !== TableViewOutlet.None : true

    function select(row) {
        if (outlet)
            outlet.userSelectedRow(row, 0);
    }

    objectName: outlet ? outlet.objectName : ""
    visible: outlet ? !outlet.hidden : false
    model: outlet ? outlet.model : null
    clip: true
    keyNavigationEnabled: true
    Accessible.role: Accessible.List
    Accessible.name: objectName

    Keys.onReturnPressed: select(currentIndex)
    Keys.onEnterPressed: select(currentIndex)

    Connections {
        target: list.outlet
        function onDataReloaded() { list.forceLayout(); }
    }

    Loader {
        parent: list
        anchors.fill: parent
        z: -1
        active: list.outlet !== null && list.outlet.backgroundView !== null
                && list.outlet.backgroundView instanceof LabelOutlet
        sourceComponent: Item {
            OutletLabel {
                outlet: list.outlet.backgroundView
                anchors.fill: parent
                anchors.leftMargin: 20
                anchors.rightMargin: 20
                verticalAlignment: Text.AlignVCenter
                font: outlet.font
            }
        }
    }
}
