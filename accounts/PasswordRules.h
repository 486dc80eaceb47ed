#pragma once

#include <QString>

// The password strength rule of sign-in and registration.
class PasswordRules {
public:
    // Strong: the whole text has an upper-case letter A-Z, a digit, a lower-case letter a-z,
    // and at least eight characters of any kind.
    [[nodiscard]] static bool isStrong(const QString &password);
};
