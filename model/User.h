#pragma once

#include "PFQuery.h"
#include "PFUser.h"

// A user account of this marketplace (freelancer or newsroom editor), with the keys both
// applications keep on the built-in user class.
class User : public PFUser {
public:
    User() = default;
    // The user type's own query, newest first.
    [[nodiscard]] static PFQuery query();

    [[nodiscard]] QString firstName() const { return stringForKey(QStringLiteral("firstName")); }
    void setFirstName(const QString &value) { setObject(value, QStringLiteral("firstName")); }
    [[nodiscard]] QString lastName() const { return stringForKey(QStringLiteral("lastName")); }
    void setLastName(const QString &value) { setObject(value, QStringLiteral("lastName")); }
    [[nodiscard]] QString position() const { return stringForKey(QStringLiteral("position")); }
    void setPosition(const QString &value) { setObject(value, QStringLiteral("position")); }
    [[nodiscard]] QString workEmail() const { return stringForKey(QStringLiteral("workEmail")); }
    void setWorkEmail(const QString &value) { setObject(value, QStringLiteral("workEmail")); }
    [[nodiscard]] QString officeCountryCode() const { return stringForKey(QStringLiteral("officeCountryCode")); }
    void setOfficeCountryCode(const QString &value) { setObject(value, QStringLiteral("officeCountryCode")); }
    [[nodiscard]] QString officeTelephoneNumber() const
    {
        return stringForKey(QStringLiteral("officeTelephoneNumber"));
    }
    void setOfficeTelephoneNumber(const QString &value) { setObject(value, QStringLiteral("officeTelephoneNumber")); }
    [[nodiscard]] QString mobileCountryCode() const { return stringForKey(QStringLiteral("mobileCountryCode")); }
    void setMobileCountryCode(const QString &value) { setObject(value, QStringLiteral("mobileCountryCode")); }
    [[nodiscard]] QString mobileTelephoneNumber() const
    {
        return stringForKey(QStringLiteral("mobileTelephoneNumber"));
    }
    void setMobileTelephoneNumber(const QString &value) { setObject(value, QStringLiteral("mobileTelephoneNumber")); }
    [[nodiscard]] QString linkedInURL() const { return stringForKey(QStringLiteral("linkedInURL")); }
    void setLinkedInURL(const QString &value) { setObject(value, QStringLiteral("linkedInURL")); }
    [[nodiscard]] QString exampleURL() const { return stringForKey(QStringLiteral("exampleURL")); }
    void setExampleURL(const QString &value) { setObject(value, QStringLiteral("exampleURL")); }
    [[nodiscard]] QString exampleTwoURL() const { return stringForKey(QStringLiteral("exampleTwoURL")); }
    void setExampleTwoURL(const QString &value) { setObject(value, QStringLiteral("exampleTwoURL")); }
    [[nodiscard]] QString organisationName() const { return stringForKey(QStringLiteral("organisationName")); }
    void setOrganisationName(const QString &value) { setObject(value, QStringLiteral("organisationName")); }
    [[nodiscard]] QString editorsName() const { return stringForKey(QStringLiteral("editorsName")); }
    void setEditorsName(const QString &value) { setObject(value, QStringLiteral("editorsName")); }
    [[nodiscard]] QString editorsEmailAddress() const { return stringForKey(QStringLiteral("editorsEmailAddress")); }
    void setEditorsEmailAddress(const QString &value) { setObject(value, QStringLiteral("editorsEmailAddress")); }
    [[nodiscard]] QString editorsCountryCode() const { return stringForKey(QStringLiteral("editorsCountryCode")); }
    void setEditorsCountryCode(const QString &value) { setObject(value, QStringLiteral("editorsCountryCode")); }
    [[nodiscard]] QString editorsTelephoneNumber() const
    {
        return stringForKey(QStringLiteral("editorsTelephoneNumber"));
    }
    void setEditorsTelephoneNumber(const QString &value) { setObject(value, QStringLiteral("editorsTelephoneNumber")); }
    [[nodiscard]] bool isEditorSupervisor() const { return boolForKey(QStringLiteral("isEditorSupervisor")); }
    void setIsEditorSupervisor(bool value) { setObject(value, QStringLiteral("isEditorSupervisor")); }
    [[nodiscard]] QString superiorsName() const { return stringForKey(QStringLiteral("superiorsName")); }
    void setSuperiorsName(const QString &value) { setObject(value, QStringLiteral("superiorsName")); }
    [[nodiscard]] QString superiorsEmail() const { return stringForKey(QStringLiteral("superiorsEmail")); }
    void setSuperiorsEmail(const QString &value) { setObject(value, QStringLiteral("superiorsEmail")); }
    [[nodiscard]] QString superiorsCountryCode() const { return stringForKey(QStringLiteral("superiorsCountryCode")); }
    void setSuperiorsCountryCode(const QString &value) { setObject(value, QStringLiteral("superiorsCountryCode")); }
    [[nodiscard]] QString superiorTelephoneNumber() const
    {
        return stringForKey(QStringLiteral("superiorTelephoneNumber"));
    }
    void setSuperiorTelephoneNumber(const QString &value)
    {
        setObject(value, QStringLiteral("superiorTelephoneNumber"));
    }
    [[nodiscard]] QString organisationURL() const { return stringForKey(QStringLiteral("organisationURL")); }
    void setOrganisationURL(const QString &value) { setObject(value, QStringLiteral("organisationURL")); }
    [[nodiscard]] QString organisationExampleURL() const
    {
        return stringForKey(QStringLiteral("organisationExampleURL"));
    }
    void setOrganisationExampleURL(const QString &value) { setObject(value, QStringLiteral("organisationExampleURL")); }
    [[nodiscard]] QString organisationExampleTwoURL() const
    {
        return stringForKey(QStringLiteral("organisationExampleTwoURL"));
    }
    void setOrganisationExampleTwoURL(const QString &value)
    {
        setObject(value, QStringLiteral("organisationExampleTwoURL"));
    }
    [[nodiscard]] PFFileObjectPtr profilePicture() const { return fileForKey(QStringLiteral("profilePicture")); }
    void setProfilePicture(const PFFileObjectPtr &value) { setObject(value, QStringLiteral("profilePicture")); }
    [[nodiscard]] bool isAuthorised() const { return boolForKey(QStringLiteral("isAuthorised")); }
    void setIsAuthorised(bool value) { setObject(value, QStringLiteral("isAuthorised")); }
    [[nodiscard]] bool doesPasswordRequireToBeChanged() const
    {
        return boolForKey(QStringLiteral("doesPasswordRequireToBeChanged"));
    }
    void setDoesPasswordRequireToBeChanged(bool value)
    {
        setObject(value, QStringLiteral("doesPasswordRequireToBeChanged"));
    }
    [[nodiscard]] QString deviceToken() const { return stringForKey(QStringLiteral("deviceToken")); }
    void setDeviceToken(const QString &value) { setObject(value, QStringLiteral("deviceToken")); }
    [[nodiscard]] bool isNewsDeskUser() const { return boolForKey(QStringLiteral("isNewsDeskUser")); }
    void setIsNewsDeskUser(bool value) { setObject(value, QStringLiteral("isNewsDeskUser")); }
    [[nodiscard]] bool shouldDeleteAccount() const { return boolForKey(QStringLiteral("shouldDeleteAccount")); }
    void setShouldDeleteAccount(bool value) { setObject(value, QStringLiteral("shouldDeleteAccount")); }
};
