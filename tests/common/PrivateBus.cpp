#include "PrivateBus.h"

#include <QDBusConnectionInterface>
#include <QDir>
#include <QTemporaryFile>
#include <QElapsedTimer>
#include <QThread>
#include <QUuid>
#include <csignal>

PrivateBus::PrivateBus(Services services)
{
    QString config = QStringLiteral("--session");
    if (services == Services::Bare) {
        QTemporaryFile file(QDir::tempPath() + QStringLiteral("/bus-XXXXXX.conf"));
        file.setAutoRemove(false);
        if (!file.open())
            return;
        file.write(R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen><auth>EXTERNAL</auth>
<policy context="default"><allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/></policy>
</busconfig>
)");
        m_configFile = file.fileName();
        config = QStringLiteral("--config-file=") + m_configFile;
    }
    QProcess daemon;
    daemon.start(QStringLiteral("dbus-daemon"),
                 {config, QStringLiteral("--fork"), QStringLiteral("--print-address=1"), QStringLiteral("--print-pid=1")});
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
    if (!m_configFile.isEmpty())
        QFile::remove(m_configFile);
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
