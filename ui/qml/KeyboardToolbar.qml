import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Vantrel.Ui

// The bar shown above the keyboard while a text input with an accessory toolbar has focus.
ToolBar {
    id: bar

    property ToolbarOutlet toolbar

    objectName: toolbar ? toolbar.objectName : "keyboardToolbar"
    visible: toolbar !== null && !toolbar.hidden
    height: toolbar ? toolbar.height : 0
    background: Rectangle { color: "#d1d5db" }

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 8
        anchors.rightMargin: 8

        Repeater {
            model: bar.toolbar ? bar.toolbar.items : []

            delegate: Loader {
                required property BarButtonItemOutlet modelData
                Layout.fillWidth: modelData.flexibleSpace
                sourceComponent: modelData.flexibleSpace ? space : button

                Component {
                    id: space
                    Item {}
                }
                Component {
                    id: button
                    OutletBarButton {
                        outlet: modelData
                        tint: Theme.accentColor
                        focusPolicy: Qt.NoFocus // keep the keyboard on the text input
                    }
                }
            }
        }
    }
}
