#include "ProfileTableViewController.h"

#include "DialCodes.h"
#include "EmailAddressRule.h"
#include "FreelanceCategory.h"
#include "Freelancer.h"
#include "OneButtonAlert.h"
#include "PFError.h"
#include "PFFileObject.h"
#include "PickerField.h"
#include "PictureChooser.h"
#include "ProfileLogging.h"
#include "ProfilePhotoReader.h"
#include "SkillLists.h"
#include "User.h"

#include <QPointer>

namespace {

ui::TextField *makeField(const char *name, const QString &placeholder, QObject *parent)
{
    auto *field = new ui::TextField(QString::fromLatin1(name), parent);
    field->setPlaceholder(placeholder);
    return field;
}

} // namespace

ProfileTableViewController::ProfileTableViewController(PictureChooser *pictureChooser, QObject *parent)
    : ui::TableViewController(parent),
      m_firstNameTextField(makeField("firstNameTextField", QStringLiteral("First name"), this)),
      m_lastNameTextField(makeField("lastNameTextField", QStringLiteral("Last name"), this)),
      m_positionTextField(makeField("positionTextField", QStringLiteral("Position"), this)),
      m_emailAddressTextField(makeField("emailAddressTextField", QStringLiteral("Email address"), this)),
      m_countryCodeTextField(makeField("countryCodeTextField", QStringLiteral("Code"), this)),
      m_mobileTelephoneNumberTextField(
          makeField("mobileTelephoneNumberTextField", QStringLiteral("Mobile number"), this)),
      m_workCountryCodeTextField(makeField("workCountryCodeTextField", QStringLiteral("Code"), this)),
      m_workTelephoneNumberTextField(makeField("workTelephoneNumberTextField", QStringLiteral("Work number"), this)),
      m_roleTextField(makeField("roleTextField", QStringLiteral("Role"), this)),
      m_whatsAppSwitch(new ui::Switch(QStringLiteral("whatsAppSwitch"), this)),
      m_profilePictureView(new ui::ImageView(QStringLiteral("profilePictureView"), this)),
      m_choosePhotoButton(new ui::Button(QStringLiteral("choosePhotoButton"), this)),
      m_rolePicker(new PickerField(m_roleTextField, this, QStringLiteral("Role"), this)),
      m_countryCodePicker(new PickerField(m_countryCodeTextField, this, QStringLiteral("Country Code"), this)),
      m_workCountryCodePicker(
          new PickerField(m_workCountryCodeTextField, this, QStringLiteral("Work Country Code"), this)),
      m_pictureChooser(pictureChooser ? pictureChooser : new PictureChooser(nullptr, this))
{
    m_rolePicker->setRows(SkillLists::roles());
    const QList<CountryCode> countryCodes = DialCodes::withPlaceholder(DialCodes::load());
    m_countryCodePicker->setDialCodes(countryCodes);
    m_workCountryCodePicker->setDialCodes(countryCodes);
    m_emailAddressTextField->setKeyboardType(ui::TextInput::KeyboardType::EmailAddress);
    m_mobileTelephoneNumberTextField->setKeyboardType(ui::TextInput::KeyboardType::PhonePad);
    m_workTelephoneNumberTextField->setKeyboardType(ui::TextInput::KeyboardType::PhonePad);
    const QList<ui::TextField *> fields = textFields();
    for (int i = 0; i < fields.size(); ++i) {
        ui::TextField *field = fields.at(i);
        field->setTag(i);
        field->setReturnKeyType(ui::TextInput::ReturnKeyType::Next);
        connect(field, &ui::TextInput::editingDidEnd, this, [this, field] { textFieldDidEndEditing(field); });
        connect(field, &ui::TextInput::returnPressed, this, [fields, i] {
            if (i + 1 < fields.size())
                fields.at(i + 1)->becomeFirstResponder();
            else
                fields.at(i)->resignFirstResponder();
        });
    }
    m_profilePictureView->setCornerRadius(8);
    m_choosePhotoButton->setTitle(QStringLiteral("Choose Photo"));
    connect(m_choosePhotoButton, &ui::Button::clicked, this, &ProfileTableViewController::choosePhotoButton_Click);
    setTableEditing(false);
}

QList<ui::TextField *> ProfileTableViewController::textFields() const
{
    return {m_roleTextField,
            m_firstNameTextField,
            m_lastNameTextField,
            m_positionTextField,
            m_emailAddressTextField,
            m_countryCodeTextField,
            m_mobileTelephoneNumberTextField,
            m_workCountryCodeTextField,
            m_workTelephoneNumberTextField};
}

void ProfileTableViewController::setTableEditing(bool editing)
{
    for (ui::TextField *field : textFields()) {
        field->setEnabled(editing);
        if (!editing && field->isFirstResponder())
            field->resignFirstResponder();
    }
    m_whatsAppSwitch->setEnabled(editing);
    m_choosePhotoButton->setEnabled(editing);
    if (m_tableEditing == editing)
        return;
    m_tableEditing = editing;
    Q_EMIT tableEditingChanged();
}

void ProfileTableViewController::setHasPhotoChanged(bool changed)
{
    if (m_hasPhotoChanged == changed)
        return;
    m_hasPhotoChanged = changed;
    Q_EMIT hasPhotoChangedChanged();
}

void ProfileTableViewController::showUser(const User &user)
{
    m_firstNameTextField->setText(user.firstName());
    m_lastNameTextField->setText(user.lastName());
    m_positionTextField->setText(user.position());
    m_emailAddressTextField->setText(user.workEmail());
    m_countryCodeTextField->setText(user.mobileCountryCode());
    m_mobileTelephoneNumberTextField->setText(user.mobileTelephoneNumber());
    m_workCountryCodeTextField->setText(user.officeCountryCode());
    m_workTelephoneNumberTextField->setText(user.officeTelephoneNumber());
    if (const PFFileObjectPtr picture = user.profilePicture())
        loadPhoto(picture);
}

void ProfileTableViewController::showFreelancer(const Freelancer &freelancer)
{
    const std::shared_ptr<FreelanceCategory> category = freelancer.freelanceCategory();
    m_roleTextField->setText(category ? category->categoryTitle() : QString());
    m_whatsAppSwitch->setOn(freelancer.isWhatsApp());
}

void ProfileTableViewController::loadPhoto(const std::shared_ptr<PFFileObject> &file)
{
    const int request = ++m_photoRequest;
    QPointer<ProfileTableViewController> self(this);
    file->getDataInBackgroundWithBlock([self, request](const QByteArray &data, const PFError *error) {
        // A photo picked meanwhile wins over the stored one.
        if (!self || request != self->m_photoRequest || self->m_hasPhotoChanged)
            return;
        if (error) {
            qCWarning(lcProfile) << "the profile photo could not be loaded:" << error->localizedDescription();
            return;
        }
        const QImage image = QImage::fromData(data);
        if (image.isNull()) {
            qCWarning(lcProfile) << "the stored profile photo is not a picture";
            return;
        }
        self->m_profilePictureView->setImage(image);
    });
}

bool ProfileTableViewController::isFormValid() const
{
    const QList<ui::TextField *> required{m_firstNameTextField, m_lastNameTextField, m_positionTextField,
                                          m_mobileTelephoneNumberTextField};
    for (const ui::TextField *field : required) {
        if (field->text().isEmpty())
            return false;
    }
    for (const ui::TextField *field : textFields()) {
        if (field->text().size() > kMaximumTextLength)
            return false;
    }
    return EmailAddressRule::isValid(m_emailAddressTextField->text());
}

void ProfileTableViewController::textFieldDidEndEditing(ui::TextField *textField)
{
    if (textField == m_emailAddressTextField)
        EmailAddressRule::alertIfInvalid(this, textField->text());
}

void ProfileTableViewController::choosePhotoButton_Click()
{
    QPointer<ProfileTableViewController> self(this);
    m_pictureChooser->choose(this, [self](const QUrl &file) {
        if (self)
            self->photoPicked(file);
    });
}

void ProfileTableViewController::photoPicked(const QUrl &file)
{
    const QString path = file.isLocalFile() ? file.toLocalFile() : file.toString();
    ProfilePhotoReader::Result result = ProfilePhotoReader::read(path);
    if (result.image.isNull()) {
        qCWarning(lcProfile) << "the picked photo was refused:" << result.error;
        OneButtonAlert::show(this, QStringLiteral("Sorry"),
                             QStringLiteral("That file cannot be used as your photo. ") + result.error,
                             QStringLiteral("Ok"));
        return;
    }
    m_profilePictureView->setImage(result.image);
    setHasPhotoChanged(true);
}
