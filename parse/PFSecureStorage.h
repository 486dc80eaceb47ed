#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

// Where the client library keeps secrets (the current user's session token). The application
// hands in an implementation over the system's secure store; the library never writes a secret
// to a plain file. Calls are synchronous and made on the main thread.
class PFSecureStorage {
public:
    virtual ~PFSecureStorage() = default;
    // The stored secret, or nothing when absent or the store cannot be reached.
    [[nodiscard]] virtual std::optional<QByteArray> secret(const QString &key) = 0;
    // Returns false when the store refused or cannot be reached.
    virtual bool setSecret(const QString &key, const QByteArray &value) = 0;
    virtual bool removeSecret(const QString &key) = 0;
};
