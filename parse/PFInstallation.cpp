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
