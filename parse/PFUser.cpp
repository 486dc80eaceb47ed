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

void PFUser::logInWithUsernameInBackground(const QString &username, const QString &password, PFUserResultBlock block)
{
    ParseCore *core = Parse::core();
    if (!core) {
        PFDispatch::later([block] {
            const PFError error = PFError::notInitialized();
            if (block)
                block(nullptr, &error);
        });
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
        PFDispatch::later([block] {
            const PFError error = PFError::notInitialized();
            if (block)
                block(false, &error);
        });
        return;
    }
    core->userController().requestPasswordReset(email, std::move(block));
}

void PFUser::signUpInBackgroundWithBlock(PFBooleanResultBlock block)
{
    ParseCore *core = Parse::core();
    auto self = std::dynamic_pointer_cast<PFUser>(weak_from_this().lock());
    if (!core || !self) {
        PFDispatch::later([block] {
            const PFError error = PFError::notInitialized();
            if (block)
                block(false, &error);
        });
        return;
    }
    core->userController().signUp(self, std::move(block));
}

void PFUser::objectDidSave()
{
    ParseCore *core = Parse::core();
    if (core && core->currentUserController().currentUser().get() == this)
        core->currentUserController().persist();
}
