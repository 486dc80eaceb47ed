#include "AppStoryboards.h"

#include "AccountScenes.h"
#include "AppConfiguration.h"
#include "ProfileScenes.h"
#include "ShellScenes.h"
#include "Storyboard.h"
#include "app/ViewController.h"

namespace {

ui::SceneDefinition startScene()
{
    return {[] { return new ViewController; }, QUrl(QStringLiteral("qrc:/qt/qml/Vantrel/App/StartView.qml"))};
}

// The signed-in shell: the reveal container, the side menu behind it and, in front, the
// profile hub in its navigation controller; the menu's first row leads back to it.
void addShellScenes(ui::StoryboardDefinition &menu, const AppConfiguration &configuration)
{
    const QString sideMenu = QStringLiteral("sideMenu");
    MenuSettings settings;
    settings.contactPage = configuration.sitePage(QStringLiteral("contactUs.htm"));
    menu.scenes.insert(AppStoryboards::kMenuIdentifier, ShellScenes::revealScene(sideMenu, ProfileScenes::kProfile));
    menu.scenes.insert(sideMenu,
                       ShellScenes::menuScene(settings, {{QStringLiteral("menuProfile"), ProfileScenes::kProfile}}));
    ProfileScenes::addTo(menu);
}

} // namespace

namespace AppStoryboards {

void registerAll(const AppConfiguration &configuration)
{
    const RegistrationSettings registrationSettings = RegistrationSettings::fromConfiguration(configuration);

    // The main storyboard starts with the sign-in; the start-up screen stays registered in it.
    ui::StoryboardDefinition main;
    main.initialIdentifier = kLoginIdentifier;
    main.scenes.insert(kStartIdentifier, startScene());
    AccountScenes::addTo(main, registrationSettings);
    ui::Storyboard::registerStoryboard(kMain, main);

    // Signing out presents this storyboard's "login".
    ui::StoryboardDefinition registration;
    registration.initialIdentifier = kLoginIdentifier;
    AccountScenes::addTo(registration, registrationSettings);
    ui::Storyboard::registerStoryboard(kRegistration, registration);

    ui::StoryboardDefinition menu;
    menu.initialIdentifier = kMenuIdentifier;
    addShellScenes(menu, configuration);
    ui::Storyboard::registerStoryboard(kMenu, menu);
}

} // namespace AppStoryboards
