#pragma once

#include <QString>

namespace ui {
class ViewController;
}

// The e-mail address rule of the forms that take an address (registration, contact details):
// the whole text must be a plausible address; an empty text fails. The address is checked as
// typed: blanks around it make it fail rather than being trimmed away.
class EmailAddressRule {
public:
    [[nodiscard]] static bool isValid(const QString &text);
    // What the forms do when the address field is left: an invalid address gets the "Error"
    // alert on the screen, and the text stays as typed. Returns whether it was valid.
    static bool alertIfInvalid(ui::ViewController *screen, const QString &text);
};
