#pragma once

#include "PFObject.h"

class PFInstallation;
using PFInstallationPtr = std::shared_ptr<PFInstallation>;

// This program's installation record: the installation id kept in the data directory, the
// device type, the push token and the channels.
class PFInstallation : public PFObject {
public:
    PFInstallation();

    [[nodiscard]] static QString parseClassName() { return QStringLiteral("_Installation"); }
    // The installation of this program on this device; null before the client is set up.
    [[nodiscard]] static PFInstallationPtr currentInstallation();

    // Stores the token as lower-case hexadecimal text under "deviceToken".
    void setDeviceTokenFromData(const QByteArray &deviceToken);
    [[nodiscard]] QString deviceToken() const { return stringForKey(QStringLiteral("deviceToken")); }
    [[nodiscard]] QString installationId() const { return stringForKey(QStringLiteral("installationId")); }
    [[nodiscard]] QString deviceType() const { return stringForKey(QStringLiteral("deviceType")); }
    [[nodiscard]] QStringList channels() const { return stringListForKey(QStringLiteral("channels")); }
    void setChannels(const QStringList &channels) { setStringList(channels, QStringLiteral("channels")); }

    // Until the server has named the record, every save names the installation id and device
    // type again: the server finds the record by them.
    void willSave() override;
};
