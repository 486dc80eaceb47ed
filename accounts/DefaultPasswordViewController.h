#pragma once

#include "ActivitySpinner.h"
#include "Button.h"
#include "DefaultPasswordTableViewController.h"
#include "ViewController.h"

#include <QPointer>
#include <QtQml/qqmlregistration.h>

// The forced password change after an administrator issued a default password: the new
// password is checked for strength, saved for the fingerprint sign-in, then on the backend.
class DefaultPasswordViewController : public ui::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screen controllers are made in C++")
    Q_PROPERTY(ui::Button *confirmButton READ confirmButton CONSTANT)
    Q_PROPERTY(ui::Button *exitButton READ exitButton CONSTANT)
    Q_PROPERTY(ActivitySpinner *loadingSpinner READ loadingSpinner CONSTANT)

public:
    explicit DefaultPasswordViewController(QObject *parent = nullptr);

    [[nodiscard]] ui::Button *confirmButton() const { return m_confirmButton; }
    [[nodiscard]] ui::Button *exitButton() const { return m_exitButton; }
    [[nodiscard]] ActivitySpinner *loadingSpinner() const { return m_loadingSpinner; }
    // The embedded form, there once the view has loaded.
    [[nodiscard]] DefaultPasswordTableViewController *passwordTable() const { return m_passwordTable; }

    void prepareForSegue(ui::StoryboardSegue *segue, QObject *sender) override;

public Q_SLOTS:
    void confirmButton_Click();
    void exitButton_Click();

protected:
    void viewDidLoad() override;

private:
    void changePassword();
    void popToLogin();

    ui::Button *m_confirmButton;
    ui::Button *m_exitButton;
    ActivitySpinner *m_loadingSpinner;
    QPointer<DefaultPasswordTableViewController> m_passwordTable;
};
