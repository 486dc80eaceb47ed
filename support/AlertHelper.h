#pragma once

#include <QString>

namespace ui {
class ViewController;
}

// The one-button alert most screens use for feedback.
class AlertHelper {
public:
    // Presents an alert with the title, the message and one "Ok" button that only closes it.
    // Refused (and logged) like any presentation while another alert is on screen.
    static void show(const QString &title, const QString &message, ui::ViewController *on);
};
