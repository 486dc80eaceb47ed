#include "InformationViewController.h"

#include "AccountServices.h"
#include "UserDefaults.h"

InformationViewController::InformationViewController(QObject *parent) : ui::ViewController(parent)
{
    const AccountServices &services = AccountServices::current();
    m_helpEmail = services.helpEmail;
    m_administratorEmail = services.administratorEmail;
    UserDefaults *defaults = services.userDefaults ? services.userDefaults : UserDefaults::standardUserDefaults();
    const QString version = defaults ? defaults->stringForKey(QStringLiteral("version_number")) : QString();
    m_versionText = version.isEmpty() ? QString() : QStringLiteral("Vantrel PRO %1").arg(version);
    setTitle(QStringLiteral("About Vantrel PRO"));
}
