import QtQuick
import Vantrel.Ui

// Draws one screen: loads the controller's own QML view with the controller handed in as
// `controller`, reports the size to the controller's view, and draws the views added to it
// at run time (busy indicators) on top. While the controller's view refuses interaction the
// screen's own items take no input.
FocusScope {
    id: host

    required property ViewController controller

    clip: true
    onWidthChanged: syncSize()
    onHeightChanged: syncSize()
    Component.onCompleted: {
        syncSize();
        loader.load();
    }

    function syncSize() {
        if (host.controller)
            host.controller.view.setSize(host.width, host.height);
    }

    Rectangle {
        anchors.fill: parent
        color: host.controller ? host.controller.view.backgroundColor : "white"
    }

    Loader {
        id: loader
        anchors.fill: parent
        focus: true
        enabled: !host.controller || host.controller.view.userInteractionEnabled

        function load() {
            if (!host.controller || host.controller.viewUrl.toString() === "")
                return;
            setSource(host.controller.viewUrl, { "controller": host.controller });
        }

        onStatusChanged: {
            if (status === Loader.Error)
                console.warn("Cannot draw", host.controller, "from", host.controller.viewUrl);
        }
    }

    Connections {
        target: host.controller
        function onViewUrlChanged() { loader.load(); }
    }

    Repeater {
        model: host.controller ? host.controller.view.subviews : []

        delegate: Loader {
            required property QtObject modelData
            sourceComponent: modelData instanceof ActivityIndicatorViewOutlet ? indicator : null

            Component {
                id: indicator
                OutletActivityIndicator { outlet: modelData }
            }
        }
    }
}
