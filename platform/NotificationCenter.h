#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <functional>

// The desktop's notification service (org.freedesktop.Notifications on the session bus).
// Permission is granted when such a service exists: the desktop shows what we send.
class NotificationCenter : public QObject {
    Q_OBJECT
public:
    enum AuthorizationOption { Badge = 1, Sound = 2, Alert = 4, CarPlay = 8 };
    enum class AuthorizationStatus { NotDetermined, Denied, Authorized };

    struct Settings {
        AuthorizationStatus authorizationStatus = AuthorizationStatus::NotDetermined;
        QString serverName; // the notification daemon's own name and version
        [[nodiscard]] QString description() const;
    };

    explicit NotificationCenter(QDBusConnection bus = QDBusConnection::sessionBus(), QObject *parent = nullptr);

    // Asks the service; the completion runs later on this object's thread with the answer and,
    // when refused, the reason.
    void requestAuthorizationWithOptions(int options, std::function<void(bool granted, QString error)> completion);
    void getNotificationSettingsWithCompletionHandler(std::function<void(Settings)> completion);

    // The launcher badge (com.canonical.Unity.LauncherEntry, understood by docks and KDE's task
    // manager). Zero hides it.
    void setApplicationIconBadgeNumber(int number);
    [[nodiscard]] int applicationIconBadgeNumber() const { return m_badgeNumber; }

    // The desktop file name the badge is addressed to.
    void setDesktopFileName(const QString &name) { m_desktopFileName = name; }

private:
    void queryServer(std::function<void(bool available, QString name, QString error)> done);

    QDBusConnection m_bus;
    Settings m_settings;
    int m_badgeNumber = 0;
    QString m_desktopFileName = QStringLiteral("vantrel-pro.desktop");
};
