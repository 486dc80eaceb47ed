import QtQuick
import QtQuick.Controls

// A form that scrolls: its rows stand in a centred FormColumn. Whatever has keyboard focus in
// it is kept in sight, above the keyboard toolbar too: the window makes the screens shorter
// while the toolbar shows, and the form scrolls the focused row back into view.
Flickable {
    id: form

    // The rows, in order.
    default property alias rows: column.data
    property alias spacing: column.spacing
    // The width of the rows.
    readonly property alias rowWidth: column.width
    // Space above the first row.
    property real leadingSpace: 16
    // Space kept between the focused row and the form's edges when it is scrolled into view.
    readonly property real focusMargin: 12

    contentWidth: width
    contentHeight: column.y + column.implicitHeight + 32
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}

    FormColumn {
        id: column
        availableWidth: form.width
        y: form.leadingSpace
    }

    onHeightChanged: Qt.callLater(revealFocused)
    Connections {
        target: form.Window.window
        function onActiveFocusItemChanged() { Qt.callLater(form.revealFocused) }
    }

    function holds(item) {
        for (let p = item; p; p = p.parent) {
            if (p === form.contentItem)
                return true;
        }
        return false;
    }

    // Scrolls just enough to show the focused row with a margin around it.
    function revealFocused() {
        const item = form.Window.activeFocusItem;
        if (!item || !holds(item) || form.height <= 0)
            return;
        const top = item.mapToItem(form.contentItem, 0, 0).y - focusMargin;
        const bottom = top + item.height + 2 * focusMargin;
        const lowest = Math.max(0, form.contentHeight - form.height);
        if (bottom > form.contentY + form.height)
            form.contentY = Math.min(lowest, bottom - form.height);
        if (top < form.contentY)
            form.contentY = Math.max(0, top);
    }
}
