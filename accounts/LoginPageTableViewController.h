#pragma once

#include "ActivitySpinner.h"
#include "BiometricIDAuth.h"
#include "Button.h"
#include "Label.h"
#include "PFTypes.h"
#include "Switch.h"
#include "TableViewController.h"
#include "TextField.h"

#include <QtQml/qqmlregistration.h>

class PFError;
class UserDefaults;

// The sign-in screen: user name (the e-mail address) and password, or the fingerprint check
// with the saved password; the account checks; the forgotten-password mail; the way to the
// information page. An accepted sign-in presents the main menu over this screen.
class LoginPageTableViewController : public ui::TableViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screen controllers are made in C++")
    Q_PROPERTY(ui::TextField *userNameTextField READ userNameTextField CONSTANT)
    Q_PROPERTY(ui::TextField *passwordTextField READ passwordTextField CONSTANT)
    Q_PROPERTY(ui::Button *forgotPasswordButton READ forgotPasswordButton CONSTANT)
    Q_PROPERTY(ui::Button *loginButton READ loginButton CONSTANT)
    Q_PROPERTY(ui::Button *loginWithBiometricsButton READ loginWithBiometricsButton CONSTANT)
    Q_PROPERTY(ui::Button *registerButton READ registerButton CONSTANT)
    Q_PROPERTY(ui::Button *informationButton READ informationButton CONSTANT)
    Q_PROPERTY(ui::Label *versionLabel READ versionLabel CONSTANT)
    Q_PROPERTY(ui::Switch *rememberMeSwitch READ rememberMeSwitch CONSTANT)
    Q_PROPERTY(ActivitySpinner *loadingSpinner READ loadingSpinner CONSTANT)
    // While a fingerprint check waits for a finger the view shows a prompt with this reason.
    Q_PROPERTY(bool biometricPromptVisible READ isBiometricPromptVisible NOTIFY biometricPromptChanged)
    Q_PROPERTY(QString biometricPromptReason READ biometricPromptReason NOTIFY biometricPromptChanged)

public:
    static constexpr int kPasswordFieldTag = 99;

    explicit LoginPageTableViewController(QObject *parent = nullptr);

    [[nodiscard]] ui::TextField *userNameTextField() const { return m_userNameTextField; }
    [[nodiscard]] ui::TextField *passwordTextField() const { return m_passwordTextField; }
    [[nodiscard]] ui::Button *forgotPasswordButton() const { return m_forgotPasswordButton; }
    [[nodiscard]] ui::Button *loginButton() const { return m_loginButton; }
    [[nodiscard]] ui::Button *loginWithBiometricsButton() const { return m_loginWithBiometricsButton; }
    [[nodiscard]] ui::Button *registerButton() const { return m_registerButton; }
    [[nodiscard]] ui::Button *informationButton() const { return m_informationButton; }
    [[nodiscard]] ui::Label *versionLabel() const { return m_versionLabel; }
    [[nodiscard]] ui::Switch *rememberMeSwitch() const { return m_rememberMeSwitch; }
    [[nodiscard]] ActivitySpinner *loadingSpinner() const { return m_loadingSpinner; }
    [[nodiscard]] BiometricIDAuth *touchID() const { return m_touchID; }
    [[nodiscard]] bool isBiometricPromptVisible() const { return m_biometricPromptVisible; }
    [[nodiscard]] QString biometricPromptReason() const { return m_biometricPromptReason; }
    [[nodiscard]] ui::TextInput *initialFirstResponder() const override { return m_userNameTextField; }

public Q_SLOTS:
    void loginButton_Click();
    void loginWithBiometricsButton_Click();
    void rememberMeSwitch_valueChanged(bool on);
    void forgotPasswordButton_Click();
    void registerButton_Click();
    void informationButton_Click();
    void doneButtonAction();
    bool textFieldShouldReturn(ui::TextField *textField);
    // The prompt's Cancel: ends the running fingerprint check as the person's cancel.
    void cancelBiometricCheck();

Q_SIGNALS:
    void biometricPromptChanged();

protected:
    void viewDidAppear(bool animated) override;
    void viewDidDisappear(bool animated) override;

private:
    void setUpBiometricButton();
    void prefill();
    void passwordLogin();
    void biometricLogin();
    void logIn(const QString &username, const QString &password);
    void loginCompleted(const PFUserPtr &user, const PFError *error, const QString &password);
    void showSpinner();
    void stopSpinner();
    void showAlert(const QString &title, const QString &message, const QString &button);
    void showSavedPasswordFailure();
    [[nodiscard]] UserDefaults *defaults() const;

    ui::TextField *m_userNameTextField;
    ui::TextField *m_passwordTextField;
    ui::Button *m_forgotPasswordButton;
    ui::Button *m_loginButton;
    ui::Button *m_loginWithBiometricsButton;
    ui::Button *m_registerButton;
    ui::Button *m_informationButton;
    ui::Label *m_versionLabel;
    ui::Switch *m_rememberMeSwitch;
    ActivitySpinner *m_loadingSpinner;
    BiometricIDAuth *m_touchID;
    bool m_biometricPromptVisible = false;
    QString m_biometricPromptReason;
    // The user name of the running sign-in: the saved password's account.
    QString m_signInName;
};
