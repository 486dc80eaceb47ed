#include "AppStoryboards.h"

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
    // Until the sign-in and the side menu land, both entries lead to the start-up screen; the
    // launch decision is made by identifier, so it does not change when they do.
    ui::StoryboardDefinition main;
    main.initialIdentifier = kStartIdentifier;
    main.scenes.insert(kStartIdentifier, startScene());
    ui::Storyboard::registerStoryboard(kMain, main);

    ui::StoryboardDefinition menu;
    menu.initialIdentifier = kMenuIdentifier;
    menu.scenes.insert(kMenuIdentifier, startScene());
    ui::Storyboard::registerStoryboard(kMenu, menu);
}

} // namespace AppStoryboards
