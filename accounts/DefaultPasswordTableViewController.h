#pragma once

#include "Button.h"
#include "Label.h"
#include "TableViewController.h"
#include "TextField.h"

#include <QtQml/qqmlregistration.h>

// The form inside the forced password change: the new password twice, a live warning when
// it is too weak or the two differ, and the rule behind an info button. The warning only
// advises; the screen around it decides.
class DefaultPasswordTableViewController : public ui::TableViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screen controllers are made in C++")
    Q_PROPERTY(ui::TextField *passwordTextField READ passwordTextField CONSTANT)
    Q_PROPERTY(ui::TextField *confirmPasswordTextField READ confirmPasswordTextField CONSTANT)
    Q_PROPERTY(ui::Label *passwordErrorLabel READ passwordErrorLabel CONSTANT)
    Q_PROPERTY(ui::Button *passwordInfoButton READ passwordInfoButton CONSTANT)

public:
    static const QString doNotMatchString;
    static const QString errorString;

    explicit DefaultPasswordTableViewController(QObject *parent = nullptr);

    [[nodiscard]] ui::TextField *passwordTextField() const { return m_passwordTextField; }
    [[nodiscard]] ui::TextField *confirmPasswordTextField() const { return m_confirmPasswordTextField; }
    [[nodiscard]] ui::Label *passwordErrorLabel() const { return m_passwordErrorLabel; }
    [[nodiscard]] ui::Button *passwordInfoButton() const { return m_passwordInfoButton; }
    [[nodiscard]] ui::TextInput *initialFirstResponder() const override { return m_passwordTextField; }

public Q_SLOTS:
    void passwordInfoButton_Click();
    void textFieldDidEndEditing(ui::TextField *textField);
    bool textFieldShouldReturn(ui::TextField *textField);

protected:
    void viewDidLoad() override;

private:
    ui::TextField *m_passwordTextField;
    ui::TextField *m_confirmPasswordTextField;
    ui::Label *m_passwordErrorLabel;
    ui::Button *m_passwordInfoButton;
};
