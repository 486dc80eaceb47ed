#include "AlertHelper.h"

#include "AlertController.h"
#include "SupportLogging.h"

void AlertHelper::show(const QString &title, const QString &message, ui::ViewController *on)
{
    if (!on) {
        qCWarning(lcSupport) << "An alert was shown on no screen:" << title;
        return;
    }
    auto *alert = ui::AlertController::alertControllerWithTitle(title, message, ui::AlertController::Style::Alert);
    alert->addAction(ui::AlertAction::actionWithTitle(QStringLiteral("Ok"), ui::AlertAction::Style::Default));
    on->presentViewController(alert, true);
    if (!alert->presentingViewController())
        delete alert; // refused: nobody owns it
}
