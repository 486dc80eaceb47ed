#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

// Where the client library keeps secrets (the current user's session token). The application
// hands in an implementation over the system's secure store; the library never writes a secret
// to a plain file.
//
// Every call is asynchronous: it returns at once and its completion runs later on the main
// thread, never inside the call. A store may take long (its keyring waits for the user to
// unlock it); nothing gives up on it, and nothing waits for it in a nested event loop.
class PFSecureStorage {
public:
    enum class Status {
        Ok,
        NotFound,    // the store answered: there is no such secret
        Locked,      // the store is there but locked, and was not unlocked
        Unavailable, // no store on this machine, or it cannot be reached
        Denied,      // the store or the user refused
        Failed,      // anything else
    };
    struct Result {
        Status status = Status::Failed;
        QByteArray data;     // the secret, for a read that found it
        QString errorString; // the store's own words, for diagnostics (never a secret)
        [[nodiscard]] bool ok() const { return status == Status::Ok; }
    };
    using Completion = std::function<void(const Result &result)>;

    virtual ~PFSecureStorage() = default;
    virtual void readSecret(const QString &key, Completion done) = 0;
    virtual void writeSecret(const QString &key, const QByteArray &value, Completion done) = 0;
    // Removing a secret that is not there succeeds.
    virtual void removeSecret(const QString &key, Completion done) = 0;

    [[nodiscard]] static QString describe(Status status);
};
