#include "ProfileScenes.h"

#include "AccountScenes.h"
#include "MasterProfileViewController.h"
#include "NavigationController.h"
#include "ProfileTableViewController.h"

namespace {
QUrl view(const char *file)
{
    return QUrl(QStringLiteral("qrc:/qt/qml/Vantrel/Profile/") + QLatin1String(file));
}
} // namespace

namespace ProfileScenes {

void addTo(ui::StoryboardDefinition &storyboard)
{
    using Kind = ui::StoryboardSegue::Kind;
    storyboard.scenes.insert(kProfile, {[] { return new ui::NavigationController; }, {}, {}, kMasterProfile});
    storyboard.scenes.insert(kMasterProfile, {[] { return new MasterProfileViewController; },
                                              view("MasterProfilePage.qml"),
                                              {{MasterProfileViewController::kTableSegue, {Kind::Embed, kProfileTable}},
                                               {MasterProfileViewController::kChangePasswordSegue,
                                                {Kind::Push, AccountScenes::kPasswordChange}}}});
    storyboard.scenes.insert(kProfileTable, {[] { return new ProfileTableViewController; }, view("ProfileTable.qml")});

    // The password change is the sign-in's own scene.
    ui::StoryboardDefinition accounts;
    AccountScenes::addTo(accounts);
    storyboard.scenes.insert(AccountScenes::kPasswordChange, accounts.scenes.value(AccountScenes::kPasswordChange));
}

} // namespace ProfileScenes
