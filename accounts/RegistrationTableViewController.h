#pragma once

#include "ActivitySpinner.h"
#include "BarButtonItem.h"
#include "Button.h"
#include "CountryCode.h"
#include "PFTypes.h"
#include "RegistrationSettings.h"
#include "Switch.h"
#include "TableViewController.h"
#include "TextField.h"

#include <QtQml/qqmlregistration.h>
#include <memory>

class FreelanceCategory;
class PFError;
class PickerField;
class User;

// The registration form: role, names, e-mail address, password, telephone numbers with their
// dialling codes, home town and country, the messaging-service flag and agreement to the terms.
// Submitting signs a new user up (usable at once), then creates the user's Freelancer record
// under the role's category and presents the main menu over this screen.
//
// Submit stays disabled until the roles (FreelanceCategory records) have loaded; a failed load
// keeps it disabled until the screen is opened again. While a sign-up runs it is disabled too.
// If the account was made but its Freelancer record was not (no category matches the role, or
// the save failed), submitting again with the same e-mail address only retries the record.
class RegistrationTableViewController : public ui::TableViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screen controllers are made in C++")
    Q_PROPERTY(ui::TextField *roleTextField READ roleTextField CONSTANT)
    Q_PROPERTY(ui::TextField *firstNameTextField READ firstNameTextField CONSTANT)
    Q_PROPERTY(ui::TextField *lastNameTextField READ lastNameTextField CONSTANT)
    Q_PROPERTY(ui::TextField *emailAddressTextField READ emailAddressTextField CONSTANT)
    Q_PROPERTY(ui::TextField *passwordTextField READ passwordTextField CONSTANT)
    Q_PROPERTY(ui::TextField *confirmPasswordTextField READ confirmPasswordTextField CONSTANT)
    Q_PROPERTY(ui::TextField *countryCodeTextField READ countryCodeTextField CONSTANT)
    Q_PROPERTY(ui::TextField *mobileNumberTextField READ mobileNumberTextField CONSTANT)
    Q_PROPERTY(ui::TextField *workCountryCodeTextField READ workCountryCodeTextField CONSTANT)
    Q_PROPERTY(ui::TextField *workNumberTextField READ workNumberTextField CONSTANT)
    Q_PROPERTY(ui::TextField *homeTownTextField READ homeTownTextField CONSTANT)
    Q_PROPERTY(ui::TextField *homeCountryTextField READ homeCountryTextField CONSTANT)
    Q_PROPERTY(ui::Switch *whatsAppSwitch READ whatsAppSwitch CONSTANT)
    Q_PROPERTY(ui::Switch *confirmSwitch READ confirmSwitch CONSTANT)
    Q_PROPERTY(ui::Button *termsButton READ termsButton CONSTANT)
    Q_PROPERTY(ui::BarButtonItem *submitButton READ submitButton CONSTANT)
    Q_PROPERTY(ui::Button *roleInfoButton READ roleInfoButton CONSTANT)
    Q_PROPERTY(ActivitySpinner *loadingSpinner READ loadingSpinner CONSTANT)
    // The views cap every field at this many characters, and the form check refuses longer text.
    Q_PROPERTY(int maximumFieldLength READ maximumFieldLength CONSTANT)

public:
    // Field tags: the Return key moves to the field whose tag is one higher. Tags 0, 3, 5, 7
    // and 10 are fixed; the password fields come last in the form, after the home country.
    enum FieldTag {
        kRoleTag = 0,
        kFirstNameTag = 1,
        kLastNameTag = 2,
        kEmailAddressTag = 3,
        kCountryCodeTag = 5,
        kMobileNumberTag = 6,
        kWorkCountryCodeTag = 7,
        kWorkNumberTag = 8,
        kHomeTownTag = 9,
        kHomeCountryTag = 10,
        kPasswordTag = 11,
        kConfirmPasswordTag = 12,
    };
    static constexpr int kMaximumFieldLength = 254;

    explicit RegistrationTableViewController(const RegistrationSettings &settings = {}, QObject *parent = nullptr);
    ~RegistrationTableViewController() override;

    [[nodiscard]] ui::TextField *roleTextField() const { return m_roleTextField; }
    [[nodiscard]] ui::TextField *firstNameTextField() const { return m_firstNameTextField; }
    // The first field that takes typing (the role above it opens a picker).
    [[nodiscard]] ui::TextInput *initialFirstResponder() const override { return m_firstNameTextField; }
    [[nodiscard]] ui::TextField *lastNameTextField() const { return m_lastNameTextField; }
    [[nodiscard]] ui::TextField *emailAddressTextField() const { return m_emailAddressTextField; }
    [[nodiscard]] ui::TextField *passwordTextField() const { return m_passwordTextField; }
    [[nodiscard]] ui::TextField *confirmPasswordTextField() const { return m_confirmPasswordTextField; }
    [[nodiscard]] ui::TextField *countryCodeTextField() const { return m_countryCodeTextField; }
    [[nodiscard]] ui::TextField *mobileNumberTextField() const { return m_mobileNumberTextField; }
    [[nodiscard]] ui::TextField *workCountryCodeTextField() const { return m_workCountryCodeTextField; }
    [[nodiscard]] ui::TextField *workNumberTextField() const { return m_workNumberTextField; }
    [[nodiscard]] ui::TextField *homeTownTextField() const { return m_homeTownTextField; }
    [[nodiscard]] ui::TextField *homeCountryTextField() const { return m_homeCountryTextField; }
    [[nodiscard]] ui::Switch *whatsAppSwitch() const { return m_whatsAppSwitch; }
    [[nodiscard]] ui::Switch *confirmSwitch() const { return m_confirmSwitch; }
    [[nodiscard]] ui::Button *termsButton() const { return m_termsButton; }
    [[nodiscard]] ui::BarButtonItem *submitButton() const { return m_submitButton; }
    [[nodiscard]] ui::Button *roleInfoButton() const { return m_roleInfoButton; }
    [[nodiscard]] ActivitySpinner *loadingSpinner() const { return m_loadingSpinner; }
    [[nodiscard]] int maximumFieldLength() const { return kMaximumFieldLength; }

    [[nodiscard]] QList<std::shared_ptr<FreelanceCategory>> categories() const { return m_categories; }
    // The dialling-code list with the placeholder first, and the home-country names.
    [[nodiscard]] QList<CountryCode> countryCodes() const { return m_countryCodes; }
    [[nodiscard]] QStringList countries() const { return m_countries; }
    // The picker behind a picker field (tags 0, 5, 7, 10), nullptr for other tags.
    [[nodiscard]] PickerField *pickerForTag(int tag) const;
    [[nodiscard]] ui::TextField *textFieldWithTag(int tag) const;

public Q_SLOTS:
    void termsButton_Click();
    void termsSwitch_ValueChange(bool on);
    void submitButton_Click();
    void infoButton_Click();
    void doneButtonAction();
    bool textFieldShouldReturn(ui::TextField *textField);
    void textFieldDidEndEditing(ui::TextField *textField);

protected:
    void viewDidLoad() override;

private:
    void loadCategories();
    void categoriesLoaded(const QList<PFObjectPtr> &objects, const PFError *error);
    [[nodiscard]] bool formIsValid() const;
    void signUp();
    void signUpCompleted(const std::shared_ptr<User> &user, bool succeeded, const PFError *error);
    void createFreelancer(const std::shared_ptr<User> &user);
    void freelancerSaved(bool succeeded);
    void stopSpinner();
    void showAlert(const QString &title, const QString &message, const QString &button);
    void showAdminAlert();

    RegistrationSettings m_settings;
    ui::TextField *m_roleTextField;
    ui::TextField *m_firstNameTextField;
    ui::TextField *m_lastNameTextField;
    ui::TextField *m_emailAddressTextField;
    ui::TextField *m_passwordTextField;
    ui::TextField *m_confirmPasswordTextField;
    ui::TextField *m_countryCodeTextField;
    ui::TextField *m_mobileNumberTextField;
    ui::TextField *m_workCountryCodeTextField;
    ui::TextField *m_workNumberTextField;
    ui::TextField *m_homeTownTextField;
    ui::TextField *m_homeCountryTextField;
    ui::Switch *m_whatsAppSwitch;
    ui::Switch *m_confirmSwitch;
    ui::Button *m_termsButton;
    ui::BarButtonItem *m_submitButton;
    ui::Button *m_roleInfoButton;
    ActivitySpinner *m_loadingSpinner;
    PickerField *m_rolePicker;
    PickerField *m_countryCodePicker;
    PickerField *m_workCountryCodePicker;
    PickerField *m_homeCountryPicker;

    QList<std::shared_ptr<FreelanceCategory>> m_categories;
    QList<CountryCode> m_countryCodes;
    QStringList m_countries;
    // The account this screen signed up whose Freelancer record is not saved yet.
    std::shared_ptr<User> m_accountWithoutProfile;
};
