#pragma once

#include "PFTypes.h"

class PFDataStore;
class PFSecureStorage;

// Keeps the signed-in user across restarts: the record in a user-only file of the data
// directory, the session token in the secure storage and nowhere else. Without secure storage
// the session lasts only while the program runs.
class PFCurrentUserController {
public:
    PFCurrentUserController(PFDataStore &store, PFSecureStorage *secureStorage, const QString &applicationId);

    [[nodiscard]] PFUserPtr currentUser();
    [[nodiscard]] QString sessionToken();
    void setCurrentUser(const PFUserPtr &user);
    // Writes the current user's record again (after it was saved).
    void persist();
    void clear();

    [[nodiscard]] static QString fileName() { return QStringLiteral("currentUser.json"); }

private:
    void load();
    PFDataStore &m_store;
    PFSecureStorage *m_secureStorage;
    QString m_secretKey;
    bool m_loaded = false;
    PFUserPtr m_user;
};
