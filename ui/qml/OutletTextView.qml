import QtQuick
import QtQuick.Controls
import Vantrel.Ui

// A multi-line text area drawn for a TextViewOutlet, scrolling when the text is long.
ScrollView {
    id: scroll

    property TextViewOutlet outlet
    readonly property alias textArea: area

    objectName: outlet ? outlet.objectName + "Scroll" : ""
    visible: outlet ? !outlet.hidden : false
    opacity: outlet ? outlet.alpha : 1

    TextArea {
        id: area
        objectName: scroll.outlet ? scroll.outlet.objectName : ""
        enabled: scroll.outlet ? scroll.outlet.enabled : false
        readOnly: scroll.outlet ? !scroll.outlet.editable : true
        wrapMode: TextEdit.Wrap
        text: scroll.outlet ? scroll.outlet.text : ""
        color: scroll.outlet ? scroll.outlet.textColor : "black"
        Accessible.name: scroll.outlet ? scroll.outlet.objectName : ""

        onTextChanged: if (scroll.outlet && activeFocus) scroll.outlet.userEditedText(text)
        onActiveFocusChanged: if (scroll.outlet) scroll.outlet.userFocusChanged(activeFocus)
        Keys.onTabPressed: (event) => { nextItemInFocusChain().forceActiveFocus(); event.accepted = true; }

        Connections {
            target: scroll.outlet
            function onFirstResponderChanged() {
                if (scroll.outlet.firstResponder && !area.activeFocus)
                    area.forceActiveFocus();
                else if (!scroll.outlet.firstResponder && area.activeFocus)
                    area.focus = false;
            }
        }
    }
}
