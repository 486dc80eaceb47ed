#include "PFCurrentUserController.h"

#include "PFDataStore.h"
#include "PFDecoder.h"
#include "PFDispatch.h"
#include "PFEncoder.h"
#include "PFError.h"
#include "PFJsonReader.h"
#include "PFLogging.h"
#include "PFUser.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QPointer>

PFCurrentUserController::PFCurrentUserController(PFDataStore &store, PFSecureStorage *secureStorage,
                                                 const QString &applicationId, QObject *parent)
    : QObject(parent), m_store(store), m_secureStorage(secureStorage),
      m_secretKey(QStringLiteral("session-token:") + applicationId)
{
}

QString PFCurrentUserController::sessionToken() const
{
    return m_user ? m_user->sessionToken() : QString();
}

void PFCurrentUserController::load()
{
    const std::optional<QByteArray> contents = m_store.read(fileName());
    if (!contents || !m_secureStorage) {
        // Without a secure storage no session was ever remembered.
        PFDispatch::later([self = QPointer(this)] {
            if (self)
                self->finishLoading(nullptr, std::nullopt);
        });
        return;
    }
    const quint64 generation = m_generation;
    m_secureStorage->readSecret(
        m_secretKey,
        [this, self = QPointer(this), file = *contents, generation](const PFSecureStorage::Result &result) {
            if (!self)
                return;
            if (generation != m_generation) {
                finishLoading(m_user, std::nullopt); // someone signed in or out meanwhile
                return;
            }
            // Decoded only now, when the app has registered its record classes: the remembered
            // user comes back as the app's own user class.
            PFJsonReader reader;
            PFDecoder decoder;
            const QVariant decoded = decoder.decode(reader.read(file));
            auto user = std::dynamic_pointer_cast<PFUser>(decoded.value<PFObjectPtr>());
            if (decoder.error() || !user || user->objectId().isEmpty()) {
                qCWarning(lcParseUser) << "the remembered user's file is unreadable; signed out"
                                       << (reader.error().isEmpty() ? QString() : reader.error());
                clear();
                return;
            }
            if (result.ok() && !result.data.isEmpty()) {
                user->setSessionToken(QString::fromUtf8(result.data));
                m_remembered = true;
                finishLoading(user, std::nullopt);
                return;
            }
            if (result.status == PFSecureStorage::Status::NotFound || result.ok()) {
                qCInfo(lcParseUser) << "a remembered user has no session in the secure storage; signed out";
                m_store.remove(fileName());
                finishLoading(nullptr, std::nullopt);
                return;
            }
            qCWarning(lcParseUser).noquote() << "the remembered session could not be read from the secure storage ("
                                                 + PFSecureStorage::describe(result.status)
                                                 + "); it stays for a later start";
            finishLoading(nullptr, PFError(PFError::SecureStorageUnavailable,
                                           QCoreApplication::translate("PFError",
                                                                       "The remembered session could not be read: %1")
                                               .arg(PFSecureStorage::describe(result.status))));
        });
}

void PFCurrentUserController::finishLoading(const PFUserPtr &user, const std::optional<PFError> &error)
{
    const bool changed = m_user != user;
    m_user = user;
    m_loadError = error;
    m_loaded = true;
    for (const PFUserResultBlock &block : std::exchange(m_waiting, {})) {
        if (block)
            block(m_user, m_loadError ? &*m_loadError : nullptr);
    }
    if (changed)
        Q_EMIT currentUserChanged();
}

void PFCurrentUserController::getCurrentUser(PFUserResultBlock block)
{
    if (!m_loaded) {
        m_waiting.append(std::move(block));
        return;
    }
    PFDispatch::later([self = QPointer(this), block = std::move(block)] {
        if (self && block)
            block(self->m_user, self->m_loadError ? &*self->m_loadError : nullptr);
    });
}

void PFCurrentUserController::setCurrentUser(const PFUserPtr &user)
{
    ++m_generation;
    m_remembered = false;
    m_remembering = false;
    m_loadError.reset();
    if (!m_loaded || m_user != user) {
        finishLoading(user, std::nullopt);
    }
    if (!m_secureStorage) {
        qCInfo(lcParseUser) << "no secure storage: the session is kept for this run only";
        return;
    }
    remember(user, m_generation);
}

void PFCurrentUserController::remember(const PFUserPtr &user, quint64 generation)
{
    m_remembering = true;
    m_secureStorage->writeSecret(m_secretKey, user->sessionToken().toUtf8(),
                                 [this, self = QPointer(this), user, generation](const PFSecureStorage::Result &result) {
                                     if (!self || generation != m_generation)
                                         return; // signed out or in again meanwhile
                                     m_remembering = false;
                                     if (!result.ok()) {
                                         qCWarning(lcParseUser).noquote()
                                             << "the secure storage did not keep the session ("
                                                    + PFSecureStorage::describe(result.status)
                                                    + "); it lasts for this run only";
                                         m_store.remove(fileName());
                                         return;
                                     }
                                     m_remembered = true;
                                     persist();
                                 });
}

void PFCurrentUserController::persist()
{
    if (!m_user || !m_remembered)
        return;
    PFEncoder encoder;
    QJsonObject record = encoder.encodeObject(m_user->state());
    record.remove(QStringLiteral("password"));
    record.remove(QStringLiteral("sessionToken"));
    if (!m_store.write(fileName(), QJsonDocument(record).toJson(QJsonDocument::Compact)))
        qCWarning(lcParseUser) << "the signed-in user could not be remembered";
}

void PFCurrentUserController::clear()
{
    ++m_generation;
    m_remembered = false;
    m_remembering = false;
    m_loadError.reset();
    m_store.remove(fileName());
    if (m_secureStorage)
        m_secureStorage->removeSecret(m_secretKey, [](const PFSecureStorage::Result &result) {
            if (!result.ok())
                qCWarning(lcParseUser).noquote() << "the session could not be removed from the secure storage ("
                                                        + PFSecureStorage::describe(result.status) + ")";
        });
    finishLoading(nullptr, std::nullopt);
}
