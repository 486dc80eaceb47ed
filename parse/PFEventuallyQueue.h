#pragma once

#include "PFTypes.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QObject>
#include <QTimer>
#include <functional>

class ParseCommandRunner;
class PFDataStore;
class ParseCommandResult;

// Saves made with saveEventually: an ordered journal in the data directory, replayed one save
// at a time whenever the server can be reached, also after a restart. Each save keeps its
// request id for good, so a save the server already applied is not applied again. A record
// created here gets a local id until the server names it; later saves that refer to it are
// resolved to the server's id when they are sent.
class PFEventuallyQueue : public QObject {
    Q_OBJECT
public:
    PFEventuallyQueue(ParseCommandRunner &runner, PFDataStore &store, std::function<QString()> sessionToken,
                      int retryIntervalMs, QObject *parent = nullptr);

    void enqueueSave(const PFObjectPtr &object, PFBooleanResultBlock block);
    [[nodiscard]] int pendingCount() const { return static_cast<int>(m_entries.size()); }
    // Sends the next pending save unless one is under way.
    void resume();

    [[nodiscard]] static QString fileName() { return QStringLiteral("eventually.json"); }

Q_SIGNALS:
    // Nothing is left to send.
    void drained();

private:
    void load();
    bool persist();
    void sendNext();
    void finishFirst(const ParseCommandResult &result, const QString &localId);
    [[nodiscard]] bool resolveLocalIds(QJsonValue &value) const;
    void pruneLocalIds();

    ParseCommandRunner &m_runner;
    PFDataStore &m_store;
    std::function<QString()> m_sessionToken;
    QJsonArray m_entries;                                   // {requestId, className, objectId | localId, body}
    QJsonObject m_localIds;                                 // local id -> objectId given by the server
    QHash<QString, PFBooleanResultBlock> m_blocks;          // by request id, this run only
    QHash<QString, std::weak_ptr<PFObject>> m_localObjects; // by local id, this run only
    bool m_sending = false;
    QTimer m_retryTimer;
};
