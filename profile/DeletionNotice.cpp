#include "DeletionNotice.h"

#include "User.h"

QString DeletionNotice::functionName()
{
    return QStringLiteral("sendgridEmail");
}

QString DeletionNotice::subject()
{
    return QStringLiteral("Delete Freelancer Profile - Vantrel Message");
}

QString DeletionNotice::body(const QString &firstName, const QString &lastName, const QString &objectId,
                             const QString &username)
{
    const QString opening = QStringLiteral("There is a new request from ");
    // The texts stay whole, one to a line.
    // clang-format off
    const QString request = QStringLiteral(" to delete their profile.  Be sure to delete the user and freelancer objects. \n\nPlease delete any messages where to & from user == ");
    const QString registered = QStringLiteral("\n\nThe user's email address they used to register was ");
    // clang-format on
    return opening + firstName + QLatin1Char(' ') + lastName + request + objectId + registered + username;
}

QVariantMap DeletionNotice::parameters(const User &user, const QString &administratorEmail)
{
    return {{QStringLiteral("toEmail"), administratorEmail},
            {QStringLiteral("subject"), subject()},
            {QStringLiteral("body"), body(user.firstName(), user.lastName(), user.objectId(), user.username())}};
}
