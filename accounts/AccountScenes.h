#pragma once

#include "Storyboard.h"

// The sign-in's scenes, for the storyboards that show it ("Main" starts with it, "Registration"
// shows it after a sign-out). "login" is a navigation stack whose first screen is the sign-in
// page; the information page and the forced password change are pushed onto it.
namespace AccountScenes {
inline const QString kLogin = QStringLiteral("login");
inline const QString kLoginPage = QStringLiteral("loginPage");
inline const QString kInformation = QStringLiteral("information");
inline const QString kDefaultPassword = QStringLiteral("defaultPassword");
inline const QString kDefaultPasswordTable = QStringLiteral("defaultPasswordTable");
inline const QString kPasswordChange = QStringLiteral("passwordChange");

// Adds the sign-in, the information page and both password changes to a storyboard.
void addTo(ui::StoryboardDefinition &storyboard);
} // namespace AccountScenes
