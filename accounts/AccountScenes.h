#pragma once

#include "RegistrationSettings.h"
#include "Storyboard.h"

// The sign-in's scenes, for the storyboards that show it ("Main" starts with it, "Registration"
// shows it after a sign-out). "login" is a navigation stack whose first screen is the sign-in
// page; the information page, the registration and the forced password change are pushed onto it.
namespace AccountScenes {
inline const QString kLogin = QStringLiteral("login");
inline const QString kLoginPage = QStringLiteral("loginPage");
inline const QString kInformation = QStringLiteral("information");
inline const QString kDefaultPassword = QStringLiteral("defaultPassword");
inline const QString kDefaultPasswordTable = QStringLiteral("defaultPasswordTable");
inline const QString kPasswordChange = QStringLiteral("passwordChange");
inline const QString kRegistration = QStringLiteral("registration");

// Adds the sign-in, the information page, the registration and both password changes to a
// storyboard. The registration opens its terms page from the settings.
void addTo(ui::StoryboardDefinition &storyboard, const RegistrationSettings &registration = {});
} // namespace AccountScenes
