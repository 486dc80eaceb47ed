#pragma once

#include "PFError.h"
#include "PFSecureStorage.h"
#include "PFTypes.h"

#include <QList>
#include <QObject>

class PFDataStore;

// Keeps the signed-in user across restarts: the record in a user-only file of the data
// directory, the session token in the secure storage and nowhere else.
//
// Reading the remembered user starts with the client and is asynchronous: until the secure
// storage has answered, currentUser() is null and getCurrentUser() waits. A session that
// cannot be kept (no secure storage, or one that is missing, locked or refuses) lasts only
// while the program runs; a store that cannot be read at start-up leaves the remembered user
// in place for a later start, and only a store that answers "no such secret" forgets it.
class PFCurrentUserController : public QObject {
    Q_OBJECT
public:
    PFCurrentUserController(PFDataStore &store, PFSecureStorage *secureStorage, const QString &applicationId,
                            QObject *parent = nullptr);

    // Starts reading the remembered user; the client calls it once at start.
    void load();
    [[nodiscard]] bool isLoaded() const { return m_loaded; }
    // The secure storage has the current user's session, so the next start has them back.
    [[nodiscard]] bool isRemembered() const { return m_remembered; }
    // A session is on its way into the secure storage.
    [[nodiscard]] bool isRemembering() const { return m_remembering; }
    // The current user once it is known (later, through the event loop, also when it already
    // is): null when no one is signed in; null with an error when a remembered user's session
    // could not be read from the secure storage.
    void getCurrentUser(PFUserResultBlock block);

    // The user known now; null before the remembered one has been read.
    [[nodiscard]] PFUserPtr currentUser() const { return m_user; }
    [[nodiscard]] QString sessionToken() const;
    // The user signs in: current at once, remembered once the secure storage holds the session.
    void setCurrentUser(const PFUserPtr &user);
    // Writes the current user's record again (after it was saved), when its session is remembered.
    void persist();
    // Signs out here: forgets the user and its session.
    void clear();

    [[nodiscard]] static QString fileName() { return QStringLiteral("currentUser.json"); }

Q_SIGNALS:
    // Another user, or no one, is current: read at start-up, signed in or signed out.
    void currentUserChanged();

private:
    void finishLoading(const PFUserPtr &user, const std::optional<PFError> &error);
    void remember(const PFUserPtr &user, quint64 generation);

    PFDataStore &m_store;
    PFSecureStorage *m_secureStorage;
    QString m_secretKey;
    bool m_loaded = false;
    bool m_remembered = false;                    // the session of m_user is in the secure storage
    bool m_remembering = false;                   // ...is being written there
    quint64 m_generation = 0;                     // counts the changes of the current user
    std::optional<PFError> m_loadError;           // why a remembered user could not be read
    QList<PFUserResultBlock> m_waiting;           // getCurrentUser calls before loading finished
    PFUserPtr m_user;
};
