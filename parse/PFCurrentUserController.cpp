#include "PFCurrentUserController.h"

#include "PFDataStore.h"
#include "PFDecoder.h"
#include "PFEncoder.h"
#include "PFLogging.h"
#include "PFSecureStorage.h"
#include "PFUser.h"

#include <QJsonDocument>

PFCurrentUserController::PFCurrentUserController(PFDataStore &store, PFSecureStorage *secureStorage,
                                                 const QString &applicationId)
    : m_store(store), m_secureStorage(secureStorage), m_secretKey(QStringLiteral("session-token:") + applicationId)
{
}

PFUserPtr PFCurrentUserController::currentUser()
{
    if (!m_loaded)
        load();
    return m_user;
}

QString PFCurrentUserController::sessionToken()
{
    const PFUserPtr user = currentUser();
    return user ? user->sessionToken() : QString();
}

void PFCurrentUserController::load()
{
    m_loaded = true;
    const std::optional<QByteArray> contents = m_store.read(fileName());
    if (!contents)
        return;
    const std::optional<QByteArray> token =
        m_secureStorage ? m_secureStorage->secret(m_secretKey) : std::optional<QByteArray>();
    if (!token || token->isEmpty()) {
        qCInfo(lcParseUser) << "a remembered user has no session in the secure storage; signed out";
        m_store.remove(fileName());
        return;
    }
    const QJsonDocument document = QJsonDocument::fromJson(*contents);
    PFDecoder decoder;
    const QVariant decoded = decoder.decode(document.object());
    auto user = std::dynamic_pointer_cast<PFUser>(decoded.value<PFObjectPtr>());
    if (!document.isObject() || decoder.error() || !user || user->objectId().isEmpty()) {
        qCWarning(lcParseUser) << "the remembered user's file is unreadable; signed out";
        clear();
        return;
    }
    user->setSessionToken(QString::fromUtf8(*token));
    m_user = user;
}

void PFCurrentUserController::setCurrentUser(const PFUserPtr &user)
{
    m_loaded = true;
    m_user = user;
    if (!m_secureStorage) {
        qCInfo(lcParseUser) << "no secure storage: the session is kept for this run only";
        return;
    }
    if (!m_secureStorage->setSecret(m_secretKey, user->sessionToken().toUtf8())) {
        qCWarning(lcParseUser) << "the secure storage refused the session; it is kept for this run only";
        m_store.remove(fileName());
        return;
    }
    persist();
}

void PFCurrentUserController::persist()
{
    if (!m_user || !m_secureStorage)
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
    m_loaded = true;
    m_user.reset();
    m_store.remove(fileName());
    if (m_secureStorage)
        m_secureStorage->removeSecret(m_secretKey);
}
