import QtQuick
import QtQuick.Controls
import Vantrel.Ui

// The application window: the root screen, each screen presented over it (full screen),
// and the keyboard toolbar of the focused text input.
ApplicationWindow {
    id: appWindow

    required property UiWindow uiWindow

    width: uiWindow.defaultSize.width
    height: uiWindow.defaultSize.height
    minimumWidth: 320
    minimumHeight: 480
    visible: true
    title: "Vantrel PRO"
    color: Theme.backgroundColor

    Item {
        id: screens
        anchors.fill: parent
        anchors.bottomMargin: keyboardToolbar.visible ? keyboardToolbar.height : 0

        Repeater {
            model: appWindow.uiWindow.presentationModel

            delegate: ControllerView {
                required property int index
                anchors.fill: parent
                z: index
                // A full-screen presentation above this one hides it; alerts do not.
                readonly property bool covered: {
                    const stack = appWindow.uiWindow.presentationStack;
                    for (let i = index + 1; i < stack.length; ++i) {
                        if (stack[i].modalPresentationStyle !== ViewController.OverFullScreen)
                            return true;
                    }
                    return false;
                }
                visible: !covered
                enabled: index === appWindow.uiWindow.presentationStack.length - 1
                focus: enabled
                // The screen on top takes the keys (an alert or a picker from whichever field
                // had them), once the screens under it have let them go.
                onEnabledChanged: if (enabled) Qt.callLater(takeKeys)
                Component.onCompleted: if (enabled) Qt.callLater(takeKeys)
                function takeKeys() {
                    if (enabled && visible)
                        forceActiveFocus();
                }
            }
        }
    }

    KeyboardToolbar {
        id: keyboardToolbar
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        toolbar: FirstResponder.current ? FirstResponder.current.inputAccessoryView : null
    }
}
