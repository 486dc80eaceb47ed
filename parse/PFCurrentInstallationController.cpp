#include "PFCurrentInstallationController.h"

#include "PFDataStore.h"
#include "PFLogging.h"

#include <QSysInfo>
#include <QUuid>

QString PFCurrentInstallationController::deviceType()
{
    const QString kernel = QSysInfo::kernelType();
    return kernel.isEmpty() ? QStringLiteral("linux") : kernel;
}

QString PFCurrentInstallationController::installationId()
{
    if (!m_installationId.isEmpty())
        return m_installationId;
    const QString stored = QString::fromUtf8(m_store.read(fileName()).value_or(QByteArray())).trimmed();
    if (!QUuid::fromString(stored).isNull()) {
        m_installationId = stored;
        return m_installationId;
    }
    m_installationId = QUuid::createUuid().toString(QUuid::WithoutBraces);
    if (!m_store.write(fileName(), m_installationId.toUtf8()))
        qCWarning(lcParseStore) << "the installation id could not be kept; a new one will be made next start";
    return m_installationId;
}

PFInstallationPtr PFCurrentInstallationController::currentInstallation()
{
    if (!m_installation) {
        m_installation = std::make_shared<PFInstallation>();
        m_installation->setObject(installationId(), QStringLiteral("installationId"));
        m_installation->setObject(deviceType(), QStringLiteral("deviceType"));
    }
    return m_installation;
}
