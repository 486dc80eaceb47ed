import QtQuick
import Vantrel.Ui

// A busy indicator placed by its outlet's frame: a rounded square with a ring of spokes
// turning in steps, drawn with plain rectangles so every renderer shows it, and the caption
// (what the wait is for) in a pill under it.
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
    Accessible.name: outlet && outlet.caption.length > 0 ? outlet.caption : "Loading"

    Item {
        id: spokes
        readonly property real size: square.outlet ? square.outlet.indicatorSize : 20
        readonly property int count: 12
        property int step: 0
        anchors.centerIn: parent
        width: size
        height: size

        Repeater {
            model: spokes.count

            Rectangle {
                required property int index
                x: (spokes.size - width) / 2
                y: 0
                width: Math.max(2, spokes.size / 12)
                height: spokes.size * 0.28
                radius: width / 2
                color: square.outlet ? square.outlet.color : "white"
                opacity: 0.25 + 0.75 * (((index - spokes.step + spokes.count) % spokes.count) / (spokes.count - 1))
                transform: Rotation {
                    origin.x: width / 2
                    origin.y: spokes.size / 2
                    angle: index * 360 / spokes.count
                }
            }
        }

        Timer {
            interval: 80
            repeat: true
            running: square.visible && square.outlet !== null && square.outlet.animating
            onTriggered: spokes.step = (spokes.step + 1) % spokes.count
        }
    }

    MouseArea { anchors.fill: parent } // taps stop at the indicator

    Rectangle {
        anchors.top: parent.bottom
        anchors.topMargin: 8
        anchors.horizontalCenter: parent.horizontalCenter
        width: captionText.implicitWidth + 24
        height: captionText.implicitHeight + 10
        radius: height / 2
        color: square.color
        visible: captionText.text.length > 0

        Text {
            id: captionText
            objectName: "activityCaption"
            anchors.centerIn: parent
            text: square.outlet ? square.outlet.caption : ""
            color: square.outlet ? square.outlet.color : "white"
            font.pixelSize: 14
        }
    }
}
