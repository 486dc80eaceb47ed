#include "PFInstallation.h"

#include "PFCurrentInstallationController.h"
#include "Parse.h"
#include "ParseCore.h"

PFInstallation::PFInstallation() : PFObject(parseClassName()) {}

PFInstallationPtr PFInstallation::currentInstallation()
{
    ParseCore *core = Parse::core();
    return core ? core->currentInstallationController().currentInstallation() : nullptr;
}

void PFInstallation::setDeviceTokenFromData(const QByteArray &deviceToken)
{
    setObject(QString::fromLatin1(deviceToken.toHex()), QStringLiteral("deviceToken"));
}

void PFInstallation::willSave()
{
    if (!objectId().isEmpty())
        return;
    for (const QString &key : {QStringLiteral("installationId"), QStringLiteral("deviceType")}) {
        if (!isDirtyForKey(key) && hasKey(key))
            setObject(objectForKey(key), key);
    }
}
