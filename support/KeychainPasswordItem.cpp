#include "KeychainPasswordItem.h"

#include "SecureStore.h"
#include "SupportLogging.h"

#include <QStringDecoder>

const QString KeychainPasswordItem::kServiceName = QStringLiteral("Vantrel Pro");
const std::optional<QString> KeychainPasswordItem::kAccessGroup = std::nullopt;

namespace {

KeychainPasswordItem::KeychainError errorFor(const SecureStore::Result &result)
{
    using Error = KeychainPasswordItem::KeychainError;
    switch (result.status) {
    case SecureStore::Status::NotFound:
        return Error::noPassword();
    case SecureStore::Status::AccessDenied:
        return Error::unhandledError(KeychainPasswordItem::kStatusAuthFailed, result.errorString);
    case SecureStore::Status::Unavailable:
        return Error::unhandledError(KeychainPasswordItem::kStatusNotAvailable, result.errorString);
    case SecureStore::Status::Ok:
    case SecureStore::Status::Failed:
        break;
    }
    return Error::unhandledError(KeychainPasswordItem::kStatusInternalError, result.errorString);
}

template <class T> void report(std::optional<T> *out, const T &value)
{
    if (out)
        *out = value;
}

} // namespace

QString KeychainPasswordItem::KeychainError::localizedDescription() const
{
    switch (m_kind) {
    case Kind::noPassword:
        return QStringLiteral("No password is saved for this account.");
    case Kind::unexpectedPasswordData:
        return QStringLiteral("The saved password is not readable text.");
    case Kind::unexpectedItemData:
        return QStringLiteral("The saved item is not a password.");
    case Kind::unhandledError:
        break;
    }
    QString text = QStringLiteral("The secure store failed (status %1)").arg(m_status);
    if (!m_storeMessage.isEmpty())
        text += QStringLiteral(": ") + m_storeMessage;
    return text;
}

KeychainPasswordItem::KeychainPasswordItem(SecureStore &store, QString service, QString account,
                                           std::optional<QString> accessGroup)
    : m_store(store), m_service(std::move(service)), m_account(std::move(account)),
      m_accessGroup(std::move(accessGroup))
{
}

QString KeychainPasswordItem::storeService() const
{
    return m_accessGroup ? *m_accessGroup + u'/' + m_service : m_service;
}

std::optional<QString> KeychainPasswordItem::readPassword(std::optional<KeychainError> *error) const
{
    const SecureStore::Result result = m_store.read(storeService(), m_account);
    if (!result.ok()) {
        report(error, errorFor(result));
        return std::nullopt;
    }
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString password = decoder.decode(result.data);
    if (decoder.hasError()) {
        qCWarning(lcSupport) << "the saved password for this account is not UTF-8 text";
        report(error, KeychainError::unexpectedPasswordData());
        return std::nullopt;
    }
    return password;
}

bool KeychainPasswordItem::savePassword(const QString &password, std::optional<KeychainError> *error) const
{
    const QByteArray data = password.toUtf8();
    std::optional<KeychainError> readError;
    const bool exists = readPassword(&readError).has_value();
    if (!exists && readError->kind() != KeychainError::Kind::noPassword) {
        report(error, *readError);
        return false;
    }
    // The store keeps one item per service and account: writing an existing one replaces its
    // data in place, writing a new one adds it.
    const SecureStore::Result result = m_store.write(storeService(), m_account, data);
    if (!result.ok()) {
        const KeychainError failure = errorFor(result).kind() == KeychainError::Kind::noPassword
                                          ? KeychainError::unhandledError(kStatusItemNotFound, result.errorString)
                                          : errorFor(result);
        report(error, failure);
        return false;
    }
    return true;
}
