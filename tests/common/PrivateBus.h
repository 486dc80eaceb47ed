#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QString>
#include <memory>
#include <vector>

// A D-Bus session bus of a test's own, with optional fake services from python3-dbusmock.
// Everything started here is stopped when the object goes away.
class PrivateBus {
public:
    // Bare: no service on the system can be started on demand (a desktop without them).
    enum class Services { Activatable, Bare };
    explicit PrivateBus(Services services = Services::Activatable);
    ~PrivateBus();
    PrivateBus(const PrivateBus &) = delete;
    PrivateBus &operator=(const PrivateBus &) = delete;

    [[nodiscard]] bool isRunning() const { return !m_address.isEmpty(); }
    [[nodiscard]] QString address() const { return m_address; }
    [[nodiscard]] QDBusConnection connection() const;

    // Starts `python3 -m dbusmock --template NAME` on this bus and waits until `busName` appears.
    bool startTemplate(const QString &templateName, const QString &busName, const QStringList &extraArgs = {});

private:
    QString m_address;
    QString m_configFile;
    QString m_connectionName;
    qint64 m_daemonPid = 0;
    std::vector<std::unique_ptr<QProcess>> m_mocks;
};
