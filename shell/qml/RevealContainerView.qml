import QtQuick
import Vantrel.Ui
import Vantrel.Shell

// The reveal container: the rear (menu) and right screens behind, the front screen over
// them at the controller's frontLocation with its shadow. RevealView turns the drags and
// taps on them into the controller's pan and tap.
RevealView {
    id: reveal

    clip: controller ? controller.settings.clipsViewsToBounds : false
    rearItem: rearLayer
    frontItem: frontLayer
    rightItem: rightLayer

    // Escape slides a revealed side (the menu) away again.
    focus: true
    Keys.onEscapePressed: (event) => {
        const position = reveal.controller.frontViewPosition;
        if (position > 3)
            reveal.controller.revealToggleAnimated(true);
        else if (position < 3)
            reveal.controller.rightRevealToggleAnimated(true);
        event.accepted = position !== 3;
    }

    onWidthChanged: syncSize()
    onHeightChanged: syncSize()
    Component.onCompleted: syncSize()

    function syncSize() {
        if (reveal.controller)
            reveal.controller.view.setSize(reveal.width, reveal.height);
    }

    // A layer's screen, and the screen it replaces while the replacement fades.
    component LayerScreens: Item {
        id: screens
        required property RevealLayer revealLayer

        Repeater {
            model: screens.revealLayer.outgoingController ? [screens.revealLayer.outgoingController] : []
            delegate: ControllerView {
                required property ViewController modelData
                controller: modelData
                anchors.fill: parent
                opacity: screens.revealLayer.outgoingOpacity
                enabled: false
            }
        }
        Repeater {
            model: screens.revealLayer.controller ? [screens.revealLayer.controller] : []
            delegate: ControllerView {
                required property ViewController modelData
                controller: modelData
                anchors.fill: parent
                opacity: screens.revealLayer.opacity
                focus: true
            }
        }
    }

    Rectangle {
        anchors.fill: parent
        color: "black"
    }

    LayerScreens {
        id: rearLayer
        objectName: "revealRearLayer"
        revealLayer: reveal.controller.rearLayer
        x: reveal.controller.rearLayerX
        width: reveal.controller.rearLayerWidth
        height: reveal.height
        visible: revealLayer.deployed
        enabled: reveal.controller.userInteractionEnabled
    }

    LayerScreens {
        id: rightLayer
        objectName: "revealRightLayer"
        revealLayer: reveal.controller.rightLayer
        x: reveal.controller.rightLayerX
        width: reveal.controller.rightLayerWidth
        height: reveal.height
        visible: revealLayer.deployed
        enabled: reveal.controller.userInteractionEnabled
    }

    // The front's shadow: a few soft rectangles spread over the shadow radius.
    Repeater {
        model: 3
        delegate: Rectangle {
            required property int index
            readonly property real spread: reveal.controller.settings.frontViewShadowRadius * (index + 1) / 3
            x: frontLayer.x + reveal.controller.settings.frontViewShadowOffset.width - spread
            y: reveal.controller.settings.frontViewShadowOffset.height - spread
            width: frontLayer.width + 2 * spread
            height: frontLayer.height + 2 * spread
            radius: spread
            color: reveal.controller.settings.frontViewShadowColor
            opacity: reveal.controller.settings.frontViewShadowOpacity * 0.15
            visible: frontLayer.visible && frontLayer.x !== 0
        }
    }

    LayerScreens {
        id: frontLayer
        objectName: "revealFrontLayer"
        revealLayer: reveal.controller.frontLayer
        x: reveal.controller.frontLocation
        width: reveal.width
        height: reveal.height
        visible: revealLayer.deployed
        enabled: reveal.controller.userInteractionEnabled
        focus: true
    }
}
