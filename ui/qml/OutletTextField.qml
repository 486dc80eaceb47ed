import QtQuick
import QtQuick.Controls
import Vantrel.Ui

// A text field drawn for a TextFieldOutlet; the outlet holds the state, the field reports
// what the user does.
TextField {
    id: field

    property TextFieldOutlet outlet

    objectName: outlet ? outlet.objectName : ""
    visible: outlet ? !outlet.hidden : false
    enabled: outlet ? outlet.enabled : false
    opacity: outlet ? outlet.alpha : 1
    text: outlet ? outlet.text : ""
    placeholderText: outlet ? outlet.placeholder : ""
    color: outlet ? outlet.textColor : "black"
    echoMode: outlet && outlet.secureTextEntry ? TextInput.Password : TextInput.Normal
    inputMethodHints: {
        if (!outlet)
            return Qt.ImhNone;
        switch (outlet.keyboardType) {
        case TextInputOutlet.EmailAddress: return Qt.ImhEmailCharactersOnly | Qt.ImhNoAutoUppercase;
        case TextInputOutlet.PhonePad: return Qt.ImhDialableCharactersOnly;
        case TextInputOutlet.NumberPad: return Qt.ImhDigitsOnly;
        case TextInputOutlet.URL: return Qt.ImhUrlCharactersOnly | Qt.ImhNoAutoUppercase;
        default: return Qt.ImhNone;
        }
    }
    Accessible.name: outlet ? (outlet.placeholder.length > 0 ? outlet.placeholder : outlet.objectName) : ""

    onTextEdited: if (outlet) outlet.userEditedText(text)
    onAccepted: if (outlet) outlet.userPressedReturn()
    onActiveFocusChanged: if (outlet) outlet.userFocusChanged(activeFocus)
    // A field given the keyboard before it was drawn (the first field of a form) takes it now.
    Component.onCompleted: if (outlet && outlet.firstResponder) Qt.callLater(field.forceActiveFocus)

    Connections {
        target: field.outlet
        function onFirstResponderChanged() {
            if (field.outlet.firstResponder && !field.activeFocus)
                field.forceActiveFocus();
            else if (!field.outlet.firstResponder && field.activeFocus)
                field.focus = false;
        }
    }
}
