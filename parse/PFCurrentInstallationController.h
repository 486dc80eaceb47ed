#pragma once

#include "PFInstallation.h"

class PFDataStore;

// The installation id of this program on this device, made once and kept in the data
// directory, and the installation record that carries it.
class PFCurrentInstallationController {
public:
    explicit PFCurrentInstallationController(PFDataStore &store) : m_store(store) {}

    [[nodiscard]] QString installationId();
    [[nodiscard]] PFInstallationPtr currentInstallation();

    [[nodiscard]] static QString fileName() { return QStringLiteral("installationId"); }
    // The device type the server requires on every installation.
    [[nodiscard]] static QString deviceType();

private:
    PFDataStore &m_store;
    QString m_installationId;
    PFInstallationPtr m_installation;
};
