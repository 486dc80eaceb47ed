#include "ShellScenes.h"

#include "MenuController.h"
#include "RevealViewController.h"
#include "RevealViewControllerSeguePushController.h"
#include "RevealViewControllerSegueSetController.h"

ui::SceneDefinition ShellScenes::revealScene(const QString &rearScene, const QString &frontScene,
                                             const QString &rightScene)
{
    QMap<QString, ui::SegueDefinition> segues;
    const std::pair<QString, QString> wanted[] = {
        {RevealViewController::kRearSegue, rearScene},
        {RevealViewController::kFrontSegue, frontScene},
        {RevealViewController::kRightSegue, rightScene},
    };
    for (const auto &[segue, scene] : wanted) {
        if (!scene.isEmpty())
            segues.insert(segue, RevealViewControllerSegueSetController::segueTo(scene));
    }
    const QStringList identifiers = segues.keys();
    ui::SceneDefinition scene;
    scene.create = [identifiers] {
        auto *reveal = new RevealViewController;
        reveal->setStoryboardSegues(identifiers);
        return reveal;
    };
    scene.segues = segues;
    return scene;
}

ui::SceneDefinition ShellScenes::menuScene(const MenuSettings &settings, const QMap<QString, QString> &rowDestinations)
{
    QMap<QString, ui::SegueDefinition> segues;
    for (auto it = rowDestinations.cbegin(); it != rowDestinations.cend(); ++it)
        segues.insert(it.key(), RevealViewControllerSeguePushController::segueTo(it.value()));
    const QStringList identifiers = segues.keys();
    ui::SceneDefinition scene;
    scene.create = [settings, identifiers] {
        auto *menu = new MenuController(settings);
        menu->setStoryboardSegues(identifiers);
        return menu;
    };
    scene.segues = segues;
    return scene;
}
