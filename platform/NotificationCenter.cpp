#include "NotificationCenter.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QLoggingCategory>
#include <QTimer>

Q_LOGGING_CATEGORY(lcNotifications, "vantrel.platform.notifications")

namespace {
const auto kService = QStringLiteral("org.freedesktop.Notifications");
const auto kPath = QStringLiteral("/org/freedesktop/Notifications");
} // namespace

QString NotificationCenter::Settings::description() const
{
    QString status;
    switch (authorizationStatus) {
    case AuthorizationStatus::NotDetermined:
        status = QStringLiteral("notDetermined");
        break;
    case AuthorizationStatus::Denied:
        status = QStringLiteral("denied");
        break;
    case AuthorizationStatus::Authorized:
        status = QStringLiteral("authorized");
        break;
    }
    return QStringLiteral("<NotificationSettings authorizationStatus: %1, server: %2>")
        .arg(status, serverName.isEmpty() ? QStringLiteral("none") : serverName);
}

NotificationCenter::NotificationCenter(QDBusConnection bus, QObject *parent) : QObject(parent), m_bus(std::move(bus)) {}

void NotificationCenter::queryServer(std::function<void(bool, QString, QString)> done)
{
    QDBusConnection &bus = m_bus;
    if (!bus.isConnected()) {
        const QString reason =
            bus.lastError().message().isEmpty() ? QStringLiteral("no session bus") : bus.lastError().message();
        // Answer later, never inside the call.
        QTimer::singleShot(0, this, [done, reason] { done(false, {}, reason); });
        return;
    }
    QDBusMessage call =
        QDBusMessage::createMethodCall(kService, kPath, kService, QStringLiteral("GetServerInformation"));
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, 5000), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [done](QDBusPendingCallWatcher *w) {
        w->deleteLater();
        QDBusPendingReply<QString, QString, QString, QString> reply = *w;
        if (reply.isError()) {
            done(false, {}, reply.error().message());
            return;
        }
        done(true, reply.argumentAt<0>() + u' ' + reply.argumentAt<2>(), {});
    });
}

void NotificationCenter::requestAuthorizationWithOptions(int options,
                                                         std::function<void(bool granted, QString error)> completion)
{
    qCDebug(lcNotifications) << "authorisation asked with options" << options;
    queryServer([this, completion](bool available, const QString &name, const QString &error) {
        m_settings.authorizationStatus = available ? AuthorizationStatus::Authorized : AuthorizationStatus::Denied;
        m_settings.serverName = name;
        if (!available)
            qCInfo(lcNotifications) << "no desktop notification service:" << error;
        completion(available, error);
    });
}

void NotificationCenter::getNotificationSettingsWithCompletionHandler(std::function<void(Settings)> completion)
{
    const Settings settings = m_settings;
    QTimer::singleShot(0, this, [completion, settings] { completion(settings); });
}

void NotificationCenter::setApplicationIconBadgeNumber(int number)
{
    m_badgeNumber = number;
    QDBusConnection &bus = m_bus;
    if (!bus.isConnected())
        return;
    QDBusMessage signal =
        QDBusMessage::createSignal(QStringLiteral("/com/vantrel/pro/launcher"),
                                   QStringLiteral("com.canonical.Unity.LauncherEntry"), QStringLiteral("Update"));
    QVariantMap properties{{QStringLiteral("count"), qint64(number)}, {QStringLiteral("count-visible"), number > 0}};
    signal << QStringLiteral("application://") + m_desktopFileName << properties;
    bus.send(signal);
}
