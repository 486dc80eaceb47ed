#pragma once

#include "PFSecureStorage.h"

#include <QByteArray>
#include <QString>

// The system's secure credential store (the Secret Service on Linux, through QtKeychain).
// Items are addressed by service and account. Calls block briefly on a local event loop,
// because the callers (start-up, the login flow) need the answer before they go on.
// The insecure clear-text fallback of QtKeychain is never enabled.
class SecureStore : public PFSecureStorage {
public:
    enum class Status {
        Ok,
        NotFound,     // no item for this service and account
        AccessDenied, // the user or the store refused
        Unavailable,  // no store on this machine, or it cannot be reached
        Failed,       // anything else
    };
    struct Result {
        Status status = Status::Failed;
        QByteArray data;     // the item's data when status is Ok and it was a read
        int code = 0;        // the store's own error code (QKeychain::Error)
        QString errorString; // the store's own words, for diagnostics
        [[nodiscard]] bool ok() const { return status == Status::Ok; }
    };

    // `service` names the items PFSecureStorage reads and writes (the account is the key).
    explicit SecureStore(QString service, int timeoutMs = 10000);

    [[nodiscard]] Result read(const QString &service, const QString &account) const;
    Result write(const QString &service, const QString &account, const QByteArray &data) const;
    Result remove(const QString &service, const QString &account) const;

    // PFSecureStorage
    [[nodiscard]] std::optional<QByteArray> secret(const QString &key) override;
    bool setSecret(const QString &key, const QByteArray &value) override;
    bool removeSecret(const QString &key) override;

private:
    QString m_service;
    int m_timeoutMs;
};
