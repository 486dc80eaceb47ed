#include "PushTokenSource.h"

#include "PrivateFile.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTimer>

PushTokenSource::PushTokenSource(QString tokenFilePath, QObject *parent)
    : QObject(parent), m_tokenFilePath(std::move(tokenFilePath))
{
}

void PushTokenSource::registerForRemoteNotifications()
{
    QTimer::singleShot(0, this, [this] {
        QFile file(m_tokenFilePath);
        if (file.open(QIODevice::ReadOnly)) {
            const QByteArray kept = file.readAll();
            if (kept.size() == kTokenLength) {
                Q_EMIT didRegisterForRemoteNotificationsWithDeviceToken(kept);
                return;
            }
            // A damaged token file is replaced by a fresh token.
        }
        QByteArray token(kTokenLength, Qt::Uninitialized);
        QRandomGenerator::system()->fillRange(reinterpret_cast<quint32 *>(token.data()), kTokenLength / 4);
        if (!PrivateFile::write(m_tokenFilePath, token)) {
            Q_EMIT didFailToRegisterForRemoteNotificationsWithError(
                QStringLiteral("The push token could not be kept in %1").arg(m_tokenFilePath));
            return;
        }
        Q_EMIT didRegisterForRemoteNotificationsWithDeviceToken(token);
    });
}
