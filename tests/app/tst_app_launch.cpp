#include "AppConfiguration.h"
#include "AppDelegate.h"
#include "AppStoryboards.h"
#include "ConsoleLines.h"
#include "NotificationCenter.h"
#include "PFUser.h"
#include "Parse.h"
#include "ParseCore.h"
#include "PrivateBus.h"
#include "PushTokenSource.h"
#include "SecureStore.h"
#include "Storyboard.h"
#include "TestBackend.h"
#include "Theme.h"
#include "UserDefaults.h"
#include "Window.h"
#include "ui/ViewController.h"

#include <QJsonArray>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>
#include <QUuid>

namespace {

// One launch with its own data directory, user defaults and services.
struct Launch {
    QTemporaryDir dir;
    AppConfiguration configuration;
    std::unique_ptr<UserDefaults> defaults;
    std::unique_ptr<NotificationCenter> notifications;
    std::unique_ptr<PushTokenSource> pushTokens;
    SecureStore secureStore{QStringLiteral("Vantrel Pro session test")};
    std::unique_ptr<AppDelegate> delegate;

    Launch(const QDBusConnection &bus, const QString &dataDirectory = {}, const QUrl &server = {})
    {
        const TestBackend &backend = TestBackend::instance();
        configuration.serverUrl = server.isEmpty() ? backend.serverUrl() : server;
        configuration.dataDirectory = dataDirectory.isEmpty() ? dir.path() : dataDirectory;
        defaults = std::make_unique<UserDefaults>(configuration.dataDirectory + QStringLiteral("/defaults.ini"));
        UserDefaults::setStandardUserDefaults(defaults.get()); // for the sign-in screen, as the app does
        notifications = std::make_unique<NotificationCenter>(bus);
        pushTokens = std::make_unique<PushTokenSource>(configuration.dataDirectory + QStringLiteral("/push-token"));
        AppDelegate::Services services;
        services.configuration = &configuration;
        services.userDefaults = defaults.get();
        services.notificationCenter = notifications.get();
        services.pushTokenSource = pushTokens.get();
        services.secureStorage = &secureStore;
        services.applicationVersion = QStringLiteral("2.3.1");
        services.drawsInterface = false;
        delegate = std::make_unique<AppDelegate>(services);
    }

    ~Launch() { UserDefaults::setStandardUserDefaults(nullptr); }

    // Launches and waits until the first screen is decided (the remembered session was read).
    bool launchAndDecide()
    {
        QSignalSpy decided(delegate.get(), &AppDelegate::launchDecided);
        return delegate->applicationDidFinishLaunching({}) && !delegate->isLaunchDecided() &&
               (!decided.isEmpty() || decided.wait(20000));
    }
};

// An earlier run of the app in `directory` signs the user in and quits once the session is kept.
bool signInEarlier(const QDBusConnection &bus, const QString &directory, const TestBackend::User &user)
{
    Launch earlier(bus, directory);
    if (!earlier.launchAndDecide())
        return false;
    bool done = false;
    PFUser::logInWithUsernameInBackground(user.username, user.password,
                                          [&](const PFUserPtr &, const PFError *) { done = true; });
    return QTest::qWaitFor([&] { return done && Parse::core()->currentUserController().isRemembered(); }, 15000);
}

} // namespace

class TestAppLaunch : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        REQUIRE_BACKEND();
        AppStoryboards::registerAll(AppConfiguration());
    }

    void deviceTokenText_data()
    {
        QTest::addColumn<QByteArray>("token");
        QTest::addColumn<QString>("text");
        QTest::newRow("two bytes") << QByteArray::fromHex("0aff") << "0AFF";
        QTest::newRow("leading zeros kept") << QByteArray::fromHex("000102") << "000102";
        QTest::newRow("empty") << QByteArray() << "";
        }

    void deviceTokenText()
    {
        QFETCH(QByteArray, token);
        QFETCH(QString, text);
        QCOMPARE(AppDelegate::deviceTokenString(token), text);
    }

    void launchWithoutSessionLeavesTheFirstScreenToTheMainStoryboard()
    {
        PrivateBus bus; // no notification service on it
        QVERIFY(bus.isRunning());
        Launch launch(bus.connection());
        ConsoleLines console("vantrel.app");
        launch.notifications->setApplicationIconBadgeNumber(7);

        QVERIFY(launch.launchAndDecide());

        QVERIFY(!PFUser::currentUser());
        QVERIFY(!launch.delegate->window());
        QCOMPARE(launch.notifications->applicationIconBadgeNumber(), 0);
        QCOMPARE(launch.defaults->stringForKey(QStringLiteral("version_number")), QStringLiteral("2.3.1"));
        QCOMPARE(ui::Theme::instance()->navigationBarColor(), QColor(49, 187, 234));
        QCOMPARE(ui::Theme::instance()->secondaryColor(), QColor(8, 80, 208));
        QCOMPARE(ui::Theme::instance()->titleColor(), QColor(Qt::white));
        QTRY_VERIFY_WITH_TIMEOUT(console.lines().contains(QStringLiteral("Permission granted: false")), 10000);
        QVERIFY(!console.lines().contains(QStringLiteral("We have user")));
        QVERIFY(!launch.defaults->hasKey(QStringLiteral("deviceToken")));

        // What the app then shows is the main storyboard's first screen.
        std::unique_ptr<ui::ViewController> first(
            ui::Storyboard::storyboardWithName(AppStoryboards::kMain)->instantiateInitialViewController());
        QVERIFY(first);
        QCOMPARE(first->storyboardIdentifier(), AppStoryboards::kLoginIdentifier);
    }

    void launchWithRememberedSessionShowsTheMenu()
    {
        const TestBackend::User user = TestBackend::instance().signUpUser();
        QVERIFY(!user.sessionToken.isEmpty());
        PrivateBus bus;
        QTemporaryDir shared;
        QVERIFY(signInEarlier(bus.connection(), shared.path(), user));

        Launch launch(bus.connection(), shared.path());
        ConsoleLines console("vantrel.app");
        QVERIFY(launch.launchAndDecide());
        QVERIFY(PFUser::currentUser());
        QCOMPARE(PFUser::currentUser()->objectId(), user.objectId);
        ui::Window *window = launch.delegate->window();
        QVERIFY(window);
        QVERIFY(window->isVisible());
        ui::ViewController *root = window->rootViewController();
        QVERIFY(root);
        QCOMPARE(root->storyboardIdentifier(), AppStoryboards::kMenuIdentifier);
        QCOMPARE(root->storyboard()->name(), AppStoryboards::kMenu);
        QCOMPARE(root->modalPresentationStyle(), ui::ViewController::ModalPresentationStyle::FullScreen);
        const qsizetype had = console.lines().indexOf(QStringLiteral("We have user"));
        QVERIFY(had >= 0);
        QCOMPARE(console.lines().indexOf(QStringLiteral("Should be storyboard")), had + 1);
        PFUser::logOut();
    }

    void sessionEndedByTheServerBringsTheSignInAtOnce()
    {
        const TestBackend::User user = TestBackend::instance().signUpUser();
        PrivateBus bus;
        QTemporaryDir shared;
        QVERIFY(signInEarlier(bus.connection(), shared.path(), user));

        // Without a connection the remembered session is not refused: it stays.
        QTcpServer closed;
        QVERIFY(closed.listen(QHostAddress::LocalHost));
        const QUrl nowhere(QStringLiteral("http://127.0.0.1:%1").arg(closed.serverPort()));
        closed.close();
        {
            Launch offline(bus.connection(), shared.path(), nowhere);
            QVERIFY(offline.launchAndDecide());
            QVERIFY(offline.delegate->window());
            QSignalSpy refused(offline.delegate.get(), &AppDelegate::rememberedSessionRefused);
            QVERIFY(!refused.wait(3000));
            QVERIFY(PFUser::currentUser());
        }

        // The server ends every session of the account (as when it is refused or closed).
        const QString token = Parse::core()->currentUserController().sessionToken();
        QCOMPARE(TestBackend::instance().request("POST", QStringLiteral("/logout"), {}, false, token).status, 200);
        Launch launch(bus.connection(), shared.path());
        QSignalSpy refused(launch.delegate.get(), &AppDelegate::rememberedSessionRefused);
        QVERIFY(launch.launchAndDecide());
        QVERIFY(refused.wait(15000));
        QVERIFY(!PFUser::currentUser());
        QCOMPARE(launch.delegate->window()->rootViewController()->storyboardIdentifier(),
                 AppStoryboards::kLoginIdentifier);
        Launch next(bus.connection(), shared.path());
        QVERIFY(next.launchAndDecide());
        QVERIFY(!next.delegate->window());
    }

    void grantedPermissionSavesTheInstallationWithChannelPro()
    {
        PrivateBus bus;
        QVERIFY(
            bus.startTemplate(QStringLiteral("notification_daemon"), QStringLiteral("org.freedesktop.Notifications")));
        Launch launch(bus.connection());
        ConsoleLines console("vantrel.app");
        QSignalSpy saved(launch.delegate.get(), &AppDelegate::installationSaveFinished);
        QVERIFY(launch.launchAndDecide());
        QVERIFY(saved.wait(20000));
        QVERIFY(saved.at(0).at(0).toBool());
        QVERIFY(console.lines().contains(QStringLiteral("Permission granted: true")));
        QVERIFY(console.lines().contains(QStringLiteral("You have successfully saved your push installation")));

        const QString token = launch.defaults->stringForKey(QStringLiteral("deviceToken"));
        QCOMPARE(token.size(), 64);
        QVERIFY(QRegularExpression(QStringLiteral("^[0-9A-F]{64}$")).match(token).hasMatch());
        QVERIFY(console.lines().contains(token));

        // The installation keeps the token the way the backend client writes it: lower-case hex.
        const TestBackend &backend = TestBackend::instance();
        auto findInstallation = [&] {
            const QString where = QString::fromUtf8(
                QUrl::toPercentEncoding(QStringLiteral("{\"deviceToken\":\"%1\"}").arg(token.toLower())));
            const auto reply = backend.request("GET", QStringLiteral("/installations?where=") + where, {}, true);
            const QJsonArray results = reply.body.object().value(QStringLiteral("results")).toArray();
            return results.size() == 1 ? results.at(0).toObject() : QJsonObject();
        };
        QJsonObject installation = findInstallation();
        QCOMPARE(installation.value(QStringLiteral("channels")).toArray(), QJsonArray{QStringLiteral("pro")});

        // Every registration puts the channel list back to exactly ["pro"].
        const QString id = installation.value(QStringLiteral("objectId")).toString();
        backend.request("PUT", QStringLiteral("/installations/") + id,
                        {{QStringLiteral("channels"), QJsonArray{QStringLiteral("news"), QStringLiteral("pro")}}},
                        true);
        saved.clear();
        launch.pushTokens->registerForRemoteNotifications();
        QVERIFY(saved.wait(20000));
        installation = findInstallation();
        QCOMPARE(installation.value(QStringLiteral("channels")).toArray(), QJsonArray{QStringLiteral("pro")});
        QCOMPARE(installation.value(QStringLiteral("objectId")).toString(), id);
    }

    void backgroundFetchNeverCompletes()
    {
        PrivateBus bus;
        Launch launch(bus.connection());
        bool called = false;
        launch.delegate->applicationPerformFetch([&](int) { called = true; });
        QTest::qWait(100);
        QVERIFY(!called);
        QCOMPARE(launch.delegate->applicationConfigurationForConnectingSceneSession(QStringLiteral("app")).name,
                 QStringLiteral("Default Configuration"));
    }
};

QTEST_MAIN(TestAppLaunch)
#include "tst_app_launch.moc"
