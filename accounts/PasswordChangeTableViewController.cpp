#include "PasswordChangeTableViewController.h"

#include "AccountsLogging.h"
#include "NavigationController.h"
#include "OneButtonAlert.h"
#include "PFError.h"
#include "Storyboard.h"
#include "User.h"

#include <QPointer>

PasswordChangeTableViewController::PasswordChangeTableViewController(QObject *parent)
    : ui::TableViewController(parent),
      m_newPasswordTextField(new ui::TextField(QStringLiteral("newPasswordTextField"), this)),
      m_confirmPasswordTextField(new ui::TextField(QStringLiteral("confirmPasswordTextField"), this)),
      m_saveButton(new ui::Button(QStringLiteral("saveButton"), this)),
      m_cancelButton(new ui::Button(QStringLiteral("cancelButton"), this)), m_loadingSpinner(new ActivitySpinner(this))
{
    m_newPasswordTextField->setPlaceholder(QStringLiteral("New password"));
    m_newPasswordTextField->setSecureTextEntry(true);
    m_confirmPasswordTextField->setPlaceholder(QStringLiteral("Confirm new password"));
    m_confirmPasswordTextField->setSecureTextEntry(true);
    m_saveButton->setBackgroundColor(Qt::transparent);
    m_saveButton->setTitle(QStringLiteral("Save"));
    m_cancelButton->setBackgroundColor(Qt::transparent);
    m_cancelButton->setTitle(QStringLiteral("Cancel"));
    connect(m_saveButton, &ui::Button::clicked, this, &PasswordChangeTableViewController::saveButton_Click);
    connect(m_cancelButton, &ui::Button::clicked, this, &PasswordChangeTableViewController::cancelButton_Click);
    m_loadingSpinner->holdWhileSpinning({m_saveButton});
}

void PasswordChangeTableViewController::viewDidLoad()
{
    ui::TableViewController::viewDidLoad();
    if (!PFUser::currentUser()) {
        // Signed out meanwhile: back to the sign-in.
        ui::Storyboard *storyboard = ui::Storyboard::storyboardWithName(QStringLiteral("Registration"));
        ui::ViewController *login =
            storyboard ? storyboard->instantiateViewControllerWithIdentifier(QStringLiteral("login")) : nullptr;
        if (login) {
            login->setModalPresentationStyle(ui::ViewController::ModalPresentationStyle::FullScreen);
            presentViewController(login, true);
            if (!login->parent())
                delete login;
        }
    } else {
        navigationItem()->setLargeTitleDisplayMode(ui::NavigationItem::LargeTitleDisplayMode::Never);
    }
    // The title this screen has always carried, although it belongs to another screen.
    setTitle(QStringLiteral("Choose your Freelance Category"));
}

void PasswordChangeTableViewController::saveButton_Click()
{
    if (m_loadingSpinner->isSpinning())
        return;
    m_loadingSpinner->show(view(), QStringLiteral("Saving\u2026"));
    const QString password = m_newPasswordTextField->text();
    if (password.isEmpty() || password != m_confirmPasswordTextField->text()) {
        OneButtonAlert::show(this, QStringLiteral("Error"),
                             QStringLiteral("Please ensure that you have entered a new password and that they match. Please try again"),
                             QStringLiteral("Ok"), ui::AlertAction::Style::Destructive);
        m_loadingSpinner->actInd()->stopAnimating();
        return;
    }
    const auto user = std::dynamic_pointer_cast<User>(PFUser::currentUser());
    if (!user) {
        m_loadingSpinner->actInd()->stopAnimating();
        return;
    }
    user->setPassword(password);
    QPointer<PasswordChangeTableViewController> self(this);
    user->saveInBackgroundWithBlock([self](bool succeeded, const PFError *error) {
        if (!self)
            return;
        self->m_loadingSpinner->actInd()->stopAnimating();
        if (succeeded) {
            OneButtonAlert::show(self, QStringLiteral("Success"), QStringLiteral("Your Password has been changed"),
                                 QStringLiteral("Ok"), ui::AlertAction::Style::Default, [self](ui::AlertAction *) {
                                     if (self)
                                         self->popToRoot();
                                 });
            return;
        }
        qCWarning(lcAccounts) << "the password change was not saved:"
                              << (error ? error->localizedDescription() : QStringLiteral("no reason given"));
        OneButtonAlert::show(self, QStringLiteral("Error"),
                             QStringLiteral("Sorry something has gone wrong.  Check your data signal and try again"),
                             QStringLiteral("Ok"));
    });
}

void PasswordChangeTableViewController::cancelButton_Click()
{
    popToRoot();
}

void PasswordChangeTableViewController::popToRoot()
{
    if (ui::NavigationController *navigation = navigationController())
        navigation->popToRootViewControllerAnimated(true);
}
