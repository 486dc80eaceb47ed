#pragma once

#include <QString>

// The e-mail address rule of the forms that take an address (registration, contact details):
// the whole text must be a plausible address; an empty text fails. The address is checked as
// typed: blanks around it make it fail rather than being trimmed away.
class EmailAddressRule {
public:
    [[nodiscard]] static bool isValid(const QString &text);
};
