#pragma once

#include "MenuSettings.h"

#include "ui/Storyboard.h"

#include <QMap>

// Storyboard scenes of the navigation shell, for the app's "Menu" storyboard.
class ShellScenes {
public:
    // The reveal container whose segues "reveal_rear", "reveal_front" and "reveal_right"
    // lead to the named scenes (an empty name leaves that segue out).
    [[nodiscard]] static ui::SceneDefinition revealScene(const QString &rearScene, const QString &frontScene,
                                                         const QString &rightScene = {});
    // The side menu; rowDestinations maps a row's segue (MenuController::segueForRow) to the
    // scene it pushes to the front. Rows without a destination are shown disabled.
    [[nodiscard]] static ui::SceneDefinition menuScene(const MenuSettings &settings,
                                                       const QMap<QString, QString> &rowDestinations);
};
