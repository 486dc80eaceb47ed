#include "SecureStore.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QLoggingCategory>
#include <QPointer>
#include <QTimer>
#include <qt6keychain/keychain.h>

Q_LOGGING_CATEGORY(lcSecureStore, "vantrel.platform.securestore")

namespace {

using Status = PFSecureStorage::Status;

// The Secret Service reports most failures as OtherError; its words tell them apart.
Status statusOf(QKeychain::Error error, const QString &text)
{
    switch (error) {
    case QKeychain::NoError:
        return Status::Ok;
    case QKeychain::EntryNotFound:
        return Status::NotFound;
    case QKeychain::AccessDenied:
        return text.contains(QLatin1String("locked"), Qt::CaseInsensitive) ? Status::Locked : Status::Denied;
    case QKeychain::AccessDeniedByUser:
        return Status::Denied;
    case QKeychain::NoBackendAvailable:
    case QKeychain::NotImplemented:
        return Status::Unavailable;
    case QKeychain::CouldNotDeleteEntry:
    case QKeychain::OtherError:
        break;
    }
    for (const char *missing : {"autolaunch", "not provided by any .service", "Object does not exist",
                                "ServiceUnknown", "was not provided by any"}) {
        if (text.contains(QLatin1String(missing)))
            return Status::Unavailable;
    }
    if (text.contains(QLatin1String("locked"), Qt::CaseInsensitive))
        return Status::Locked;
    return Status::Failed;
}

} // namespace

SecureStore::SecureStore(QString service, QObject *parent) : QObject(parent), m_service(std::move(service)) {}

void SecureStore::read(const QString &service, const QString &account, Completion done, StillWaiting stillWaiting)
{
    auto *job = new QKeychain::ReadPasswordJob(service);
    job->setKey(account);
    run(job, Operation::Read, std::move(done), std::move(stillWaiting));
}

void SecureStore::write(const QString &service, const QString &account, const QByteArray &data, Completion done,
                        StillWaiting stillWaiting)
{
    auto *job = new QKeychain::WritePasswordJob(service);
    job->setKey(account);
    job->setBinaryData(data);
    run(job, Operation::Write, std::move(done), std::move(stillWaiting));
}

void SecureStore::remove(const QString &service, const QString &account, Completion done, StillWaiting stillWaiting)
{
    auto *job = new QKeychain::DeletePasswordJob(service);
    job->setKey(account);
    run(job, Operation::Remove, std::move(done), std::move(stillWaiting));
}

// A job lives until the store has answered, even when this object goes first: the Secret
// Service's answer to a job deleted while it waits would land in freed memory.
void SecureStore::run(QKeychain::Job *job, Operation operation, Completion done, StillWaiting stillWaiting)
{
    job->setAutoDelete(true);
    job->setInsecureFallback(false);
    if (stillWaiting) {
        auto *timer = new QTimer(this);
        timer->setSingleShot(true);
        connect(timer, &QTimer::timeout, this, [stillWaiting] { stillWaiting(); });
        connect(job, &QKeychain::Job::finished, timer, &QObject::deleteLater);
        timer->start(m_slowAfterMs);
    }
    connect(job, &QKeychain::Job::finished, this, [this, operation, done](QKeychain::Job *finished) {
        Result result;
        result.status = statusOf(finished->error(), finished->errorString());
        result.errorString = finished->errorString();
        if (result.ok() && operation == Operation::Read)
            result.data = static_cast<QKeychain::ReadPasswordJob *>(finished)->binaryData();
        if (operation == Operation::Remove && result.status == Status::NotFound)
            result.status = Status::Ok;
        if (!result.ok() && result.status != Status::NotFound)
            qCWarning(lcSecureStore).noquote() << "the secure store failed:" << describe(result.status) << "-"
                                               << result.errorString;
        // The Secret Service answers "not found" for items of a keyring that stayed locked.
        if (operation == Operation::Read && result.status == Status::NotFound)
            checkLocked(result, done);
        else
            deliver(done, result);
    });
    job->start();
}

void SecureStore::checkLocked(Result result, Completion done)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.secrets"), QStringLiteral("/org/freedesktop/secrets/aliases/default"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << QStringLiteral("org.freedesktop.Secret.Collection") << QStringLiteral("Locked");
    auto *watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, result, done]() mutable {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (!reply.isError() && reply.value().variant().toBool()) {
            result.status = Status::Locked;
            result.errorString = QStringLiteral("The keyring is locked");
            qCWarning(lcSecureStore) << "the secure store could not be read: the keyring is locked";
        }
        deliver(done, result);
    });
}

void SecureStore::deliver(const Completion &done, const Result &result)
{
    if (!done)
        return;
    // Never inside the call that started the work, even when the store answered at once.
    QMetaObject::invokeMethod(this, [done, result] { done(result); }, Qt::QueuedConnection);
}

void SecureStore::readSecret(const QString &key, Completion done)
{
    read(m_service, key, std::move(done));
}

void SecureStore::writeSecret(const QString &key, const QByteArray &value, Completion done)
{
    write(m_service, key, value, std::move(done));
}

void SecureStore::removeSecret(const QString &key, Completion done)
{
    remove(m_service, key, std::move(done));
}
