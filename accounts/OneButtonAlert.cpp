#include "OneButtonAlert.h"

#include "AlertController.h"

void OneButtonAlert::show(ui::ViewController *on, const QString &title, const QString &message, const QString &button,
                          ui::AlertAction::Style style, ui::AlertAction::Handler handler)
{
    if (!on)
        return;
    auto *alert = ui::AlertController::alertControllerWithTitle(title, message, ui::AlertController::Style::Alert);
    alert->addAction(ui::AlertAction::actionWithTitle(button, style, std::move(handler)));
    on->presentViewController(alert, true);
    // A refused alert (another one is on screen) is not left behind.
    if (!alert->parent())
        delete alert;
}
