import QtQuick

// A soft shadow behind a rounded rectangle: rings of fading opacity stand in for a blur of
// `blur` pixels (the software renderer has no blur effect).
Item {
    id: shadow

    property real cornerRadius: 0
    property real blur: 0
    property real strength: 0
    property color shadowColor: "black"
    property size offset: Qt.size(0, -3)

    readonly property int rings: Math.max(1, Math.min(8, Math.ceil(blur)))

    visible: strength > 0

    Repeater {
        model: shadow.rings

        Rectangle {
            required property int index
            readonly property real spread: shadow.blur * (index + 1) / shadow.rings
            x: shadow.offset.width - spread / 2
            y: shadow.offset.height - spread / 2
            width: shadow.width + spread
            height: shadow.height + spread
            radius: shadow.cornerRadius + spread / 2
            color: shadow.shadowColor
            opacity: shadow.strength / shadow.rings
        }
    }
}
