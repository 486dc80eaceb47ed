#pragma once

#include "AlertAction.h"

#include <QString>

namespace ui {
class ViewController;
}

// The sign-in screens' alerts: a title, a message and one button whose caption and style
// differ by screen, with an optional handler run after the alert has gone.
class OneButtonAlert {
public:
    static void show(ui::ViewController *on, const QString &title, const QString &message, const QString &button,
                     ui::AlertAction::Style style = ui::AlertAction::Style::Default,
                     ui::AlertAction::Handler handler = {});
};
