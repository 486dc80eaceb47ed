#pragma once

#include "PFSecureStorage.h"

#include <QObject>
#include <QString>

namespace QKeychain {
class Job;
}

// The system's secure credential store (the Secret Service on Linux, through QtKeychain).
// Items are addressed by service and account. The insecure clear-text fallback of QtKeychain
// is never enabled.
//
// Every call is asynchronous: its completion runs later on the main thread. Nothing gives up
// on a slow store: a locked keyring whose unlock prompt the user answers after a minute still
// completes the call. A caller that wants to say "waiting for the keyring" passes a
// `stillWaiting` callback, run once when the store has not answered within slowAfterMs().
// The outcomes a caller can tell apart: Ok, NotFound, Locked (the keyring stayed locked),
// Unavailable (no Secret Service, or no keyring in it), Denied, Failed.
class SecureStore : public QObject, public PFSecureStorage {
    Q_OBJECT
public:
    using StillWaiting = std::function<void()>;

    // `service` names the items PFSecureStorage reads and writes (the account is the key).
    explicit SecureStore(QString service, QObject *parent = nullptr);

    [[nodiscard]] int slowAfterMs() const { return m_slowAfterMs; }
    void setSlowAfterMs(int ms) { m_slowAfterMs = ms; }

    void read(const QString &service, const QString &account, Completion done, StillWaiting stillWaiting = {});
    void write(const QString &service, const QString &account, const QByteArray &data, Completion done = {},
               StillWaiting stillWaiting = {});
    // Removing an item that is not there succeeds.
    void remove(const QString &service, const QString &account, Completion done = {}, StillWaiting stillWaiting = {});

    // PFSecureStorage: the items of the service given at construction.
    void readSecret(const QString &key, Completion done) override;
    void writeSecret(const QString &key, const QByteArray &value, Completion done) override;
    void removeSecret(const QString &key, Completion done) override;

private:
    enum class Operation { Read, Write, Remove };
    void run(QKeychain::Job *job, Operation operation, Completion done, StillWaiting stillWaiting);
    // A read that found nothing in a locked keyring, or a write it refused, says Locked.
    void checkLocked(Result result, Completion done);
    void deliver(const Completion &done, const Result &result);

    QString m_service;
    int m_slowAfterMs = 2000;
};
