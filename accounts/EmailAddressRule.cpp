#include "EmailAddressRule.h"

#include "OneButtonAlert.h"

#include <QRegularExpression>

bool EmailAddressRule::isValid(const QString &text)
{
    // Anchored at both ends: the whole text must match, not a part of it, as a "SELF MATCHES %@"
    // predicate tests it.
    static const QRegularExpression rule(
        QRegularExpression::anchoredPattern(QStringLiteral("[A-Z0-9a-z._%+-]+@[A-Za-z0-9.-]+\\.[A-Za-z]{2,64}")));
    return rule.match(text).hasMatch();
}

bool EmailAddressRule::alertIfInvalid(ui::ViewController *screen, const QString &text)
{
    if (isValid(text))
        return true;
    // clang-format off
    OneButtonAlert::show(screen, QStringLiteral("Error"), QStringLiteral("Please ensure you have entered a valid email address, as this will be used to send you critical information"), QStringLiteral("Ok"));
    // clang-format on
    return false;
}
