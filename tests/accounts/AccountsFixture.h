#pragma once

#include "AccountServices.h"
#include "FprintdBiometrics.h"
#include "MemorySecureStorage.h"
#include "PrivateBus.h"
#include "SecureStore.h"
#include "TestBackend.h"
#include "UserDefaults.h"
#include "ViewController.h" // Window holds a QPointer to it
#include "Window.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QPointer>
#include <QTemporaryDir>
#include <memory>

class LoginPageTableViewController;
namespace ui {
class AlertController;
class NavigationController;
class ViewController;
} // namespace ui

// Everything one sign-in test needs, fresh: user defaults in a temporary folder, the session's
// real Secret Service, a fake fingerprint reader on a private bus (unless told not to), the
// backend client against the local backend, the app's sign-in storyboards and a window (drawn
// only when asked).
class AccountsFixture {
public:
    static inline const QString kAdministrator = QStringLiteral("admin@vantrel.test");

    explicit AccountsFixture(bool drawsInterface = false, bool withReader = true);
    virtual ~AccountsFixture();
    AccountsFixture(const AccountsFixture &) = delete;
    AccountsFixture &operator=(const AccountsFixture &) = delete;

    [[nodiscard]] bool isReady() const { return m_ready; }

    // Account states, set with the master key as an administrator would.
    struct Account {
        QString objectId;
        QString username;
        QString password;
    };
    Account makeUser(bool authorised, bool mustChangePassword = false, bool newsDesk = false);
    // A user named Amara with these keys set.
    Account makeUser(const QJsonObject &keys);
    [[nodiscard]] static QJsonObject serverUser(const QString &objectId);
    // Ends every session of the user on the server, as an administrator can; false when there
    // was none or one stayed.
    static bool endSessionsOf(const QString &objectId);
    // The user's sessions on the server (one per sign-in).
    [[nodiscard]] static QJsonArray sessionsOf(const QString &objectId);
    // Whether the backend takes this password (asked directly, not through the client).
    [[nodiscard]] static bool canSignIn(const QString &username, const QString &password);

    // Restarts the client against another server (a closed port stands for a lost connection);
    // the signed-in user is kept.
    void restartClient(const QString &server = {});

    // Shows the main storyboard and returns its sign-in page once it has appeared.
    LoginPageTableViewController *showLogin();
    // Shows the sign-in page, fills both fields and presses the login button; returns the page.
    LoginPageTableViewController *logInWith(const QString &username, const QString &password);
    [[nodiscard]] ui::NavigationController *navigation() const;
    [[nodiscard]] ui::Window &window() { return *m_window; }

    // The alert on screen once one comes (nullptr after the timeout), and its button captions.
    static ui::AlertController *waitForAlert(int timeoutMs = 15000);
    static QStringList buttonTitles(ui::AlertController *alert);
    // The alert once one comes, checked against what is expected (nullptr, with a warning, when
    // no alert or another one came).
    static ui::AlertController *expectAlert(const QString &title, const QString &message, const QStringList &buttons);
    // Expects an alert with one button and chooses it; false when another one or none came.
    static bool answer(const QString &title, const QString &message, const QString &button = QStringLiteral("Ok"));
    // Chooses the button with this caption and lets the dismissal finish.
    static void choose(ui::AlertController *alert, const QString &button);
    // What the login presented over itself ("menu" when the sign-in was accepted).
    [[nodiscard]] QString presentedIdentifier() const;

    // The fake reader's controls (org.freedesktop.DBus.Mock of fprintd's manager).
    bool reader(const QString &method, const QVariantList &args = {});

    UserDefaults &defaults() { return *m_defaults; }
    SecureStore &store() { return m_store; }
    FprintdBiometrics &biometrics() { return *m_biometrics; }

    // The saved password of an account, or nothing.
    std::optional<QString> savedPassword(const QString &account);
    void forgetSavedPassword(const QString &account);

    static void settle(int ms = 50);

private:
    QTemporaryDir m_dir;
    std::unique_ptr<UserDefaults> m_defaults;
    SecureStore m_store{QStringLiteral("Vantrel Pro session test")};
    MemorySecureStorage m_sessionStorage;
    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<FprintdBiometrics> m_biometrics;
    std::unique_ptr<ui::Window> m_window;
    QStringList m_accounts;
    bool m_ready = false;
};
