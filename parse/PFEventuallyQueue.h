#pragma once

#include "PFTypes.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QObject>
#include <QTimer>

class ParseCommandRunner;
class PFCurrentUserController;
class PFDataStore;
class ParseCommandResult;

// Saves made with saveEventually: an ordered journal in the data directory, replayed one save
// at a time whenever the server can be reached, also after a restart.
//
// Each save belongs to the user who made it and is sent only with that user's session, taken
// from the signed-in user when it is sent (the journal, a plain file, never holds a session).
// A user's saves wait while someone else, or no one, is signed in, and go out at their next
// sign-in on this device. Each save keeps its request id for good: the server answers a retry
// with its first answer, so a save is applied once even when its answer was lost, and a record
// created here learns its id that way too. Until then it has a local id, which later saves
// that refer to it are resolved from when they are sent. A save the server refuses is logged
// with its class and the server's answer and dropped. A save whose session the server has
// ended stays for its user's next sign-in; its block (if any) hears of that at once.
class PFEventuallyQueue : public QObject {
    Q_OBJECT
public:
    PFEventuallyQueue(ParseCommandRunner &runner, PFDataStore &store, PFCurrentUserController &users,
                      int retryIntervalMs, QObject *parent = nullptr);

    void enqueueSave(const PFObjectPtr &object, PFBooleanResultBlock block);
    // Saves not yet applied, of every user.
    [[nodiscard]] int pendingCount() const { return static_cast<int>(m_entries.size()); }
    // Sends the next save that can go now, unless one is under way or the server is unreachable.
    void resume();

    [[nodiscard]] static QString fileName() { return QStringLiteral("eventually.json"); }

Q_SIGNALS:
    // Nothing is left to send.
    void drained();

private:
    void load();
    bool persist();
    [[nodiscard]] qsizetype nextSendable() const;
    void send(qsizetype index);
    void finish(const QString &requestId, const QString &localId, const QString &sessionToken,
                const ParseCommandResult &result);
    void complete(const QString &requestId, const PFError *error);
    [[nodiscard]] bool resolveLocalIds(QJsonValue &value) const;
    void recordCreation(const QString &localId, const ParseCommandResult &result);
    void pruneLocalIds();

    ParseCommandRunner &m_runner;
    PFDataStore &m_store;
    PFCurrentUserController &m_users;
    QJsonArray m_entries;                                   // {requestId, userId, className, objectId | localId, body}
    QJsonObject m_localIds;                                 // local id -> objectId given by the server (null: unknown)
    QHash<QString, PFBooleanResultBlock> m_blocks;          // by request id, this run only
    QHash<QString, std::weak_ptr<PFObject>> m_localObjects; // by local id, this run only
    QString m_endedSession;                                 // a session the server refused: not used again
    bool m_sending = false;
    QTimer m_retryTimer;
};
