#include "PFUser.h"

#include "PFCurrentUserController.h"
#include "PFDispatch.h"
#include "PFError.h"
#include "PFUserController.h"
#include "Parse.h"
#include "ParseCore.h"

PFUser::PFUser() : PFObject(parseClassName()) {}

PFUserPtr PFUser::currentUser()
{
    ParseCore *core = Parse::core();
    return core ? core->currentUserController().currentUser() : nullptr;
}

void PFUser::getCurrentUserInBackground(PFUserResultBlock block)
{
    ParseCore *core = Parse::core();
    if (!core) {
        PFDispatch::failLater(block, PFError::notInitialized(), PFUserPtr());
        return;
    }
    core->currentUserController().getCurrentUser(std::move(block));
}

void PFUser::verifyCurrentUserSessionInBackground(PFBooleanResultBlock block)
{
    ParseCore *core = Parse::core();
    if (!core) {
        PFDispatch::failLater(block, PFError::notInitialized(), false);
        return;
    }
    core->userController().verifySession(std::move(block));
}

void PFUser::logInWithUsernameInBackground(const QString &username, const QString &password, PFUserResultBlock block)
{
    ParseCore *core = Parse::core();
    if (!core) {
        PFDispatch::failLater(block, PFError::notInitialized(), PFUserPtr());
        return;
    }
    core->userController().logIn(username, password, std::move(block));
}

void PFUser::logOut()
{
    if (ParseCore *core = Parse::core())
        core->userController().logOut();
}

void PFUser::requestPasswordResetForEmailInBackground(const QString &email, PFBooleanResultBlock block)
{
    ParseCore *core = Parse::core();
    if (!core) {
        PFDispatch::failLater(block, PFError::notInitialized(), false);
        return;
    }
    core->userController().requestPasswordReset(email, std::move(block));
}

void PFUser::signUpInBackgroundWithBlock(PFBooleanResultBlock block)
{
    ParseCore *core = Parse::core();
    auto self = std::dynamic_pointer_cast<PFUser>(weak_from_this().lock());
    if (!core || !self) {
        PFDispatch::failLater(block, PFError::notInitialized(), false);
        return;
    }
    core->userController().signUp(self, std::move(block));
}

void PFUser::objectDidSave(const QVariantMap &reply)
{
    const QVariant token = reply.value(QStringLiteral("sessionToken"));
    const bool newSession = token.typeId() == QMetaType::QString && !token.toString().isEmpty() &&
                            token.toString() != m_sessionToken;
    if (newSession)
        m_sessionToken = token.toString();
    ParseCore *core = Parse::core();
    if (!core)
        return;
    PFCurrentUserController &current = core->currentUserController();
    const PFUserPtr user = current.currentUser();
    if (user.get() != this)
        return;
    if (newSession)
        current.setCurrentUser(user);
    else
        current.persist();
}
