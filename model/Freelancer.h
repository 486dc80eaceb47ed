#pragma once

#include "PFObject.h"
#include "PFQuery.h"

class FreelanceCategory;
class User;

// A freelancer's profile as editors see it; one per freelancer user.
class Freelancer : public PFObject {
public:
    Freelancer() : PFObject(parseClassName()) {}
    [[nodiscard]] static QString parseClassName() { return QStringLiteral("Freelancer"); }
    // Newest first, with the role, the (absent) sub-category and the user filled in.
    [[nodiscard]] static PFQuery query();

    [[nodiscard]] std::shared_ptr<User> user() const;
    void setUser(const std::shared_ptr<User> &value);
    [[nodiscard]] std::optional<PFGeoPoint> lastKnownLocation() const
    {
        return geoPointForKey(QStringLiteral("lastKnownLocation"));
    }
    void setLastKnownLocation(const PFGeoPoint &value)
    {
        setObject(QVariant::fromValue(value), QStringLiteral("lastKnownLocation"));
    }
    [[nodiscard]] QDateTime locationDate() const { return dateForKey(QStringLiteral("locationDate")); }
    void setLocationDate(const QDateTime &value) { setObject(value, QStringLiteral("locationDate")); }
    [[nodiscard]] std::shared_ptr<FreelanceCategory> freelanceCategory() const;
    void setFreelanceCategory(const std::shared_ptr<FreelanceCategory> &value);
    [[nodiscard]] QStringList skills() const { return stringListForKey(QStringLiteral("skills")); }
    void setSkills(const QStringList &value) { setStringList(value, QStringLiteral("skills")); }
    [[nodiscard]] QList<QDateTime> notAvailable() const { return dateListForKey(QStringLiteral("notAvailable")); }
    void setNotAvailable(const QList<QDateTime> &value) { setDateList(value, QStringLiteral("notAvailable")); }
    [[nodiscard]] QStringList languages() const { return stringListForKey(QStringLiteral("languages")); }
    void setLanguages(const QStringList &value) { setStringList(value, QStringLiteral("languages")); }
    [[nodiscard]] QString facebookURL() const { return stringForKey(QStringLiteral("facebookURL")); }
    void setFacebookURL(const QString &value) { setObject(value, QStringLiteral("facebookURL")); }
    [[nodiscard]] QString twitterURL() const { return stringForKey(QStringLiteral("twitterURL")); }
    void setTwitterURL(const QString &value) { setObject(value, QStringLiteral("twitterURL")); }
    [[nodiscard]] QString linkedINURL() const { return stringForKey(QStringLiteral("linkedINURL")); }
    void setLinkedINURL(const QString &value) { setObject(value, QStringLiteral("linkedINURL")); }
    [[nodiscard]] QString youtubeURL() const { return stringForKey(QStringLiteral("youtubeURL")); }
    void setYoutubeURL(const QString &value) { setObject(value, QStringLiteral("youtubeURL")); }
    [[nodiscard]] QString instaURL() const { return stringForKey(QStringLiteral("instaURL")); }
    void setInstaURL(const QString &value) { setObject(value, QStringLiteral("instaURL")); }
    [[nodiscard]] QString myWork() const { return stringForKey(QStringLiteral("myWork")); }
    void setMyWork(const QString &value) { setObject(value, QStringLiteral("myWork")); }
    [[nodiscard]] QString cvURL() const { return stringForKey(QStringLiteral("cvURL")); }
    void setCvURL(const QString &value) { setObject(value, QStringLiteral("cvURL")); }
    [[nodiscard]] QStringList myEquipment() const { return stringListForKey(QStringLiteral("myEquipment")); }
    void setMyEquipment(const QStringList &value) { setStringList(value, QStringLiteral("myEquipment")); }
    [[nodiscard]] QString myTown() const { return stringForKey(QStringLiteral("myTown")); }
    void setMyTown(const QString &value) { setObject(value, QStringLiteral("myTown")); }
    [[nodiscard]] QString myCountry() const { return stringForKey(QStringLiteral("myCountry")); }
    void setMyCountry(const QString &value) { setObject(value, QStringLiteral("myCountry")); }
    [[nodiscard]] bool isWhatsApp() const { return boolForKey(QStringLiteral("isWhatsApp")); }
    void setIsWhatsApp(bool value) { setObject(value, QStringLiteral("isWhatsApp")); }
    [[nodiscard]] QString workExampleOne() const { return stringForKey(QStringLiteral("workExampleOne")); }
    void setWorkExampleOne(const QString &value) { setObject(value, QStringLiteral("workExampleOne")); }
    [[nodiscard]] QString workExampleTwo() const { return stringForKey(QStringLiteral("workExampleTwo")); }
    void setWorkExampleTwo(const QString &value) { setObject(value, QStringLiteral("workExampleTwo")); }
    [[nodiscard]] QString workExampleThree() const { return stringForKey(QStringLiteral("workExampleThree")); }
    void setWorkExampleThree(const QString &value) { setObject(value, QStringLiteral("workExampleThree")); }
    [[nodiscard]] QString workExampleFour() const { return stringForKey(QStringLiteral("workExampleFour")); }
    void setWorkExampleFour(const QString &value) { setObject(value, QStringLiteral("workExampleFour")); }
};
