#include "DefaultPasswordTableViewController.h"

#include "AlertHelper.h"
#include "PasswordRules.h"

const QString DefaultPasswordTableViewController::doNotMatchString = QStringLiteral("Passwords Do Not Match");
const QString DefaultPasswordTableViewController::errorString =
    QStringLiteral("Your password is not strong enough, click info for requirements");

DefaultPasswordTableViewController::DefaultPasswordTableViewController(QObject *parent)
    : ui::TableViewController(parent),
      m_passwordTextField(new ui::TextField(QStringLiteral("passwordTextField"), this)),
      m_confirmPasswordTextField(new ui::TextField(QStringLiteral("confirmPasswordTextField"), this)),
      m_passwordErrorLabel(new ui::Label(QStringLiteral("passwordErrorLabel"), this)),
      m_passwordInfoButton(new ui::Button(QStringLiteral("passwordInfoButton"), this))
{
    m_passwordTextField->setPlaceholder(QStringLiteral("New password"));
    m_passwordTextField->setSecureTextEntry(true);
    m_passwordTextField->setTag(1);
    m_passwordTextField->setReturnKeyType(ui::TextInput::ReturnKeyType::Next);
    m_confirmPasswordTextField->setPlaceholder(QStringLiteral("Confirm new password"));
    m_confirmPasswordTextField->setSecureTextEntry(true);
    m_confirmPasswordTextField->setTag(2);
    m_confirmPasswordTextField->setReturnKeyType(ui::TextInput::ReturnKeyType::Done);
    m_passwordErrorLabel->setTextColor(Qt::red);
    m_passwordErrorLabel->setNumberOfLines(0);
    m_passwordInfoButton->setBackgroundColor(Qt::transparent);
    m_passwordInfoButton->setTitle(QStringLiteral("Info"));
    connect(m_passwordInfoButton, &ui::Button::clicked, this,
            &DefaultPasswordTableViewController::passwordInfoButton_Click);
}

void DefaultPasswordTableViewController::viewDidLoad()
{
    ui::TableViewController::viewDidLoad();
    for (ui::TextField *field : {m_passwordTextField, m_confirmPasswordTextField}) {
        connect(field, &ui::TextField::editingDidEnd, this, [this, field] { textFieldDidEndEditing(field); });
        connect(field, &ui::TextField::returnPressed, this, [this, field] { textFieldShouldReturn(field); });
    }
}

void DefaultPasswordTableViewController::passwordInfoButton_Click()
{
    AlertHelper::show(QStringLiteral("Help"),
                      QStringLiteral("The password should contain 1 Uppercase letter, 1 lowercase letters, 1 digits and be at least 8 characters long"),
                      this);
}

void DefaultPasswordTableViewController::textFieldDidEndEditing(ui::TextField *textField)
{
    if (!textField)
        return;
    if (!PasswordRules::isStrong(textField->text())) {
        m_passwordErrorLabel->setText(errorString);
        return;
    }
    m_passwordErrorLabel->setText({});
    const QString password = m_passwordTextField->text();
    const QString confirmation = m_confirmPasswordTextField->text();
    if (!password.isEmpty() && !confirmation.isEmpty() && password != confirmation)
        m_passwordErrorLabel->setText(doNotMatchString);
}

bool DefaultPasswordTableViewController::textFieldShouldReturn(ui::TextField *textField)
{
    if (!textField)
        return true;
    // The next field down the form, by tag; after the last one the keyboard closes.
    for (ui::TextField *field : {m_passwordTextField, m_confirmPasswordTextField}) {
        if (field->tag() == textField->tag() + 1) {
            field->becomeFirstResponder();
            return true;
        }
    }
    textField->resignFirstResponder();
    return true;
}
