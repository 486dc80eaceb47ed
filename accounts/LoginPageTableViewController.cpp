#include "LoginPageTableViewController.h"

#include "AccountServices.h"
#include "AccountsLogging.h"
#include "NavigationController.h"
#include "OneButtonAlert.h"
#include "PFError.h"
#include "PFUser.h"
#include "Storyboard.h"
#include "Toolbar.h"
#include "User.h"
#include "UserDefaults.h"

#include <QPointer>

namespace {
const auto kRememberMe = QStringLiteral("rememberMe");
const auto kUsername = QStringLiteral("username");
const auto kHasLoginKey = QStringLiteral("hasLoginKey");
const auto kVersionNumber = QStringLiteral("version_number");
const auto kDeviceToken = QStringLiteral("deviceToken");
// The backend's "operation forbidden", its answer to the sign-in of a refused account.
constexpr int kAccountRefusedByBackend = 119;
} // namespace

LoginPageTableViewController::LoginPageTableViewController(QObject *parent)
    : ui::TableViewController(parent),
      m_userNameTextField(new ui::TextField(QStringLiteral("userNameTextField"), this)),
      m_passwordTextField(new ui::TextField(QStringLiteral("passwordTextField"), this)),
      m_forgotPasswordButton(new ui::Button(QStringLiteral("forgotPasswordButton"), this)),
      m_loginButton(new ui::Button(QStringLiteral("loginButton"), this)),
      m_loginWithBiometricsButton(new ui::Button(QStringLiteral("loginWithBiometricsButton"), this)),
      m_registerButton(new ui::Button(QStringLiteral("registerButton"), this)),
      m_informationButton(new ui::Button(QStringLiteral("informationButton"), this)),
      m_versionLabel(new ui::Label(QStringLiteral("versionLabel"), this)),
      m_rememberMeSwitch(new ui::Switch(QStringLiteral("rememberMeSwitch"), this)),
      m_loadingSpinner(new ActivitySpinner(this)),
      m_touchID(new BiometricIDAuth(AccountServices::current().biometrics, this))
{
    // One sign-in at a time: these take no presses while one runs.
    m_loadingSpinner->holdWhileSpinning({m_loginButton, m_loginWithBiometricsButton, m_registerButton});
    m_userNameTextField->setPlaceholder(QStringLiteral("Email address"));
    m_userNameTextField->setKeyboardType(ui::TextInput::KeyboardType::EmailAddress);
    m_passwordTextField->setPlaceholder(QStringLiteral("Password"));
    m_passwordTextField->setSecureTextEntry(true);
    m_passwordTextField->setReturnKeyType(ui::TextInput::ReturnKeyType::Go);
    m_passwordTextField->setTag(kPasswordFieldTag);
    m_forgotPasswordButton->setTitle(QStringLiteral("Forgot password?"));
    m_loginButton->setTitle(QStringLiteral("Login"));
    m_registerButton->setTitle(QStringLiteral("Register"));
    m_informationButton->setTitle(QStringLiteral("Information"));
    m_loginWithBiometricsButton->setHidden(true);
    // Plain text buttons: only the login button is filled (its view draws that).
    for (ui::Button *button :
         {m_forgotPasswordButton, m_loginWithBiometricsButton, m_registerButton, m_informationButton})
        button->setBackgroundColor(Qt::transparent);

    connect(m_loginButton, &ui::Button::clicked, this, &LoginPageTableViewController::loginButton_Click);
    connect(m_loginWithBiometricsButton, &ui::Button::clicked, this,
            &LoginPageTableViewController::loginWithBiometricsButton_Click);
    connect(m_rememberMeSwitch, &ui::Switch::valueChanged, this,
            &LoginPageTableViewController::rememberMeSwitch_valueChanged);
    connect(m_forgotPasswordButton, &ui::Button::clicked, this,
            &LoginPageTableViewController::forgotPasswordButton_Click);
    connect(m_registerButton, &ui::Button::clicked, this, &LoginPageTableViewController::registerButton_Click);
    connect(m_informationButton, &ui::Button::clicked, this, &LoginPageTableViewController::informationButton_Click);
    for (ui::TextField *field : {m_userNameTextField, m_passwordTextField})
        connect(field, &ui::TextField::returnPressed, this, [this, field] { textFieldShouldReturn(field); });
    if (Biometrics *reader = m_touchID->context()) {
        connect(reader, &Biometrics::promptChanged, this, [this](const QString &reason, bool visible) {
            m_biometricPromptReason = reason;
            m_biometricPromptVisible = visible;
            Q_EMIT biometricPromptChanged();
        });
    }
}

UserDefaults *LoginPageTableViewController::defaults() const
{
    UserDefaults *defaults = AccountServices::current().userDefaults;
    return defaults ? defaults : UserDefaults::standardUserDefaults();
}

void LoginPageTableViewController::viewDidAppear(bool animated)
{
    ui::TableViewController::viewDidAppear(animated);
    m_forgotPasswordButton->setContentHorizontalAlignment(Qt::AlignLeft);
    m_loginButton->setCornerRadius(10);
    m_registerButton->setCornerRadius(10);

    navigationItem()->setHidesBackButton(true, true);
    setUpBiometricButton();
    navigationItem()->setLargeTitleDisplayMode(ui::NavigationItem::LargeTitleDisplayMode::Never);
    setTitle(QStringLiteral("Vantrel PRO Login"));

    m_versionLabel->setText(QStringLiteral("version ") + defaults()->stringForKey(kVersionNumber) +
                            QStringLiteral(" alpha"));
    stopSpinner();

    for (ui::TextField *field : {m_userNameTextField, m_passwordTextField}) {
        if (!field->inputAccessoryView())
            field->setInputAccessoryView(ui::Toolbar::doneToolbar(field, [this] { doneButtonAction(); }));
    }

    const bool rememberMe = defaults()->boolForKey(kRememberMe);
    m_rememberMeSwitch->setOn(rememberMe, true);
    if (rememberMe)
        prefill();
}

void LoginPageTableViewController::viewDidDisappear(bool animated)
{
    ui::TableViewController::viewDidDisappear(animated);
    m_passwordTextField->setText({});
    stopSpinner();
}

void LoginPageTableViewController::setUpBiometricButton()
{
    const bool available = m_touchID->canEvaluatePolicy();
    m_loginWithBiometricsButton->setHidden(!(available && defaults()->boolForKey(kHasLoginKey)));
    switch (m_touchID->biometricType()) {
    case BiometricIDAuth::BiometricType::faceID:
        m_loginWithBiometricsButton->setTitle(QStringLiteral("Login With Face ID"));
        break;
    case BiometricIDAuth::BiometricType::touchID:
    case BiometricIDAuth::BiometricType::none:
        m_loginWithBiometricsButton->setTitle(QStringLiteral("Login With Touch ID"));
        break;
    case BiometricIDAuth::BiometricType::unknown:
        qFatal("The biometric reader is of a kind this app does not know");
    }
}

void LoginPageTableViewController::prefill()
{
    const QVariant stored = defaults()->objectForKey(kUsername);
    if (!stored.isValid()) {
        showAlert(QStringLiteral("Info"),
                  QStringLiteral("Please login using username and password on your first attempt"),
                  QStringLiteral("OK"));
        return;
    }
    if (stored.typeId() != QMetaType::QString)
        qFatal("The saved user name is not text");
    const QString username = stored.toString();
    m_userNameTextField->setText(username);
    const std::optional<QString> password = AccountServices::current().passwordItem(username).readPassword();
    if (!password) {
        showSavedPasswordFailure();
        return;
    }
    m_passwordTextField->setText(*password);
}

void LoginPageTableViewController::loginButton_Click()
{
    if (m_loadingSpinner->isSpinning())
        return;
    showSpinner();
    passwordLogin();
}

void LoginPageTableViewController::loginWithBiometricsButton_Click()
{
    if (m_loadingSpinner->isSpinning())
        return;
    showSpinner();
    biometricLogin();
}

void LoginPageTableViewController::showSpinner()
{
    m_loadingSpinner->show(view(), QStringLiteral("Signing in\u2026"));
}

void LoginPageTableViewController::rememberMeSwitch_valueChanged(bool on)
{
    defaults()->setBool(on, kRememberMe);
    if (!on) {
        m_userNameTextField->setText({});
        m_passwordTextField->setText({});
    }
}

void LoginPageTableViewController::forgotPasswordButton_Click()
{
    const QString email = m_userNameTextField->text();
    if (email.isEmpty()) {
        showAlert(QStringLiteral("Error"), QStringLiteral("Please populate the email address field. field."),
                  QStringLiteral("OK"));
        return;
    }
    QPointer<LoginPageTableViewController> self(this);
    PFUser::requestPasswordResetForEmailInBackground(email, [self](bool succeeded, const PFError *error) {
        if (!self)
            return;
        if (succeeded && !error) {
            self->showAlert(
                QStringLiteral("Success"),
                QStringLiteral("Please check your registered email address for password reset instructions."),
                QStringLiteral("OK"));
        } else if (error) {
            qCInfo(lcAccounts) << "the password reset request failed:" << error->localizedDescription();
        }
    });
}

void LoginPageTableViewController::registerButton_Click()
{
    performSegueWithIdentifier(QStringLiteral("register"), m_registerButton);
}

void LoginPageTableViewController::informationButton_Click()
{
    performSegueWithIdentifier(QStringLiteral("information"), m_informationButton);
}

void LoginPageTableViewController::doneButtonAction()
{
    m_userNameTextField->resignFirstResponder();
    m_passwordTextField->resignFirstResponder();
}

bool LoginPageTableViewController::textFieldShouldReturn(ui::TextField *textField)
{
    // Return signs in as the button does, with the spinner, and not while a sign-in runs.
    if (textField && textField->tag() == kPasswordFieldTag && !m_loadingSpinner->isSpinning()) {
        showSpinner();
        passwordLogin();
    }
    return true;
}

void LoginPageTableViewController::cancelBiometricCheck()
{
    if (Biometrics *reader = m_touchID->context())
        reader->cancel();
}

void LoginPageTableViewController::passwordLogin()
{
    const QString username = m_userNameTextField->text();
    const QString password = m_passwordTextField->text();
    if (username.isEmpty() || password.isEmpty()) {
        showAlert(QStringLiteral("Error"), QStringLiteral("Please enter some log in details."), QStringLiteral("Ok"));
        stopSpinner();
        return;
    }
    logIn(username, password);
}

void LoginPageTableViewController::biometricLogin()
{
    if (!m_touchID->canEvaluatePolicy()) {
        showAlert(QStringLiteral("Error"), QStringLiteral("Touch ID not available"), QStringLiteral("OK"));
        stopSpinner();
        return;
    }
    QPointer<LoginPageTableViewController> self(this);
    m_touchID->authenticateUser([self](std::optional<QString> message) {
        if (!self)
            return;
        if (message) {
            self->showAlert(QStringLiteral("Error"), *message, QStringLiteral("OK"));
            self->stopSpinner();
            return;
        }
        const QVariant stored = self->defaults()->objectForKey(kUsername);
        if (!stored.isValid()) {
            self->showAlert(QStringLiteral("Info"),
                            QStringLiteral("Please login using username and password on your first attempt"),
                            QStringLiteral("OK"));
            self->stopSpinner();
            return;
        }
        const QString username = stored.toString();
        const std::optional<QString> password = AccountServices::current().passwordItem(username).readPassword();
        if (!password) {
            self->showSavedPasswordFailure();
            self->stopSpinner();
            return;
        }
        self->logIn(username, *password);
    });
}

void LoginPageTableViewController::logIn(const QString &username, const QString &password)
{
    m_signInName = username;
    QPointer<LoginPageTableViewController> self(this);
    PFUser::logInWithUsernameInBackground(username, password,
                                          [self, password](const PFUserPtr &user, const PFError *error) {
                                              if (self)
                                                  self->loginCompleted(user, error, password);
                                          });
}

void LoginPageTableViewController::loginCompleted(const PFUserPtr &user, const PFError *error, const QString &password)
{
    Q_UNUSED(user)
    const auto showNotAuthorisedAlert = [this] {
        showAlert(QStringLiteral("Error"),
                  QStringLiteral("Sorry it appears your account has not yet been authorised.  Please contact Vantrel "
                                 "Admin if you are not authorised within 7 days."),
                  QStringLiteral("Ok"));
        stopSpinner();
        m_userNameTextField->setText({});
        m_passwordTextField->setText({});
    };
    // The backend refuses the sign-in of an account that is not authorised (or asked to be
    // deleted) with "operation forbidden": the user sees the same alert as when the app refuses it.
    if (error && error->code() == kAccountRefusedByBackend) {
        showNotAuthorisedAlert();
        return;
    }
    if (error) {
        showAlert(QStringLiteral("Error"),
                  QStringLiteral("Sorry there seems to be a problem.\n\n ") + error->localizedDescription() +
                      QStringLiteral("\n\nPlease try again later."),
                  QStringLiteral("Ok"));
        stopSpinner();
        return;
    }
    // The field's text, as it is now: after a fingerprint sign-in with remember-me off it is empty.
    defaults()->setObject(m_userNameTextField->text(), kUsername);

    const auto current = std::dynamic_pointer_cast<User>(PFUser::currentUser());
    if (!current) {
        stopSpinner();
        return;
    }

    const QVariant deviceToken = defaults()->objectForKey(kDeviceToken);
    if (deviceToken.typeId() == QMetaType::QString) {
        current->setDeviceToken(deviceToken.toString());
        current->saveEventually([](bool succeeded, const PFError *) {
            if (succeeded)
                qCInfo(lcAccounts) << "saved";
        });
    }

    // The order matters: a user who must change the password goes to the change screen
    // before the newsroom check; refused accounts keep their backend session.
    if (current->doesPasswordRequireToBeChanged() && current->isAuthorised()) {
        performSegueWithIdentifier(QStringLiteral("PasswordChange"), this);
        return;
    }
    if (!current->isAuthorised()) {
        showNotAuthorisedAlert();
        return;
    }
    if (current->isNewsDeskUser()) {
        showAlert(QStringLiteral("Error"),
                  QStringLiteral("Sorry there seems to be a problem.  Please try again later or contact our admin "
                                 "team.  You may not be an authorised Vantrel Pro user."),
                  QStringLiteral("Ok"));
        stopSpinner();
        return;
    }

    const QString workEmail = current->workEmail();
    if (workEmail.isEmpty())
        qFatal("An accepted user has no work e-mail address");
    // Saved under the name the user signs in with, which is where the next prefill and
    // fingerprint sign-in read it (the profile's e-mail address may differ from it).
    std::optional<KeychainPasswordItem::KeychainError> keychainError;
    if (!AccountServices::current().passwordItem(m_signInName).savePassword(password, &keychainError))
        qFatal("%s", qPrintable(QStringLiteral("Error updating keychain - ") + keychainError->localizedDescription()));
    defaults()->setBool(true, kHasLoginKey);
    presentFullScreen(QStringLiteral("Menu"), QStringLiteral("menu"));
}

void LoginPageTableViewController::stopSpinner()
{
    m_loadingSpinner->actInd()->stopAnimating();
}

void LoginPageTableViewController::showAlert(const QString &title, const QString &message, const QString &button)
{
    OneButtonAlert::show(this, title, message, button);
}

void LoginPageTableViewController::showSavedPasswordFailure()
{
    showAlert(QStringLiteral("Error"),
              QStringLiteral("Something has gone wrong, please try to login manually, it maybe you have never logged "
                             "into the app on this device before.  If this fails, please contact Vantrel Admin."),
              QStringLiteral("Ok"));
}
