#pragma once

#include <QString>

class AppConfiguration;

// The app's storyboards and their screens. Each feature adds its scenes here as it lands.
namespace AppStoryboards {
inline const QString kMain = QStringLiteral("Main");
inline const QString kMenu = QStringLiteral("Menu");
inline const QString kRegistration = QStringLiteral("Registration");

inline const QString kStartIdentifier = QStringLiteral("start");
inline const QString kMenuIdentifier = QStringLiteral("menu");
inline const QString kLoginIdentifier = QStringLiteral("login");

// The configuration gives the screens that need them the operator's pages.
void registerAll(const AppConfiguration &configuration);
} // namespace AppStoryboards
