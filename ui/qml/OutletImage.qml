import QtQuick
import Vantrel.Ui

// An image drawn for an ImageViewOutlet: the in-memory image when there is one, else the URL.
Item {
    id: imageItem

    property ImageViewOutlet outlet
    property bool fill: true

    objectName: outlet ? outlet.objectName : ""
    visible: outlet ? !outlet.hidden : false
    opacity: outlet ? outlet.alpha : 1
    Accessible.role: Accessible.Graphic
    Accessible.name: objectName

    Rectangle {
        id: mask
        anchors.fill: parent
        radius: imageItem.outlet ? imageItem.outlet.cornerRadius : 0
        color: "transparent"
        clip: true

        Image {
            anchors.fill: parent
            visible: imageItem.outlet ? !imageItem.outlet.hasImage : false
            source: imageItem.outlet && !imageItem.outlet.hasImage ? imageItem.outlet.source : ""
            fillMode: imageItem.fill ? Image.PreserveAspectCrop : Image.PreserveAspectFit
            asynchronous: true
        }
        ImagePainter {
            id: painter
            anchors.fill: parent
            visible: imageItem.outlet ? imageItem.outlet.hasImage : false
            radius: mask.radius
            fill: imageItem.fill
        }
        Binding {
            target: painter
            property: "image"
            value: imageItem.outlet ? imageItem.outlet.image : null
            when: imageItem.outlet !== null
        }
    }
}
