#pragma once

#include "MemorySecureStorage.h"
#include "TestBackend.h"
#include "UserDefaults.h"
#include "Window.h"

#include <QJsonObject>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>

class MasterProfileViewController;
class RevealViewController;
namespace ui {
class AlertController;
}

// One profile test: the backend client against the local backend with its own data folder,
// the administrator address, the "Menu" storyboard (the reveal container with the profile in
// front) and a window, drawn only when asked.
class ProfileFixture {
public:
    static inline const QString kAdministrator = QStringLiteral("admin@vantrel.test");

    explicit ProfileFixture(bool drawsInterface = false);
    ~ProfileFixture();
    ProfileFixture(const ProfileFixture &) = delete;
    ProfileFixture &operator=(const ProfileFixture &) = delete;

    [[nodiscard]] bool isReady() const { return m_ready; }

    struct Member {
        TestBackend::User user;
        QString freelancerId;
    };
    // An authorised freelancer under the role with these skills, made with the master key.
    Member makeFreelancer(const QString &role, const QStringList &skills, const QJsonObject &userKeys = {});

    // Signs the member in and shows "menu" of "Menu"; returns the hub once its records came.
    MasterProfileViewController *openHub(const Member &member);
    [[nodiscard]] RevealViewController *reveal() const;
    [[nodiscard]] ui::Window &window() { return *m_window; }

    // Restarts the client against another server (a closed port stands for a lost connection);
    // the signed-in user is kept.
    void restartClient(const QString &server = {});

    // The records as the server holds them.
    [[nodiscard]] static QJsonObject serverUser(const QString &objectId);
    [[nodiscard]] static QJsonObject serverFreelancer(const QString &objectId);
    [[nodiscard]] static QString categoryId(const QString &role);
    [[nodiscard]] static QByteArray download(const QString &url);

    // The alert once one comes, checked against what is expected (nullptr, with a warning, when
    // no alert or another one came).
    static ui::AlertController *expectAlert(const QString &title, const QString &message, const QStringList &buttons);
    static void choose(ui::AlertController *alert, const QString &button);

private:
    QTemporaryDir m_dir;
    MemorySecureStorage m_sessionStorage;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<ui::Window> m_window;
    bool m_ready = false;
};
