#include "PFUserController.h"

#include "PFCurrentUserController.h"
#include "PFDecoder.h"
#include "PFDispatch.h"
#include "PFLogging.h"
#include "PFObjectController.h"
#include "PFUser.h"
#include "ParseCommandRunner.h"

#include <QCoreApplication>

void PFUserController::signUp(const PFUserPtr &user, PFBooleanResultBlock block)
{
    std::optional<PFError> refusal;
    if (user->username().isEmpty())
        refusal = PFError(PFError::UsernameMissing, QCoreApplication::translate("PFError", "A username is needed."));
    else if (!user->objectForKey(QStringLiteral("password")).isValid())
        refusal = PFError(PFError::PasswordMissing, QCoreApplication::translate("PFError", "A password is needed."));
    else if (!user->objectId().isEmpty())
        refusal =
            PFError(PFError::OtherCause, QCoreApplication::translate("PFError", "The user is signed up already."));
    if (refusal) {
        PFDispatch::failLater(block, *refusal, false);
        return;
    }
    m_objects.saveObject(user, {}, std::move(block), [this](const PFObjectPtr &object, const QVariantMap &reply) {
        auto signedUp = std::static_pointer_cast<PFUser>(object);
        signedUp->setSessionToken(reply.value(QStringLiteral("sessionToken")).toString());
        m_current.setCurrentUser(signedUp);
    });
}

void PFUserController::logIn(const QString &username, const QString &password, PFUserResultBlock block)
{
    m_runner.runCommand(ParseCommand::logIn(username, password), [this, block](const ParseCommandResult &result) {
        std::optional<PFError> error = result.error;
        PFUserPtr user;
        if (!error) {
            PFDecoder decoder;
            const QString token = result.string(QStringLiteral("sessionToken"));
            user = std::dynamic_pointer_cast<PFUser>(decoder.decodeObject(PFUser::parseClassName(), result.json));
            if (decoder.error())
                error = decoder.error();
            else if (!user || token.isEmpty())
                error = PFError::unreadableReply(result.httpStatus, QStringLiteral("no session"));
            else
                user->setSessionToken(token);
        }
        if (error) {
            if (block)
                block(nullptr, &*error);
            return;
        }
        m_current.setCurrentUser(user);
        qCInfo(lcParseUser) << "signed in as" << user->objectId();
        if (block)
            block(user, nullptr);
    });
}

void PFUserController::logOut()
{
    const QString token = m_current.sessionToken();
    m_current.clear();
    if (!token.isEmpty())
        m_runner.runCommand(ParseCommand::logOut(token), [](const ParseCommandResult &result) {
            if (result.error)
                qCInfo(lcParseUser) << "ending the session on the server failed:"
                                    << result.error->localizedDescription();
        });
}

void PFUserController::requestPasswordReset(const QString &email, PFBooleanResultBlock block)
{
    m_runner.runCommand(ParseCommand::requestPasswordReset(email), [block](const ParseCommandResult &result) {
        if (block)
            block(result.succeeded(), result.error ? &*result.error : nullptr);
    });
}

void PFUserController::verifySession(PFBooleanResultBlock block)
{
    const PFUserPtr user = m_current.currentUser();
    if (!user || !user->isAuthenticated()) {
        PFDispatch::failLater(block,
                              PFError(PFError::SessionMissing,
                                      QCoreApplication::translate("PFError", "No one is signed in.")),
                              false);
        return;
    }
    ParseCommand command = ParseCommand::json("GET", QStringLiteral("/users/me"));
    command.sessionToken = user->sessionToken();
    m_runner.runCommand(command, [this, user, block](ParseCommandResult &result) {
        std::optional<PFError> error = result.error;
        if (!error) {
            PFDecoder decoder;
            PFObjectState fresh = user->state();
            decoder.mergeInto(fresh, std::move(result.json));
            if (decoder.error() || fresh.objectId != user->objectId())
                error = decoder.error().value_or(PFError::unreadableReply(result.httpStatus, QStringLiteral("another user")));
            else if (m_current.currentUser() == user)
                user->mutableState() = std::move(fresh);
        }
        if (!error) {
            m_current.persist();
        } else if (error->code() == PFError::InvalidSessionToken && m_current.currentUser() == user) {
            qCInfo(lcParseUser) << "the server ended the remembered session; signed out";
            m_current.clear();
        }
        if (block)
            block(!error, error ? &*error : nullptr);
    });
}
