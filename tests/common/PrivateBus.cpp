#include "PrivateBus.h"

#include <QDBusConnectionInterface>
#include <QElapsedTimer>
#include <QThread>
#include <QUuid>
#include <csignal>

PrivateBus::PrivateBus()
{
    QProcess daemon;
    daemon.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--session"), QStringLiteral("--fork"),
                                                 QStringLiteral("--print-address=1"), QStringLiteral("--print-pid=1")});
    if (!daemon.waitForFinished(10000) || daemon.exitCode() != 0)
        return;
    const QStringList lines = QString::fromUtf8(daemon.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    if (lines.size() < 2)
        return;
    m_address = lines.at(0).trimmed();
    m_daemonPid = lines.at(1).trimmed().toLongLong();
    m_connectionName = QUuid::createUuid().toString();
}

PrivateBus::~PrivateBus()
{
    for (auto &mock : m_mocks) {
        mock->terminate();
        mock->waitForFinished(3000);
    }
    if (!m_connectionName.isEmpty())
        QDBusConnection::disconnectFromBus(m_connectionName);
    if (m_daemonPid > 0)
        ::kill(static_cast<pid_t>(m_daemonPid), SIGTERM);
}

QDBusConnection PrivateBus::connection() const
{
    return QDBusConnection::connectToBus(m_address, m_connectionName);
}

bool PrivateBus::startTemplate(const QString &templateName, const QString &busName, const QStringList &extraArgs)
{
    auto mock = std::make_unique<QProcess>();
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_address);
    mock->setProcessEnvironment(env);
    mock->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    mock->start(QStringLiteral("/usr/bin/python3"),
                QStringList{QStringLiteral("-m"), QStringLiteral("dbusmock"), QStringLiteral("--template"),
                            templateName} +
                    extraArgs);
    if (!mock->waitForStarted(5000))
        return false;
    m_mocks.push_back(std::move(mock));
    QDBusConnection bus = connection();
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 15000) {
        if (bus.interface() && bus.interface()->isServiceRegistered(busName))
            return true;
        QThread::msleep(50);
    }
    return false;
}
