#pragma once

#include "KeychainPasswordItem.h"

#include <QString>

class Biometrics;
class SecureStore;
class UserDefaults;

// What the sign-in screens need from the platform, set once by the app's composition root
// (and by tests, with their own). The screens read it when they are made.
struct AccountServices {
    UserDefaults *userDefaults = nullptr;
    SecureStore *secureStore = nullptr;
    Biometrics *biometrics = nullptr;
    QString administratorEmail;
    QString helpEmail;

    [[nodiscard]] static const AccountServices &current();
    static void setCurrent(const AccountServices &services);

    // The saved-password item of an account: service "Vantrel Pro", no access group.
    [[nodiscard]] KeychainPasswordItem passwordItem(const QString &account) const;
};
