#include "RegistrationSettings.h"

#include "AppConfiguration.h"

RegistrationSettings RegistrationSettings::fromConfiguration(const AppConfiguration &configuration)
{
    return {configuration.sitePage(QStringLiteral("termsAndConditions.htm")), nullptr};
}
