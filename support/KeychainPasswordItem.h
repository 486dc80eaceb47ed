#pragma once

#include <QString>
#include <functional>
#include <optional>

class SecureStore;

// One saved password in the system's secure store, addressed by service, account and an
// optional access group. Reading and saving are asynchronous: the block runs later on the main
// thread, with the password or a KeychainError. A store that stays locked, one that is missing
// and one that refuses are told apart by the error's status (see the kStatus constants); a
// slow one (its keyring waiting for the user to unlock it) is reported through the optional
// `stillWaiting` callback, and the call goes on until the store answers.
class KeychainPasswordItem {
public:
    // The store's statuses this item reports, in the platform's numbering.
    static constexpr qint32 kStatusItemNotFound = -25300;
    static constexpr qint32 kStatusNotAvailable = -25291;       // no keyring on this computer
    static constexpr qint32 kStatusAuthFailed = -25293;         // the keyring refused
    static constexpr qint32 kStatusInteractionNotAllowed = -25308; // the keyring stayed locked
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

    using ReadBlock = std::function<void(const std::optional<QString> &password, const std::optional<KeychainError> &error)>;
    using SaveBlock = std::function<void(const std::optional<KeychainError> &error)>;
    using StillWaiting = std::function<void()>;

    KeychainPasswordItem(SecureStore &store, QString service, QString account,
                         std::optional<QString> accessGroup = std::nullopt);

    [[nodiscard]] QString service() const { return m_service; }
    [[nodiscard]] QString account() const { return m_account; }
    [[nodiscard]] std::optional<QString> accessGroup() const { return m_accessGroup; }

    // The item may be a temporary: the calls keep what they need, not the item.
    void readPasswordInBackground(ReadBlock block, StillWaiting stillWaiting = {}) const;
    // Reads first: replaces the data of an item that is there, adds one when there is none, and
    // passes any other failure of the read on without writing.
    void savePasswordInBackground(const QString &password, SaveBlock block, StillWaiting stillWaiting = {}) const;

    // The old, blocking way, kept only until the sign-in screens have moved to the calls above:
    // each waits for the store in a nested event loop (as long as the store takes). Nothing in
    // the client library, the platform layer or the app's start-up calls them.
    [[nodiscard]] std::optional<QString> readPassword(std::optional<KeychainError> *error = nullptr) const;
    bool savePassword(const QString &password, std::optional<KeychainError> *error = nullptr) const;

private:
    // The store has no access groups of its own; an item with a group lives under its own
    // service name so that it never meets the items without one.
    [[nodiscard]] QString storeService() const;

    SecureStore *m_store;
    QString m_service;
    QString m_account;
    std::optional<QString> m_accessGroup;
};
