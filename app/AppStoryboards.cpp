#include "AppStoryboards.h"

#include "AccountScenes.h"
#include "AppConfiguration.h"
#include "ShellScenes.h"
#include "Storyboard.h"
#include "app/ViewController.h"
#include "ui/NavigationController.h"

namespace {

ui::SceneDefinition startScene()
{
    return {[] { return new ViewController; }, QUrl(QStringLiteral("qrc:/qt/qml/Vantrel/App/StartView.qml"))};
}

// The signed-in shell: the reveal container, the side menu behind it and, in front, the
// start-up screen in its navigation controller until the profile hub lands.
void addShellScenes(ui::StoryboardDefinition &menu, const AppConfiguration &configuration)
{
    const QString sideMenu = QStringLiteral("sideMenu");
    const QString front = QStringLiteral("front");
    MenuSettings settings;
    settings.contactPage = configuration.sitePage(QStringLiteral("contactUs.htm"));
    menu.scenes.insert(AppStoryboards::kMenuIdentifier, ShellScenes::revealScene(sideMenu, front));
    menu.scenes.insert(sideMenu, ShellScenes::menuScene(settings, {}));
    ui::SceneDefinition navigation;
    navigation.create = [] { return new ui::NavigationController; };
    navigation.root = AppStoryboards::kStartIdentifier;
    menu.scenes.insert(front, navigation);
    menu.scenes.insert(AppStoryboards::kStartIdentifier, startScene());
}

} // namespace

namespace AppStoryboards {

void registerAll(const AppConfiguration &configuration)
{
    // The main storyboard starts with the sign-in; the start-up screen stays registered in it.
    ui::StoryboardDefinition main;
    main.initialIdentifier = kLoginIdentifier;
    main.scenes.insert(kStartIdentifier, startScene());
    AccountScenes::addTo(main);
    ui::Storyboard::registerStoryboard(kMain, main);

    // Signing out presents this storyboard's "login".
    ui::StoryboardDefinition registration;
    registration.initialIdentifier = kLoginIdentifier;
    AccountScenes::addTo(registration);
    ui::Storyboard::registerStoryboard(kRegistration, registration);

    ui::StoryboardDefinition menu;
    menu.initialIdentifier = kMenuIdentifier;
    addShellScenes(menu, configuration);
    ui::Storyboard::registerStoryboard(kMenu, menu);
}

} // namespace AppStoryboards
