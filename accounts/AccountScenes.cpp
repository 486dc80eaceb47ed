#include "AccountScenes.h"

#include "DefaultPasswordTableViewController.h"
#include "DefaultPasswordViewController.h"
#include "InformationViewController.h"
#include "LoginPageTableViewController.h"
#include "NavigationController.h"
#include "PasswordChangeTableViewController.h"
#include "RegistrationTableViewController.h"

namespace {
QUrl view(const char *file)
{
    return QUrl(QStringLiteral("qrc:/qt/qml/Vantrel/Accounts/") + QLatin1String(file));
}
} // namespace

namespace AccountScenes {

void addTo(ui::StoryboardDefinition &storyboard, const RegistrationSettings &registration)
{
    using Kind = ui::StoryboardSegue::Kind;
    storyboard.scenes.insert(kLogin, {[] { return new ui::NavigationController; }, {}, {}, kLoginPage});
    storyboard.scenes.insert(kLoginPage, {[] { return new LoginPageTableViewController; }, view("LoginPage.qml"),
                                          {{QStringLiteral("information"), {Kind::Push, kInformation}},
                                           {QStringLiteral("PasswordChange"), {Kind::Push, kDefaultPassword}},
                                           {QStringLiteral("register"), {Kind::Push, kRegistration}}}});
    storyboard.scenes.insert(kInformation,
                             {[] { return new InformationViewController; }, view("InformationPage.qml")});
    storyboard.scenes.insert(kDefaultPassword, {[] { return new DefaultPasswordViewController; },
                                                view("DefaultPasswordPage.qml"),
                                                {{QStringLiteral("Table"), {Kind::Embed, kDefaultPasswordTable}}}});
    storyboard.scenes.insert(kDefaultPasswordTable, {[] { return new DefaultPasswordTableViewController; },
                                                     view("DefaultPasswordForm.qml")});
    storyboard.scenes.insert(kRegistration, {[registration] { return new RegistrationTableViewController(registration); },
                                             view("RegistrationPage.qml")});
    storyboard.scenes.insert(kPasswordChange, {[] { return new PasswordChangeTableViewController; },
                                               view("PasswordChangePage.qml")});
}

} // namespace AccountScenes
