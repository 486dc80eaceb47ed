#include "RegistrationTableViewController.h"

#include "AccountServices.h"
#include "AccountsLogging.h"
#include "DialCodes.h"
#include "EmailAddressRule.h"
#include "FirstResponder.h"
#include "FreelanceCategory.h"
#include "Freelancer.h"
#include "NavigationItem.h"
#include "OneButtonAlert.h"
#include "PFError.h"
#include "PFQuery.h"
#include "PFUser.h"
#include "PickerField.h"
#include "RecordLookups.h"
#include "SkillLists.h"
#include "Storyboard.h"
#include "Toolbar.h"
#include "LinkOpener.h"
#include "UrlOpener.h"
#include "User.h"

#include <QPointer>

namespace {
const auto kOk = QStringLiteral("Ok");
const auto kError = QStringLiteral("Error");
// clang-format off
const auto kRoleHint = QStringLiteral("Choose Multi-Skilled if you are comfortable reporting, producing and filming for broadcast, print and online outlets.");
const auto kFormNotValid = QStringLiteral("It looks like something is not valid, please ensure you have the following.\n\nYou have a role selected.\n\nYou have completed each field.\n\nThe passwords match and you have entered a valid email address\n\nYou agree to our terms.");
const auto kNoConnection = QStringLiteral("We are having issues connecting to our database please check your connection and try again.");
// clang-format on
} // namespace

RegistrationTableViewController::RegistrationTableViewController(const RegistrationSettings &settings, QObject *parent)
    : ui::TableViewController(parent), m_settings(settings),
      m_roleTextField(new ui::TextField(QStringLiteral("roleTextField"), this)),
      m_firstNameTextField(new ui::TextField(QStringLiteral("firstNameTextField"), this)),
      m_lastNameTextField(new ui::TextField(QStringLiteral("lastNameTextField"), this)),
      m_emailAddressTextField(new ui::TextField(QStringLiteral("emailAddressTextField"), this)),
      m_passwordTextField(new ui::TextField(QStringLiteral("passwordTextField"), this)),
      m_confirmPasswordTextField(new ui::TextField(QStringLiteral("confirmPasswordTextField"), this)),
      m_countryCodeTextField(new ui::TextField(QStringLiteral("countryCodeTextField"), this)),
      m_mobileNumberTextField(new ui::TextField(QStringLiteral("mobileNumberTextField"), this)),
      m_workCountryCodeTextField(new ui::TextField(QStringLiteral("workCountryCodeTextField"), this)),
      m_workNumberTextField(new ui::TextField(QStringLiteral("workNumberTextField"), this)),
      m_homeTownTextField(new ui::TextField(QStringLiteral("homeTownTextField"), this)),
      m_homeCountryTextField(new ui::TextField(QStringLiteral("homeCountryTextField"), this)),
      m_whatsAppSwitch(new ui::Switch(QStringLiteral("whatsAppSwitch"), this)),
      m_confirmSwitch(new ui::Switch(QStringLiteral("confirmSwitch"), this)),
      m_termsButton(new ui::Button(QStringLiteral("termsButton"), this)),
      m_submitButton(new ui::BarButtonItem(QStringLiteral("submitButton"), this)),
      m_roleInfoButton(new ui::Button(QStringLiteral("roleInfoButton"), this)),
      m_loadingSpinner(new ActivitySpinner(this)),
      m_rolePicker(new PickerField(m_roleTextField, this, QStringLiteral("Role"), this)),
      m_countryCodePicker(new PickerField(m_countryCodeTextField, this, QStringLiteral("Country Code"), this)),
      m_workCountryCodePicker(
          new PickerField(m_workCountryCodeTextField, this, QStringLiteral("Work Country Code"), this)),
      m_homeCountryPicker(new PickerField(m_homeCountryTextField, this, QStringLiteral("Home Country"), this))
{
    const struct {
        ui::TextField *field;
        int tag;
        const char *placeholder;
    } fields[] = {
        {m_roleTextField, kRoleTag, "Role"},
        {m_firstNameTextField, kFirstNameTag, "First name"},
        {m_lastNameTextField, kLastNameTag, "Last name"},
        {m_emailAddressTextField, kEmailAddressTag, "Email address"},
        {m_countryCodeTextField, kCountryCodeTag, "Mobile code"},
        {m_mobileNumberTextField, kMobileNumberTag, "Mobile number"},
        {m_workCountryCodeTextField, kWorkCountryCodeTag, "Work code"},
        {m_workNumberTextField, kWorkNumberTag, "Work number"},
        {m_homeTownTextField, kHomeTownTag, "Home town"},
        {m_homeCountryTextField, kHomeCountryTag, "Home country"},
        {m_passwordTextField, kPasswordTag, "Password"},
        {m_confirmPasswordTextField, kConfirmPasswordTag, "Confirm password"},
    };
    for (const auto &entry : fields) {
        ui::TextField *field = entry.field;
        field->setTag(entry.tag);
        field->setPlaceholder(QString::fromLatin1(entry.placeholder));
        field->setReturnKeyType(ui::TextInput::ReturnKeyType::Next);
        connect(field, &ui::TextField::returnPressed, this, [this, field] { textFieldShouldReturn(field); });
        connect(field, &ui::TextField::editingDidEnd, this, [this, field] { textFieldDidEndEditing(field); });
    }
    m_emailAddressTextField->setKeyboardType(ui::TextInput::KeyboardType::EmailAddress);
    for (ui::TextField *field :
         {m_countryCodeTextField, m_mobileNumberTextField, m_workCountryCodeTextField, m_workNumberTextField})
        field->setKeyboardType(ui::TextInput::KeyboardType::PhonePad);
    m_passwordTextField->setSecureTextEntry(true);
    m_confirmPasswordTextField->setSecureTextEntry(true);
    m_confirmPasswordTextField->setReturnKeyType(ui::TextInput::ReturnKeyType::Done);

    m_termsButton->setTitle(QStringLiteral("I agree to the terms and conditions"));
    m_termsButton->setBackgroundColor(Qt::transparent);
    m_roleInfoButton->setTitle(QStringLiteral("About roles"));
    m_roleInfoButton->setBackgroundColor(Qt::transparent);
    m_submitButton->setTitle(QStringLiteral("Submit"));
    m_submitButton->setStyle(ui::BarButtonItem::Style::Done);
    navigationItem()->setRightBarButtonItem(m_submitButton);

    m_rolePicker->setRows(SkillLists::roles());

    connect(m_termsButton, &ui::Button::clicked, this, &RegistrationTableViewController::termsButton_Click);
    connect(m_confirmSwitch, &ui::Switch::valueChanged, this,
            &RegistrationTableViewController::termsSwitch_ValueChange);
    connect(m_submitButton, &ui::BarButtonItem::clicked, this, &RegistrationTableViewController::submitButton_Click);
    connect(m_roleInfoButton, &ui::Button::clicked, this, &RegistrationTableViewController::infoButton_Click);
}

RegistrationTableViewController::~RegistrationTableViewController() = default;

PickerField *RegistrationTableViewController::pickerForTag(int tag) const
{
    switch (tag) {
    case kRoleTag:
        return m_rolePicker;
    case kCountryCodeTag:
        return m_countryCodePicker;
    case kWorkCountryCodeTag:
        return m_workCountryCodePicker;
    case kHomeCountryTag:
        return m_homeCountryPicker;
    default:
        return nullptr;
    }
}

ui::TextField *RegistrationTableViewController::textFieldWithTag(int tag) const
{
    const auto fields = findChildren<ui::TextField *>(QString(), Qt::FindDirectChildrenOnly);
    for (ui::TextField *field : fields) {
        if (field->tag() == tag)
            return field;
    }
    return nullptr;
}

void RegistrationTableViewController::viewDidLoad()
{
    ui::TableViewController::viewDidLoad();
    m_termsButton->setContentHorizontalAlignment(Qt::AlignLeft);
    navigationItem()->setLargeTitleDisplayMode(ui::NavigationItem::LargeTitleDisplayMode::Never);
    setTitle(QStringLiteral("Registration"));
    m_submitButton->setEnabled(false);
    for (ui::TextField *field : findChildren<ui::TextField *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (!field->inputAccessoryView())
            field->setInputAccessoryView(ui::Toolbar::doneToolbar(field, [this] { doneButtonAction(); }));
    }

    m_loadingSpinner->show(view());
    loadCategories();

    m_countryCodes = DialCodes::withPlaceholder(DialCodes::load());
    m_countries = DialCodes::countryNames(m_countryCodes);
    m_countryCodePicker->setDialCodes(m_countryCodes);
    m_workCountryCodePicker->setDialCodes(m_countryCodes);
    m_homeCountryPicker->setRows(m_countries);

    stopSpinner();
    // Registration always starts with nobody signed in.
    PFUser::logOut();
}

void RegistrationTableViewController::loadCategories()
{
    QPointer<RegistrationTableViewController> self(this);
    FreelanceCategory::query().findObjectsInBackgroundWithBlock(
        [self](const QList<PFObjectPtr> &objects, const PFError *error) {
            if (self)
                self->categoriesLoaded(objects, error);
        });
}

void RegistrationTableViewController::categoriesLoaded(const QList<PFObjectPtr> &objects, const PFError *error)
{
    QList<std::shared_ptr<FreelanceCategory>> categories;
    bool allCategories = !error;
    for (const PFObjectPtr &object : objects) {
        auto category = std::dynamic_pointer_cast<FreelanceCategory>(object);
        if (!category) {
            allCategories = false;
            break;
        }
        categories.append(category);
    }
    if (!allCategories) {
        if (error)
            qCWarning(lcAccounts) << "The roles could not be loaded:" << error->localizedDescription();
        showAlert(QStringLiteral("Sorry"), kNoConnection, QStringLiteral("OK"));
        stopSpinner();
        return;
    }
    m_categories = categories;
    m_submitButton->setEnabled(true);
    stopSpinner();
}

void RegistrationTableViewController::termsButton_Click()
{
    UrlOpener *opener = m_settings.urlOpener ? m_settings.urlOpener : UrlOpener::shared();
    LinkOpener::open(m_settings.termsPage, *opener, this);
}

void RegistrationTableViewController::termsSwitch_ValueChange(bool on)
{
    qCInfo(lcAccounts) << "terms agreed:" << on;
}

void RegistrationTableViewController::infoButton_Click()
{
    showAlert(QStringLiteral("Info"), kRoleHint, QStringLiteral("OK"));
}

void RegistrationTableViewController::doneButtonAction()
{
    if (ui::TextInput *current = ui::FirstResponder::instance()->current())
        current->resignFirstResponder();
}

bool RegistrationTableViewController::textFieldShouldReturn(ui::TextField *textField)
{
    if (!textField)
        return true;
    switch (textField->tag()) {
    case kHomeCountryTag:
        return true;
    case kCountryCodeTag:
        textField->resignFirstResponder();
        return true;
    default:
        break;
    }
    ui::TextField *next = textFieldWithTag(textField->tag() + 1);
    if (!next || !next->becomeFirstResponder())
        textField->resignFirstResponder();
    return true;
}

void RegistrationTableViewController::textFieldDidEndEditing(ui::TextField *textField)
{
    // Only while the form is on screen: leaving the screen also takes the focus away.
    if (!textField || textField->tag() != kEmailAddressTag || appearanceState() != AppearanceState::Appeared)
        return;
    EmailAddressRule::alertIfInvalid(this, textField->text());
}

bool RegistrationTableViewController::formIsValid() const
{
    // Names, town, country and role count only with something besides blanks: they are saved
    // trimmed. The address is checked as typed by the e-mail rule (blanks make it fail).
    const auto holdsText = [](const ui::TextField *field) { return !field->text().trimmed().isEmpty(); };
    // The views cap what is typed; text that came another way is held to the same length.
    const auto fields = findChildren<ui::TextField *>(QString(), Qt::FindDirectChildrenOnly);
    if (std::any_of(fields.begin(), fields.end(),
                    [](const ui::TextField *field) { return field->text().size() > kMaximumFieldLength; }))
        return false;
    if (!EmailAddressRule::isValid(m_emailAddressTextField->text()))
        return false;
    if (!holdsText(m_firstNameTextField) || !holdsText(m_lastNameTextField) ||
        m_emailAddressTextField->text().isEmpty() || !holdsText(m_roleTextField))
        return false;
    if (m_passwordTextField->text().isEmpty())
        return false;
    if (m_passwordTextField->text() != m_confirmPasswordTextField->text())
        return false;
    if (!m_confirmSwitch->isOn())
        return false;
    return holdsText(m_homeCountryTextField) && holdsText(m_homeTownTextField);
}

void RegistrationTableViewController::submitButton_Click()
{
    if (m_loadingSpinner->isSpinning())
        return;
    if (!formIsValid()) {
        showAlert(QStringLiteral("Sorry"), kFormNotValid, kOk);
        return;
    }
    m_loadingSpinner->show(view(), QStringLiteral("Registering\u2026"));
    m_submitButton->setEnabled(false);

    // The account is made already (its record failed): only the record is tried again.
    if (m_accountWithoutProfile && PFUser::currentUser() == m_accountWithoutProfile &&
        m_accountWithoutProfile->username() == m_emailAddressTextField->text()) {
        createFreelancer(m_accountWithoutProfile);
        return;
    }
    m_accountWithoutProfile.reset();
    signUp();
}

void RegistrationTableViewController::signUp()
{
    const QString email = m_emailAddressTextField->text();
    auto user = std::make_shared<User>();
    user->setUsername(email);
    user->setEmail(email);
    user->setWorkEmail(email);
    user->setPassword(m_passwordTextField->text());
    user->setFirstName(m_firstNameTextField->text().trimmed());
    user->setLastName(m_lastNameTextField->text().trimmed());
    user->setMobileCountryCode(m_countryCodeTextField->text());
    user->setMobileTelephoneNumber(m_mobileNumberTextField->text());
    user->setOfficeCountryCode(m_workCountryCodeTextField->text());
    user->setOfficeTelephoneNumber(m_workNumberTextField->text());
    user->setDoesPasswordRequireToBeChanged(false);
    // Registered accounts are usable at once.
    user->setIsAuthorised(true);

    QPointer<RegistrationTableViewController> self(this);
    user->signUpInBackgroundWithBlock([self, user](bool succeeded, const PFError *error) {
        if (self)
            self->signUpCompleted(user, succeeded, error);
    });
}

void RegistrationTableViewController::signUpCompleted(const std::shared_ptr<User> &user, bool succeeded,
                                                      const PFError *error)
{
    if (error) {
        stopSpinner();
        m_submitButton->setEnabled(true);
        showAlert(
            QStringLiteral("Error "),
            QStringLiteral("Sorry there is an error registering you on our system.  The error we received was \n") +
                error->localizedDescription() +
                QStringLiteral("\nIf the problem persists please contact our admin team."),
            kOk);
        return;
    }
    if (!succeeded) {
        stopSpinner();
        m_submitButton->setEnabled(true);
        showAlert(kError,
                  QStringLiteral("Whoops sorry something went wrong.  Please check your data connection and try again"),
                  kOk);
        return;
    }
    createFreelancer(user);
}

void RegistrationTableViewController::createFreelancer(const std::shared_ptr<User> &user)
{
    m_accountWithoutProfile = user;
    const QString role = m_roleTextField->text().toLower();
    std::shared_ptr<FreelanceCategory> category;
    for (const auto &candidate : std::as_const(m_categories)) {
        if (candidate->categoryTitle().toLower() == role) {
            category = candidate;
            break;
        }
    }
    if (!category) {
        qCWarning(lcAccounts).noquote() << "No role matches" << m_roleTextField->text()
                                        << "- the account has no profile yet";
        stopSpinner();
        m_submitButton->setEnabled(true);
        showAdminAlert();
        return;
    }

    std::shared_ptr<Freelancer> freelancer = makeFreelancer(category, user);
    freelancer->setMyTown(m_homeTownTextField->text());
    freelancer->setMyCountry(m_homeCountryTextField->text());
    freelancer->setIsWhatsApp(m_whatsAppSwitch->isOn());
    // Other roles start without skills, as the new record already has none.
    freelancer->setSkills(SkillLists::startingSkills(category->categoryTitle()));

    QPointer<RegistrationTableViewController> self(this);
    freelancer->saveEventually([self](bool succeeded, const PFError *error) {
        if (error)
            qCWarning(lcAccounts) << "The new profile was not saved:" << error->localizedDescription();
        if (self)
            self->freelancerSaved(succeeded && !error);
    });
}

void RegistrationTableViewController::freelancerSaved(bool succeeded)
{
    stopSpinner();
    if (!succeeded) {
        m_submitButton->setEnabled(true);
        showAdminAlert();
        return;
    }
    m_accountWithoutProfile.reset();
    presentFullScreen(QStringLiteral("Menu"), QStringLiteral("menu"));
}

void RegistrationTableViewController::stopSpinner()
{
    m_loadingSpinner->actInd()->stopAnimating();
}

void RegistrationTableViewController::showAlert(const QString &title, const QString &message, const QString &button)
{
    OneButtonAlert::show(this, title, message, button);
}

void RegistrationTableViewController::showAdminAlert()
{
    showAlert(kError,
              QStringLiteral("Sorry something has gone wrong. Please contact our admin team at ") +
                  AccountServices::current().helpEmail,
              kOk);
}
