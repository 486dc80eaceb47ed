#pragma once

#include <QString>
#include <optional>

class SecureStore;

// One saved password in the system's secure store, addressed by service, account and an
// optional access group. Reading and saving are synchronous; failures come back as a
// KeychainError instead of a password.
class KeychainPasswordItem {
public:
    // The store's statuses this item reports, in the platform's numbering.
    static constexpr qint32 kStatusItemNotFound = -25300;
    static constexpr qint32 kStatusNotAvailable = -25291;
    static constexpr qint32 kStatusAuthFailed = -25293;
    static constexpr qint32 kStatusInternalError = -26276;

    // The app's item: service "Vantrel Pro", no access group.
    static const QString kServiceName;
    static const std::optional<QString> kAccessGroup;

    class KeychainError {
    public:
        enum class Kind { noPassword, unexpectedPasswordData, unexpectedItemData, unhandledError };

        static KeychainError noPassword() { return KeychainError(Kind::noPassword); }
        static KeychainError unexpectedPasswordData() { return KeychainError(Kind::unexpectedPasswordData); }
        static KeychainError unexpectedItemData() { return KeychainError(Kind::unexpectedItemData); }
        static KeychainError unhandledError(qint32 status, QString storeMessage = {})
        {
            return KeychainError(Kind::unhandledError, status, std::move(storeMessage));
        }

        [[nodiscard]] Kind kind() const { return m_kind; }
        // The store's status; 0 except for unhandledError.
        [[nodiscard]] qint32 status() const { return m_status; }
        [[nodiscard]] QString localizedDescription() const;

    private:
        explicit KeychainError(Kind kind, qint32 status = 0, QString storeMessage = {})
            : m_kind(kind), m_status(status), m_storeMessage(std::move(storeMessage))
        {
        }
        Kind m_kind;
        qint32 m_status;
        QString m_storeMessage;
    };

    KeychainPasswordItem(SecureStore &store, QString service, QString account,
                         std::optional<QString> accessGroup = std::nullopt);

    [[nodiscard]] QString service() const { return m_service; }
    [[nodiscard]] QString account() const { return m_account; }
    [[nodiscard]] std::optional<QString> accessGroup() const { return m_accessGroup; }

    // The password, or nothing with *error set.
    [[nodiscard]] std::optional<QString> readPassword(std::optional<KeychainError> *error = nullptr) const;
    // Replaces the item's data when there is an item, adds one otherwise. False with *error set
    // when the store refused or the existing item could not be read.
    bool savePassword(const QString &password, std::optional<KeychainError> *error = nullptr) const;

private:
    // The store has no access groups of its own; an item with a group lives under its own
    // service name so that it never meets the items without one.
    [[nodiscard]] QString storeService() const;

    SecureStore &m_store;
    QString m_service;
    QString m_account;
    std::optional<QString> m_accessGroup;
};
