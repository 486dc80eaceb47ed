#include "DefaultPasswordViewController.h"

#include "AccountServices.h"
#include "AccountsLogging.h"
#include "AlertController.h"
#include "NavigationController.h"
#include "OneButtonAlert.h"
#include "PFError.h"
#include "PasswordRules.h"
#include "StoryboardSegue.h"
#include "User.h"
#include "UserDefaults.h"

DefaultPasswordViewController::DefaultPasswordViewController(QObject *parent)
    : ui::ViewController(parent), m_confirmButton(new ui::Button(QStringLiteral("confirmButton"), this)),
      m_exitButton(new ui::Button(QStringLiteral("exitButton"), this)), m_loadingSpinner(new ActivitySpinner(this))
{
    setTitle(QStringLiteral("Change Password"));
    m_confirmButton->setTitle(QStringLiteral("Confirm"));
    m_confirmButton->setBackgroundColor(QColor(49, 187, 234));
    m_confirmButton->setTitleColor(Qt::white);
    m_exitButton->setBackgroundColor(Qt::transparent);
    m_exitButton->setTitle(QStringLiteral("Exit"));
    connect(m_confirmButton, &ui::Button::clicked, this, &DefaultPasswordViewController::confirmButton_Click);
    connect(m_exitButton, &ui::Button::clicked, this, &DefaultPasswordViewController::exitButton_Click);
}

void DefaultPasswordViewController::viewDidLoad()
{
    ui::ViewController::viewDidLoad();
    navigationItem()->setHidesBackButton(true, true);
    m_confirmButton->setCornerRadius(10);
    m_exitButton->setCornerRadius(10);
}

void DefaultPasswordViewController::prepareForSegue(ui::StoryboardSegue *segue, QObject *sender)
{
    ui::ViewController::prepareForSegue(segue, sender);
    if (segue->identifier() == QLatin1String("Table"))
        m_passwordTable = qobject_cast<DefaultPasswordTableViewController *>(segue->destinationViewController());
}

void DefaultPasswordViewController::confirmButton_Click()
{
    m_loadingSpinner->show(view());
    changePassword();
}

void DefaultPasswordViewController::changePassword()
{
    const auto user = std::dynamic_pointer_cast<User>(PFUser::currentUser());
    if (!user)
        return;
    const QString password = m_passwordTable ? m_passwordTable->passwordTextField()->text() : QString();
    if (!PasswordRules::isStrong(password)) {
        // The spinner keeps running here; the person tries again over it.
        OneButtonAlert::show(this, QStringLiteral("Admin"),
                             QStringLiteral("Sorry something appears to have gone wrong.  Please re-enter your new password."),
                             QStringLiteral("Ok"));
        return;
    }
    user->setPassword(password);
    user->setDoesPasswordRequireToBeChanged(false);

    // Saved for the fingerprint sign-in before the backend has the new password, and kept
    // even if the backend save then fails.
    const QString workEmail = user->workEmail();
    if (workEmail.isEmpty())
        qFatal("A user changing the password has no work e-mail address");
    // Under the name the sign-in saved ("username"), where the fingerprint sign-in reads it.
    const AccountServices &services = AccountServices::current();
    UserDefaults *defaults = services.userDefaults ? services.userDefaults : UserDefaults::standardUserDefaults();
    const QString account = defaults->stringForKey(QStringLiteral("username"));
    std::optional<KeychainPasswordItem::KeychainError> keychainError;
    if (!services.passwordItem(account).savePassword(password, &keychainError))
        qFatal("%s", qPrintable(QStringLiteral("Error updating keychain - ") + keychainError->localizedDescription()));
    defaults->setBool(true, QStringLiteral("hasLoginKey"));

    QPointer<DefaultPasswordViewController> self(this);
    user->saveInBackgroundWithBlock([self](bool succeeded, const PFError *error) {
        if (!self)
            return;
        self->m_loadingSpinner->actInd()->stopAnimating();
        if (!succeeded) {
            qCInfo(lcAccounts) << "the new password was not saved:"
                               << (error ? error->localizedDescription() : QString());
            OneButtonAlert::show(self, QStringLiteral("Admin"),
                                 QStringLiteral("Sorry something appears to have gone wrong.  Please try again."),
                                 QStringLiteral("Ok"));
            return;
        }
        OneButtonAlert::show(self, QStringLiteral("Success"),
                             QStringLiteral("You have succesfully changed your password.  You will now be allowed to login using Face ID / Touch ID.  Thank you."),
                             QStringLiteral("OK"), ui::AlertAction::Style::Default,
                             [self](ui::AlertAction *) {
                                 if (self)
                                     self->popToLogin();
                             });
    });
}

void DefaultPasswordViewController::exitButton_Click()
{
    auto *alert = ui::AlertController::alertControllerWithTitle(
        QStringLiteral("Warning"),
        QStringLiteral("Please confirm that you wish to exit this page.  Your passwords will not be saved and you will have to go through this process again."),
        ui::AlertController::Style::Alert);
    alert->addAction(ui::AlertAction::actionWithTitle(QStringLiteral("Stay On Page"), ui::AlertAction::Style::Default));
    QPointer<DefaultPasswordViewController> self(this);
    alert->addAction(ui::AlertAction::actionWithTitle(QStringLiteral("EXIT"), ui::AlertAction::Style::Destructive,
                                                      [self](ui::AlertAction *) {
                                                          if (self)
                                                              self->popToLogin();
                                                      }));
    presentViewController(alert, true);
    if (!alert->parent())
        delete alert;
}

void DefaultPasswordViewController::popToLogin()
{
    if (ui::NavigationController *navigation = navigationController())
        navigation->popToRootViewControllerAnimated(true);
}
