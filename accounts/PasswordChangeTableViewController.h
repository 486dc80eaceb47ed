#pragma once

#include "ActivitySpinner.h"
#include "Button.h"
#include "TableViewController.h"
#include "TextField.h"

#include <QtQml/qqmlregistration.h>

// The voluntary password change reached from the profile: the new password twice, saved on
// the backend. This screen applies no strength rule and leaves the saved password alone.
class PasswordChangeTableViewController : public ui::TableViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screen controllers are made in C++")
    Q_PROPERTY(ui::TextField *newPasswordTextField READ newPasswordTextField CONSTANT)
    Q_PROPERTY(ui::TextField *confirmPasswordTextField READ confirmPasswordTextField CONSTANT)
    Q_PROPERTY(ui::Button *saveButton READ saveButton CONSTANT)
    Q_PROPERTY(ui::Button *cancelButton READ cancelButton CONSTANT)
    Q_PROPERTY(ActivitySpinner *loadingSpinner READ loadingSpinner CONSTANT)

public:
    explicit PasswordChangeTableViewController(QObject *parent = nullptr);

    [[nodiscard]] ui::TextField *newPasswordTextField() const { return m_newPasswordTextField; }
    [[nodiscard]] ui::TextInput *initialFirstResponder() const override { return m_newPasswordTextField; }
    [[nodiscard]] ui::TextField *confirmPasswordTextField() const { return m_confirmPasswordTextField; }
    [[nodiscard]] ui::Button *saveButton() const { return m_saveButton; }
    [[nodiscard]] ui::Button *cancelButton() const { return m_cancelButton; }
    [[nodiscard]] ActivitySpinner *loadingSpinner() const { return m_loadingSpinner; }

public Q_SLOTS:
    void saveButton_Click();
    void cancelButton_Click();

protected:
    void viewDidLoad() override;

private:
    void popToRoot();

    ui::TextField *m_newPasswordTextField;
    ui::TextField *m_confirmPasswordTextField;
    ui::Button *m_saveButton;
    ui::Button *m_cancelButton;
    ActivitySpinner *m_loadingSpinner;
};
