#pragma once

#include "PFObject.h"
#include "PFQuery.h"

// A user account of the backend's built-in user class, and the signed-in user.
class PFUser : public PFObject {
public:
    PFUser();

    [[nodiscard]] static QString parseClassName() { return QStringLiteral("_User"); }
    [[nodiscard]] static PFQuery query() { return PFQuery(parseClassName()); }

    // The signed-in user, remembered across restarts while its session lasts; null when none,
    // and null until the remembered user has been read at start (see getCurrentUserInBackground).
    [[nodiscard]] static PFUserPtr currentUser();
    // The current user once known: at start, after the secure storage has given the remembered
    // session. Null when no one is signed in; null with an error when the session could not be
    // read (the store is missing, locked or refused), in which case the user stays remembered.
    static void getCurrentUserInBackground(PFUserResultBlock block);
    // Asks the server whether the current user's session still holds, and takes the user's
    // record as the server has it now. A session the server refuses (InvalidSessionToken) is
    // forgotten here too; a server that cannot be reached changes nothing.
    static void verifyCurrentUserSessionInBackground(PFBooleanResultBlock block);
    static void logInWithUsernameInBackground(const QString &username, const QString &password,
                                              PFUserResultBlock block);
    // Forgets the signed-in user here and ends its session on the server.
    static void logOut();
    static void requestPasswordResetForEmailInBackground(const QString &email, PFBooleanResultBlock block);

    // Creates the account (username, password and any other keys set) and signs it in.
    void signUpInBackgroundWithBlock(PFBooleanResultBlock block);

    [[nodiscard]] QString username() const { return stringForKey(QStringLiteral("username")); }
    void setUsername(const QString &username) { setObject(username, QStringLiteral("username")); }
    [[nodiscard]] QString email() const { return stringForKey(QStringLiteral("email")); }
    void setEmail(const QString &email) { setObject(email, QStringLiteral("email")); }
    // Write-only: sent with the next save, never kept in the record.
    void setPassword(const QString &password) { setObject(password, QStringLiteral("password")); }

    [[nodiscard]] QString sessionToken() const { return m_sessionToken; }
    void setSessionToken(const QString &token) { m_sessionToken = token; }
    [[nodiscard]] bool isAuthenticated() const { return !m_sessionToken.isEmpty(); }

    // Takes a new session token (the server issues one when the password changes) and keeps
    // the signed-in user's record up to date.
    void objectDidSave(const QVariantMap &reply) override;

private:
    QString m_sessionToken;
};
