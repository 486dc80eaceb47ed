#include "SecureStore.h"

#include <QEventLoop>
#include <QLoggingCategory>
#include <QTimer>
#include <qt6keychain/keychain.h>

Q_LOGGING_CATEGORY(lcSecureStore, "vantrel.platform.securestore")

namespace {

SecureStore::Status statusOf(QKeychain::Error error)
{
    switch (error) {
    case QKeychain::NoError:
        return SecureStore::Status::Ok;
    case QKeychain::EntryNotFound:
        return SecureStore::Status::NotFound;
    case QKeychain::AccessDenied:
    case QKeychain::AccessDeniedByUser:
        return SecureStore::Status::AccessDenied;
    case QKeychain::NoBackendAvailable:
    case QKeychain::NotImplemented:
        return SecureStore::Status::Unavailable;
    case QKeychain::CouldNotDeleteEntry:
    case QKeychain::OtherError:
        break;
    }
    return SecureStore::Status::Failed;
}

// Runs a keychain job to completion and turns its outcome into a Result.
SecureStore::Result run(QKeychain::Job &job, int timeoutMs)
{
    job.setAutoDelete(false);
    job.setInsecureFallback(false);
    QEventLoop loop;
    bool finished = false;
    QObject::connect(&job, &QKeychain::Job::finished, &loop, [&] {
        finished = true;
        loop.quit();
    });
    QTimer::singleShot(timeoutMs, &loop, &QEventLoop::quit);
    job.start();
    if (!finished)
        loop.exec();

    SecureStore::Result result;
    if (!finished) {
        result.status = SecureStore::Status::Unavailable;
        result.code = QKeychain::OtherError;
        result.errorString = QStringLiteral("The secure store did not answer in time");
        return result;
    }
    result.code = job.error();
    result.errorString = job.errorString();
    result.status = statusOf(job.error());
    // The Secret Service reports a missing daemon or a locked, absent collection as OtherError.
    if (result.status == SecureStore::Status::Failed &&
        (result.errorString.contains(QLatin1String("autolaunch")) ||
         result.errorString.contains(QLatin1String("not provided by any .service")) ||
         result.errorString.contains(QLatin1String("Object does not exist"))))
        result.status = SecureStore::Status::Unavailable;
    return result;
}

} // namespace

SecureStore::SecureStore(QString service, int timeoutMs) : m_service(std::move(service)), m_timeoutMs(timeoutMs) {}

SecureStore::Result SecureStore::read(const QString &service, const QString &account) const
{
    QKeychain::ReadPasswordJob job(service);
    job.setKey(account);
    Result result = run(job, m_timeoutMs);
    if (result.ok())
        result.data = job.binaryData();
    else if (result.status != Status::NotFound)
        qCWarning(lcSecureStore) << "reading from the secure store failed:" << result.errorString;
    return result;
}

SecureStore::Result SecureStore::write(const QString &service, const QString &account, const QByteArray &data) const
{
    QKeychain::WritePasswordJob job(service);
    job.setKey(account);
    job.setBinaryData(data);
    Result result = run(job, m_timeoutMs);
    if (!result.ok())
        qCWarning(lcSecureStore) << "writing to the secure store failed:" << result.errorString;
    return result;
}

SecureStore::Result SecureStore::remove(const QString &service, const QString &account) const
{
    QKeychain::DeletePasswordJob job(service);
    job.setKey(account);
    Result result = run(job, m_timeoutMs);
    if (result.status == Status::NotFound)
        result.status = Status::Ok; // nothing to remove is fine
    return result;
}

std::optional<QByteArray> SecureStore::secret(const QString &key)
{
    Result result = read(m_service, key);
    if (!result.ok())
        return std::nullopt;
    return result.data;
}

bool SecureStore::setSecret(const QString &key, const QByteArray &value)
{
    return write(m_service, key, value).ok();
}

bool SecureStore::removeSecret(const QString &key)
{
    return remove(m_service, key).ok();
}
