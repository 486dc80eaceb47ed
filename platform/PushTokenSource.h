#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

// Remote-notification registration on this platform: a push token of 32 random bytes that
// belongs to this installation of the app. It is made once and kept in the data directory,
// so the backend sees the same device across launches.
class PushTokenSource : public QObject {
    Q_OBJECT
public:
    static constexpr int kTokenLength = 32;

    explicit PushTokenSource(QString tokenFilePath, QObject *parent = nullptr);

    // Answers later through one of the two signals, never inside the call.
    void registerForRemoteNotifications();

Q_SIGNALS:
    void didRegisterForRemoteNotificationsWithDeviceToken(const QByteArray &token);
    void didFailToRegisterForRemoteNotificationsWithError(const QString &error);

private:
    QString m_tokenFilePath;
};
