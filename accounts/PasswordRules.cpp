#include "PasswordRules.h"

#include <QRegularExpression>

bool PasswordRules::isStrong(const QString &password)
{
    // Matched against the whole text, never searched for inside it. `.` takes every character
    // but a line break, so a password with a line break in it is not strong.
    static const QRegularExpression rule(
        QRegularExpression::anchoredPattern(QStringLiteral("(?=.*[A-Z])(?=.*[0-9])(?=.*[a-z]).{8,}")));
    return rule.match(password).hasMatch();
}
