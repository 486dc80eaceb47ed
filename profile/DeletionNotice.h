#pragma once

#include <QString>
#include <QVariantMap>

class User;

// The e-mail that tells the operator's administrators a freelancer wants the account deleted,
// sent through the backend's "sendgridEmail" function.
class DeletionNotice {
public:
    [[nodiscard]] static QString functionName();
    [[nodiscard]] static QString subject();
    // A missing name is written as empty text; the blanks around it stay.
    [[nodiscard]] static QString body(const QString &firstName, const QString &lastName, const QString &objectId,
                                      const QString &username);
    // The function's parameters "toEmail", "subject" and "body" for this user.
    [[nodiscard]] static QVariantMap parameters(const User &user, const QString &administratorEmail);
};
