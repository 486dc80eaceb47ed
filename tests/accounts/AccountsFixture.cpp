#include "AccountsFixture.h"

#include "AccountScenes.h"
#include "AlertController.h"
#include "ClientFixture.h"
#include "LoginPageTableViewController.h"
#include "NavigationController.h"
#include "PFSubclassRegistry.h"
#include "RecordClasses.h"
#include "Storyboard.h"

#include <QDBusMessage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

namespace {

// Stands for the main menu until it exists: the login only has to present "menu" of "Menu".
class MenuStandIn : public ui::ViewController {};

void registerStoryboards()
{
    ui::StoryboardDefinition main;
    main.initialIdentifier = AccountScenes::kLogin;
    AccountScenes::addTo(main);
    ui::Storyboard::registerStoryboard(QStringLiteral("Main"), main);
    ui::Storyboard::registerStoryboard(QStringLiteral("Registration"), main);

    ui::StoryboardDefinition menu;
    menu.initialIdentifier = QStringLiteral("menu");
    menu.scenes.insert(QStringLiteral("menu"), {[] { return new MenuStandIn; }});
    ui::Storyboard::registerStoryboard(QStringLiteral("Menu"), menu);
}

} // namespace

AccountsFixture::AccountsFixture(bool drawsInterface, bool withReader)
{
    if (!TestBackend::instance().isAvailable() || !m_dir.isValid())
        return;
    m_defaults = std::make_unique<UserDefaults>(m_dir.filePath(QStringLiteral("defaults.ini")));
    UserDefaults::setStandardUserDefaults(m_defaults.get());

    if (withReader) {
        m_bus = std::make_unique<PrivateBus>();
        if (!m_bus->isRunning() ||
            !m_bus->startTemplate(QStringLiteral(VANTREL_SOURCE_DIR "/tests/support/fprintd_template.py"),
                                  QStringLiteral("net.reactivated.Fprint"), {QStringLiteral("--session")}))
            return;
        m_biometrics = std::make_unique<FprintdBiometrics>(m_bus->connection());
    }

    AccountServices services;
    services.userDefaults = m_defaults.get();
    services.secureStore = &m_store;
    services.biometrics = m_biometrics.get();
    services.administratorEmail = kAdministrator;
    services.helpEmail = QStringLiteral("help@vantrel.test");
    AccountServices::setCurrent(services);

    PFSubclassRegistry::shared().clear();
    registerRecordClasses();
    restartClient();
    registerStoryboards();

    m_window = std::make_unique<ui::Window>();
    m_window->setDrawsInterface(drawsInterface);
    m_ready = true;
}

AccountsFixture::~AccountsFixture()
{
    ui::AlertController *alert = ui::AlertController::alertOnScreen();
    if (alert && !alert->actions().isEmpty())
        alert->choose(alert->actions().constLast());
    m_window.reset();
    ClientFixture::stop();
    for (const QString &account : std::as_const(m_accounts))
        forgetSavedPassword(account);
    AccountServices::setCurrent({});
    if (UserDefaults::standardUserDefaults() == m_defaults.get())
        UserDefaults::setStandardUserDefaults(nullptr);
    m_biometrics.reset();
    m_bus.reset();
}

AccountsFixture::Account AccountsFixture::makeUser(bool authorised, bool mustChangePassword, bool newsDesk)
{
    return makeUser({{QStringLiteral("isAuthorised"), authorised},
                     {QStringLiteral("doesPasswordRequireToBeChanged"), mustChangePassword},
                     {QStringLiteral("isNewsDeskUser"), newsDesk}});
}

AccountsFixture::Account AccountsFixture::makeUser(const QJsonObject &keys)
{
    const TestBackend &backend = TestBackend::instance();
    TestBackend::User user = backend.signUpUser({{QStringLiteral("firstName"), QStringLiteral("Amara")}});
    QJsonObject all{{QStringLiteral("workEmail"), user.username}};
    for (auto it = keys.begin(); it != keys.end(); ++it)
        all.insert(it.key(), it.value());
    const TestBackend::Reply reply =
        backend.request("PUT", QStringLiteral("/users/") + user.objectId, all, /*useMasterKey=*/true);
    if (reply.status != 200)
        qWarning() << "setting the account's keys failed:" << reply.raw;
    m_accounts << user.username;
    return {user.objectId, user.username, user.password};
}

QJsonObject AccountsFixture::serverUser(const QString &objectId)
{
    return TestBackend::instance().request("GET", QStringLiteral("/users/") + objectId, {}, true).body.object();
}

QJsonArray AccountsFixture::sessionsOf(const QString &objectId)
{
    const QString where = QString::fromUtf8(QUrl::toPercentEncoding(
        QStringLiteral(R"({"user":{"__type":"Pointer","className":"_User","objectId":"%1"}})").arg(objectId)));
    return TestBackend::instance()
        .request("GET", QStringLiteral("/sessions?where=") + where, {}, true)
        .body.object()
        .value(QStringLiteral("results"))
        .toArray();
}

bool AccountsFixture::endSessionsOf(const QString &objectId)
{
    const QJsonArray sessions = sessionsOf(objectId);
    bool ended = !sessions.isEmpty();
    for (const QJsonValue session : sessions) {
        const QString id = session.toObject().value(QStringLiteral("objectId")).toString();
        ended = TestBackend::instance().request("DELETE", QStringLiteral("/sessions/") + id, {}, true).status == 200 &&
                ended;
    }
    return ended;
}

bool AccountsFixture::canSignIn(const QString &username, const QString &password)
{
    return TestBackend::instance()
               .request("POST", QStringLiteral("/login"),
                        {{QStringLiteral("username"), username}, {QStringLiteral("password"), password}})
               .status == 200;
}

void AccountsFixture::restartClient(const QString &server)
{
    ClientFixture::start(ClientFixture::configuration(m_dir.path(), &m_sessionStorage, server));
}

LoginPageTableViewController *AccountsFixture::showLogin()
{
    ui::ViewController *first =
        ui::Storyboard::storyboardWithName(QStringLiteral("Main"))->instantiateInitialViewController();
    m_window->setRootViewController(first);
    m_window->makeKeyAndVisible();
    auto *login = qobject_cast<LoginPageTableViewController *>(navigation()->topViewController());
    if (login && !QTest::qWaitFor(
                     [&] { return login->appearanceState() == ui::ViewController::AppearanceState::Appeared; }, 5000))
        return nullptr;
    return login;
}

LoginPageTableViewController *AccountsFixture::logInWith(const QString &username, const QString &password)
{
    LoginPageTableViewController *login = showLogin();
    if (login) {
        login->userNameTextField()->setText(username);
        login->passwordTextField()->setText(password);
        login->loginButton()->click();
    }
    return login;
}

ui::NavigationController *AccountsFixture::navigation() const
{
    return qobject_cast<ui::NavigationController *>(m_window->rootViewController());
}

ui::AlertController *AccountsFixture::waitForAlert(int timeoutMs)
{
    if (!QTest::qWaitFor([] { return ui::AlertController::alertOnScreen() != nullptr; }, timeoutMs))
        return nullptr;
    return ui::AlertController::alertOnScreen();
}

QStringList AccountsFixture::buttonTitles(ui::AlertController *alert)
{
    QStringList titles;
    if (alert) {
        for (ui::AlertAction *action : alert->actions())
            titles << action->title();
    }
    return titles;
}

ui::AlertController *AccountsFixture::expectAlert(const QString &title, const QString &message,
                                                  const QStringList &buttons)
{
    ui::AlertController *alert = waitForAlert(20000);
    if (!alert) {
        qWarning() << "no alert; expected:" << title << message;
        return nullptr;
    }
    if (alert->title() != title || alert->message() != message || buttonTitles(alert) != buttons) {
        qWarning() << "unexpected alert:" << alert->title() << alert->message() << buttonTitles(alert);
        return nullptr;
    }
    return alert;
}

bool AccountsFixture::answer(const QString &title, const QString &message, const QString &button)
{
    ui::AlertController *alert = expectAlert(title, message, {button});
    choose(alert, button);
    return alert != nullptr;
}

void AccountsFixture::choose(ui::AlertController *alert, const QString &button)
{
    if (!alert)
        return;
    for (ui::AlertAction *action : alert->actions()) {
        if (action->title() == button) {
            alert->choose(action);
            break;
        }
    }
    (void)QTest::qWaitFor([] { return ui::AlertController::alertOnScreen() == nullptr; }, 5000);
    settle();
}

QString AccountsFixture::presentedIdentifier() const
{
    ui::ViewController *presented = navigation() ? navigation()->presentedViewController() : nullptr;
    return presented ? presented->storyboardIdentifier() : QString();
}

bool AccountsFixture::reader(const QString &method, const QVariantList &args)
{
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("net.reactivated.Fprint"),
                                                       QStringLiteral("/net/reactivated/Fprint/Manager"),
                                                       QStringLiteral("org.freedesktop.DBus.Mock"), method);
    call.setArguments(args);
    return m_bus->connection().call(call).type() == QDBusMessage::ReplyMessage;
}

std::optional<QString> AccountsFixture::savedPassword(const QString &account)
{
    return AccountServices::current().passwordItem(account).readPassword();
}

void AccountsFixture::forgetSavedPassword(const QString &account)
{
    m_store.remove(KeychainPasswordItem::kServiceName, account);
}

void AccountsFixture::settle(int ms)
{
    QTest::qWait(ms);
}
