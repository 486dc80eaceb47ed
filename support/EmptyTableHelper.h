#pragma once

#include <QFont>
#include <QString>

namespace ui {
class TableViewController;
}

// The grey text a table screen shows in place of rows when its list is empty.
class EmptyTableHelper {
public:
    // Installs the message as the table's background view and turns the separators off.
    // Does nothing when the screen's view is not loaded. Screens clear the background view
    // themselves when rows arrive.
    static void emptyMessage(const QString &message, ui::TableViewController *on);

    // "TrebuchetMS" at 20, falling back to a font that is installed.
    [[nodiscard]] static QFont messageFont();
};
