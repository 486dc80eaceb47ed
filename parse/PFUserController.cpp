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
    m_objects.saveObject(user, {}, std::move(block), [this](const PFObjectPtr &object, const QJsonObject &reply) {
        auto signedUp = std::static_pointer_cast<PFUser>(object);
        signedUp->setSessionToken(reply.value(QLatin1String("sessionToken")).toString());
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
            user = std::dynamic_pointer_cast<PFUser>(decoder.decodeObject(PFUser::parseClassName(), result.json));
            const QJsonValue token = result.json.value(QLatin1String("sessionToken"));
            if (decoder.error())
                error = decoder.error();
            else if (!user || !token.isString() || token.toString().isEmpty())
                error = PFError::unreadableReply(result.httpStatus);
            else
                user->setSessionToken(token.toString());
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
