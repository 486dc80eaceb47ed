import QtQuick
import QtQuick.Controls
import Vantrel.Ui

Label {
    property LabelOutlet outlet

    objectName: outlet ? outlet.objectName : ""
    visible: outlet ? !outlet.hidden : false
    opacity: outlet ? outlet.alpha : 1
    text: outlet ? outlet.text : ""
    color: outlet ? outlet.textColor : "black"
    wrapMode: outlet && outlet.numberOfLines !== 1 ? Text.Wrap : Text.NoWrap
    maximumLineCount: outlet && outlet.numberOfLines > 0 ? outlet.numberOfLines : 100000
    elide: outlet && outlet.numberOfLines === 1 ? Text.ElideRight : Text.ElideNone
    horizontalAlignment: outlet ? (outlet.textAlignment & Qt.AlignHorizontal_Mask) || Text.AlignLeft : Text.AlignLeft
    Accessible.name: text
}
