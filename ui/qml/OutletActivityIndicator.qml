import QtQuick
import QtQuick.Controls
import Vantrel.Ui

// A busy indicator placed by its outlet's frame: a rounded square with a spinning mark.
Rectangle {
    id: square

    property ActivityIndicatorViewOutlet outlet

    objectName: outlet ? outlet.objectName : ""
    x: outlet ? outlet.frame.x : 0
    y: outlet ? outlet.frame.y : 0
    width: outlet ? outlet.frame.width : 0
    height: outlet ? outlet.frame.height : 0
    radius: outlet ? outlet.cornerRadius : 0
    color: outlet ? outlet.backgroundColor : "transparent"
    visible: outlet ? !outlet.hidden : false
    Accessible.role: Accessible.Indicator
    Accessible.name: "Loading"

    BusyIndicator {
        anchors.centerIn: parent
        width: square.outlet ? square.outlet.indicatorSize : 20
        height: width
        running: square.outlet ? square.outlet.animating : false
        palette.dark: square.outlet ? square.outlet.color : "white"
    }
    MouseArea { anchors.fill: parent } // taps stop at the indicator
}
