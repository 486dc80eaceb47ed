#include "AppStoryboards.h"

#include "AccountScenes.h"
#include "Storyboard.h"
#include "app/ViewController.h"

namespace {

ui::SceneDefinition startScene()
{
    return {[] { return new ViewController; }, QUrl(QStringLiteral("qrc:/qt/qml/Vantrel/App/qml/StartView.qml"))};
}

} // namespace

namespace AppStoryboards {

void registerAll()
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
    menu.scenes.insert(kMenuIdentifier, startScene());
    ui::Storyboard::registerStoryboard(kMenu, menu);
}

} // namespace AppStoryboards
