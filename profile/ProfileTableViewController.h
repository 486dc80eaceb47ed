#pragma once

#include "Button.h"
#include "ImageView.h"
#include "Switch.h"
#include "TableViewController.h"
#include "TextField.h"

#include <QtQml/qqmlregistration.h>

class Freelancer;
class PickerField;
class PictureChooser;
class User;

// The contact details of the profile, embedded in the profile hub: names, position, e-mail,
// telephone numbers with their dialling codes, the messaging flag, the role and the photo.
// The fields are read-only until the hub switches the table to editing.
class ProfileTableViewController : public ui::TableViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screen controllers are made in C++")
    Q_PROPERTY(ui::TextField *firstNameTextField READ firstNameTextField CONSTANT)
    Q_PROPERTY(ui::TextField *lastNameTextField READ lastNameTextField CONSTANT)
    Q_PROPERTY(ui::TextField *positionTextField READ positionTextField CONSTANT)
    Q_PROPERTY(ui::TextField *emailAddressTextField READ emailAddressTextField CONSTANT)
    Q_PROPERTY(ui::TextField *countryCodeTextField READ countryCodeTextField CONSTANT)
    Q_PROPERTY(ui::TextField *mobileTelephoneNumberTextField READ mobileTelephoneNumberTextField CONSTANT)
    Q_PROPERTY(ui::TextField *workCountryCodeTextField READ workCountryCodeTextField CONSTANT)
    Q_PROPERTY(ui::TextField *workTelephoneNumberTextField READ workTelephoneNumberTextField CONSTANT)
    Q_PROPERTY(ui::TextField *roleTextField READ roleTextField CONSTANT)
    Q_PROPERTY(ui::Switch *whatsAppSwitch READ whatsAppSwitch CONSTANT)
    Q_PROPERTY(ui::ImageView *profilePictureView READ profilePictureView CONSTANT)
    Q_PROPERTY(ui::Button *choosePhotoButton READ choosePhotoButton CONSTANT)
    Q_PROPERTY(bool isTableEditing READ isTableEditing NOTIFY tableEditingChanged)
    Q_PROPERTY(bool hasPhotoChanged READ hasPhotoChanged NOTIFY hasPhotoChangedChanged)
    Q_PROPERTY(int maximumTextLength READ maximumTextLength CONSTANT)

public:
    // No field of the form takes more characters than this; the view stops typing there and a
    // longer text (pasted, or set by code) makes the form invalid.
    static constexpr int kMaximumTextLength = 200;

    // Photos are picked with the chooser given (without one, the desktop's: see PictureChooser).
    explicit ProfileTableViewController(PictureChooser *pictureChooser = nullptr, QObject *parent = nullptr);

    [[nodiscard]] ui::TextField *firstNameTextField() const { return m_firstNameTextField; }
    [[nodiscard]] ui::TextField *lastNameTextField() const { return m_lastNameTextField; }
    [[nodiscard]] ui::TextField *positionTextField() const { return m_positionTextField; }
    [[nodiscard]] ui::TextField *emailAddressTextField() const { return m_emailAddressTextField; }
    [[nodiscard]] ui::TextField *countryCodeTextField() const { return m_countryCodeTextField; }
    [[nodiscard]] ui::TextField *mobileTelephoneNumberTextField() const { return m_mobileTelephoneNumberTextField; }
    [[nodiscard]] ui::TextField *workCountryCodeTextField() const { return m_workCountryCodeTextField; }
    [[nodiscard]] ui::TextField *workTelephoneNumberTextField() const { return m_workTelephoneNumberTextField; }
    [[nodiscard]] ui::TextField *roleTextField() const { return m_roleTextField; }
    [[nodiscard]] ui::Switch *whatsAppSwitch() const { return m_whatsAppSwitch; }
    [[nodiscard]] ui::ImageView *profilePictureView() const { return m_profilePictureView; }
    [[nodiscard]] ui::Button *choosePhotoButton() const { return m_choosePhotoButton; }
    // The list pickers of the role and the two dialling codes.
    [[nodiscard]] PickerField *rolePicker() const { return m_rolePicker; }
    [[nodiscard]] PickerField *countryCodePicker() const { return m_countryCodePicker; }
    [[nodiscard]] PickerField *workCountryCodePicker() const { return m_workCountryCodePicker; }
    [[nodiscard]] bool isTableEditing() const { return m_tableEditing; }
    [[nodiscard]] bool hasPhotoChanged() const { return m_hasPhotoChanged; }
    [[nodiscard]] static int maximumTextLength() { return kMaximumTextLength; }

    // Editing enables every input of the form together; reading disables them.
    void setTableEditing(bool editing);
    void setHasPhotoChanged(bool changed);

    // Fills the form from the user's keys and starts loading the user's photo.
    void showUser(const User &user);
    // The role and the messaging flag.
    void showFreelancer(const Freelancer &freelancer);

    // The required fields hold text, the e-mail address passes the e-mail rule and no field
    // is longer than kMaximumTextLength.
    [[nodiscard]] bool isFormValid() const;

    // The text fields in form order.
    [[nodiscard]] QList<ui::TextField *> textFields() const;

public Q_SLOTS:
    // "Choose Photo": asks for a picture file.
    void choosePhotoButton_Click();
    // The file the person picked as the new photo. An unreadable file or one that is no
    // picture gets an alert and leaves the shown photo as it was.
    void photoPicked(const QUrl &file);
    // Leaving a field: the e-mail address is checked as soon as its field ends editing.
    void textFieldDidEndEditing(ui::TextField *textField);

Q_SIGNALS:
    void tableEditingChanged();
    void hasPhotoChangedChanged();

private:
    void loadPhoto(const std::shared_ptr<class PFFileObject> &file);

    ui::TextField *m_firstNameTextField;
    ui::TextField *m_lastNameTextField;
    ui::TextField *m_positionTextField;
    ui::TextField *m_emailAddressTextField;
    ui::TextField *m_countryCodeTextField;
    ui::TextField *m_mobileTelephoneNumberTextField;
    ui::TextField *m_workCountryCodeTextField;
    ui::TextField *m_workTelephoneNumberTextField;
    ui::TextField *m_roleTextField;
    ui::Switch *m_whatsAppSwitch;
    ui::ImageView *m_profilePictureView;
    ui::Button *m_choosePhotoButton;
    PickerField *m_rolePicker;
    PickerField *m_countryCodePicker;
    PickerField *m_workCountryCodePicker;
    PictureChooser *m_pictureChooser;
    bool m_tableEditing = false;
    bool m_hasPhotoChanged = false;
    int m_photoRequest = 0;
};
