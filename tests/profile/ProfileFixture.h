#pragma once

#include "AccountsFixture.h"

#include <QJsonObject>
#include <QStringList>

class MasterProfileViewController;
class RevealViewController;

// One profile test: the sign-in fixture (with the fingerprint reader only when asked), with
// the "Menu" storyboard holding the reveal container and the profile in front.
class ProfileFixture : public AccountsFixture {
public:
    explicit ProfileFixture(bool drawsInterface = false, bool withReader = false);

    struct Member {
        Account user;
        QString freelancerId;
    };
    // An authorised freelancer under the role with these skills, made with the master key.
    Member makeFreelancer(const QString &role, const QStringList &skills, const QJsonObject &userKeys = {});

    // Signs the member in and shows "menu" of "Menu"; returns the hub once its records came.
    MasterProfileViewController *openHub(const Member &member);
    [[nodiscard]] RevealViewController *reveal();

    // The records as the server holds them.
    [[nodiscard]] static QJsonObject serverFreelancer(const QString &objectId);
    [[nodiscard]] static QString categoryId(const QString &role);
    [[nodiscard]] static QByteArray download(const QString &url);
};
