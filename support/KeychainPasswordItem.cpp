#include "KeychainPasswordItem.h"

#include "SecureStore.h"
#include "SupportLogging.h"

#include <QEventLoop>
#include <QStringDecoder>

const QString KeychainPasswordItem::kServiceName = QStringLiteral("Vantrel Pro");
const std::optional<QString> KeychainPasswordItem::kAccessGroup = std::nullopt;

namespace {

using KeychainError = KeychainPasswordItem::KeychainError;
using Status = PFSecureStorage::Status;

KeychainError errorFor(const PFSecureStorage::Result &result)
{
    switch (result.status) {
    case Status::NotFound:
        return KeychainError::noPassword();
    case Status::Locked:
        return KeychainError::unhandledError(KeychainPasswordItem::kStatusInteractionNotAllowed, result.errorString);
    case Status::Denied:
        return KeychainError::unhandledError(KeychainPasswordItem::kStatusAuthFailed, result.errorString);
    case Status::Unavailable:
        return KeychainError::unhandledError(KeychainPasswordItem::kStatusNotAvailable, result.errorString);
    case Status::Ok:
    case Status::Failed:
        break;
    }
    return KeychainError::unhandledError(KeychainPasswordItem::kStatusInternalError, result.errorString);
}

// The item's data as a password: UTF-8 text, or unexpectedPasswordData.
void deliverPassword(const PFSecureStorage::Result &result, const KeychainPasswordItem::ReadBlock &block)
{
    if (!result.ok()) {
        block(std::nullopt, errorFor(result));
        return;
    }
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString password = decoder.decode(result.data);
    if (decoder.hasError()) {
        qCWarning(lcSupport) << "the saved password for this account is not UTF-8 text";
        block(std::nullopt, KeychainError::unexpectedPasswordData());
        return;
    }
    block(password, std::nullopt);
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
    : m_store(&store), m_service(std::move(service)), m_account(std::move(account)),
      m_accessGroup(std::move(accessGroup))
{
}

QString KeychainPasswordItem::storeService() const
{
    return m_accessGroup ? *m_accessGroup + u'/' + m_service : m_service;
}

void KeychainPasswordItem::readPasswordInBackground(ReadBlock block, StillWaiting stillWaiting) const
{
    m_store->read(
        storeService(), m_account,
        [block = std::move(block)](const PFSecureStorage::Result &result) {
            if (block)
                deliverPassword(result, block);
        },
        std::move(stillWaiting));
}

void KeychainPasswordItem::savePasswordInBackground(const QString &password, SaveBlock block,
                                                    StillWaiting stillWaiting) const
{
    SecureStore *store = m_store;
    const QString service = storeService();
    const QString account = m_account;
    // The store keeps one item per service and account: writing an existing one replaces its
    // data in place, writing a new one adds it.
    auto write = [store, service, account, data = password.toUtf8(), block](const std::optional<QString> &,
                                                                           const std::optional<KeychainError> &error) {
        if (error && error->kind() != KeychainError::Kind::noPassword) {
            if (block)
                block(error);
            return;
        }
        store->write(service, account, data, [block](const PFSecureStorage::Result &result) {
            if (!block)
                return;
            if (result.ok())
                block(std::nullopt);
            else if (result.status == Status::NotFound)
                block(KeychainError::unhandledError(kStatusItemNotFound, result.errorString));
            else
                block(errorFor(result));
        });
    };
    readPasswordInBackground(std::move(write), std::move(stillWaiting));
}

namespace {
// The old, blocking way: starts a call and runs a nested event loop until its block has run.
template <class Start> void waitInNestedLoop(Start start)
{
    QEventLoop loop;
    bool done = false;
    start([&] {
        done = true;
        loop.quit();
    });
    if (!done)
        loop.exec();
}
} // namespace

std::optional<QString> KeychainPasswordItem::readPassword(std::optional<KeychainError> *error) const
{
    std::optional<QString> password;
    waitInNestedLoop([&](auto finished) {
        readPasswordInBackground([&, finished](const std::optional<QString> &found,
                                               const std::optional<KeychainError> &failure) {
            password = found;
            if (error)
                *error = failure;
            finished();
        });
    });
    return password;
}

bool KeychainPasswordItem::savePassword(const QString &password, std::optional<KeychainError> *error) const
{
    bool saved = false;
    waitInNestedLoop([&](auto finished) {
        savePasswordInBackground(password, [&, finished](const std::optional<KeychainError> &failure) {
            saved = !failure;
            if (error)
                *error = failure;
            finished();
        });
    });
    return saved;
}
