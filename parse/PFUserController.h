#pragma once

#include "PFTypes.h"

class ParseCommandRunner;
class PFObjectController;
class PFCurrentUserController;

// Sign-up, sign-in, sign-out and password reset.
class PFUserController {
public:
    PFUserController(ParseCommandRunner &runner, PFObjectController &objects, PFCurrentUserController &current)
        : m_runner(runner), m_objects(objects), m_current(current)
    {
    }

    void signUp(const PFUserPtr &user, PFBooleanResultBlock block);
    void logIn(const QString &username, const QString &password, PFUserResultBlock block);
    void logOut();
    void requestPasswordReset(const QString &email, PFBooleanResultBlock block);
    void verifySession(PFBooleanResultBlock block);

private:
    ParseCommandRunner &m_runner;
    PFObjectController &m_objects;
    PFCurrentUserController &m_current;
};
