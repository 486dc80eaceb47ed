import QtQuick

// The column a form's rows stand in: 20 points in from the edges on a phone; on a wider
// window it keeps a comfortable width and stays centred instead of stretching edge to edge.
Column {
    // The width the form may use, usually its page's.
    required property real availableWidth

    width: Math.min(availableWidth - 40, 560)
    x: (availableWidth - width) / 2
}
