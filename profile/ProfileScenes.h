#pragma once

#include "Storyboard.h"

// The profile's scenes, for the app's "Menu" storyboard. "profile" is a navigation stack whose
// first screen is the profile hub; the hub embeds the contact-details table and pushes the
// password change.
namespace ProfileScenes {
inline const QString kProfile = QStringLiteral("profile");
inline const QString kMasterProfile = QStringLiteral("masterProfile");
inline const QString kProfileTable = QStringLiteral("profileTable");

// Adds the hub, its table and the password change it leads to.
void addTo(ui::StoryboardDefinition &storyboard);
} // namespace ProfileScenes
