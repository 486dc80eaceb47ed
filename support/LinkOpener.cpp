#include "LinkOpener.h"

#include "AlertController.h"
#include "AlertHelper.h"
#include "SupportLogging.h"
#include "UrlOpener.h"

#include <QClipboard>
#include <QGuiApplication>

bool LinkOpener::open(const QUrl &page, UrlOpener &opener, ui::ViewController *on)
{
    if (!page.isValid() || page.scheme().isEmpty() || page.host().isEmpty()) {
        qCWarning(lcSupport) << "not a web address:" << page;
        AlertHelper::show(QStringLiteral("Sorry"), QStringLiteral("This page is not available at the moment."), on);
        return false;
    }
    if (opener.canOpenURL(page) && opener.openURL(page))
        return true;
    qCWarning(lcSupport) << "no browser opened" << page;
    const QString address = page.toString();
    auto *alert = ui::AlertController::alertControllerWithTitle(
        QStringLiteral("No Browser"),
        QStringLiteral("No web browser on this device could open the page. Copy its address to open it "
                       "elsewhere:\n\n") +
            address,
        ui::AlertController::Style::Alert);
    alert->addAction(ui::AlertAction::actionWithTitle(QStringLiteral("Copy Address"),
                                                      ui::AlertAction::Style::Default, [address](ui::AlertAction *) {
                                                          QGuiApplication::clipboard()->setText(address);
                                                      }));
    alert->addAction(ui::AlertAction::actionWithTitle(QStringLiteral("Cancel"), ui::AlertAction::Style::Cancel));
    if (on)
        on->presentViewController(alert, true);
    if (!alert->parent())
        delete alert;
    return false;
}
