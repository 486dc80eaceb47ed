#include "AppConfiguration.h"
#include "NotificationCenter.h"
#include "PrivateBus.h"
#include "PushTokenSource.h"
#include "UserDefaults.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

class TestPlatform : public QObject {
    Q_OBJECT

    static bool writeFile(const QString &path, const QByteArray &bytes)
    {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    }

private Q_SLOTS:
    void configurationAcceptsOnlySafeServers_data()
    {
        QTest::addColumn<QString>("server");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("https anywhere") << "https://api.vantrel.example" << true;
        QTest::newRow("http on loopback address") << "http://127.0.0.1:1337" << true;
        QTest::newRow("http on localhost") << "http://localhost:1337" << true;
        QTest::newRow("http on ipv6 loopback") << "http://[::1]:1337" << true;
        QTest::newRow("http elsewhere") << "http://api.vantrel.example" << false;
        QTest::newRow("http on a private address") << "http://192.168.1.4:1337" << false;
        QTest::newRow("not a web address") << "ftp://127.0.0.1" << false;
        QTest::newRow("no host") << "https://" << false;
    }

    void configurationAcceptsOnlySafeServers()
    {
        QFETCH(QString, server);
        QFETCH(bool, accepted);
        AppConfiguration config;
        const auto outcome = config.load({QStringLiteral("app"), QStringLiteral("--server"), server,
                                          QStringLiteral("--config"), QStringLiteral("/nonexistent.conf")});
        QCOMPARE(outcome.ok, accepted);
        if (!accepted)
            QVERIFY2(outcome.message.contains(QLatin1String("backend server")), qPrintable(outcome.message));
    }

    void configurationLayersFileEnvironmentAndArguments()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("app.conf"));
        QVERIFY(writeFile(path, "server=https://file.example\nclientKey=fromfile\nhelpEmail=desk@file.example\n"));
        qputenv("VANTREL_CLIENT_KEY", "fromenv");
        AppConfiguration config;
        const auto outcome = config.load({QStringLiteral("app"), QStringLiteral("--config"), path,
                                          QStringLiteral("--server"), QStringLiteral("https://cli.example")});
        qunsetenv("VANTREL_CLIENT_KEY");
        QVERIFY2(outcome.ok, qPrintable(outcome.message));
        QCOMPARE(config.serverUrl, QUrl(QStringLiteral("https://cli.example")));
        QCOMPARE(config.clientKey, QStringLiteral("fromenv"));
        QCOMPARE(config.helpEmail, QStringLiteral("desk@file.example"));
        QCOMPARE(config.applicationId, QStringLiteral("u8jzPde0IgxLd6GncfBAepfJBd0Kh8oOOL8dKLzd"));
        QVERIFY(!config.dataDirectory.isEmpty());
        config.siteUrl = QUrl(QStringLiteral("https://site.example/pages"));
        QCOMPARE(config.sitePage(QStringLiteral("contactUs.htm")),
                 QUrl(QStringLiteral("https://site.example/pages/contactUs.htm")));
    }

    void configurationHelpListsEveryOption()
    {
        AppConfiguration config;
        const auto outcome = config.load({QStringLiteral("app"), QStringLiteral("--help")});
        QVERIFY(outcome.helpRequested);
        for (const char *option :
             {"--server", "--application-id", "--client-key", "--tiles", "--geocoder", "--data-dir"})
            QVERIFY2(outcome.message.contains(QLatin1String(option)), option);

        const auto wrong = config.load({QStringLiteral("app"), QStringLiteral("--no-such-option")});
        QVERIFY(!wrong.ok);
        QVERIFY(wrong.message.contains(QLatin1String("no-such-option")));
    }

    void userDefaultsKeepValuesPrivately()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("prefs/defaults.ini"));
        {
            UserDefaults defaults(path);
            QVERIFY(!defaults.boolForKey(QStringLiteral("rememberMe")));
            defaults.setBool(true, QStringLiteral("rememberMe"));
            defaults.setBool(false, QStringLiteral("hasLoginKey"));
            defaults.setObject(QStringLiteral("1.0.0"), QStringLiteral("version_number"));
        }
        UserDefaults reopened(path);
        QVERIFY(reopened.boolForKey(QStringLiteral("rememberMe")));
        QVERIFY(reopened.hasKey(QStringLiteral("hasLoginKey")));
        QVERIFY(!reopened.boolForKey(QStringLiteral("hasLoginKey")));
        QCOMPARE(reopened.stringForKey(QStringLiteral("version_number")), QStringLiteral("1.0.0"));
        reopened.removeObjectForKey(QStringLiteral("rememberMe"));
        QVERIFY(!reopened.hasKey(QStringLiteral("rememberMe")));
        QCOMPARE(QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther | QFile::WriteOther),
                 QFile::Permissions());
    }

    void pushTokenIsMadeOnceAndKept()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("push-token"));
        QByteArray first;
        {
            PushTokenSource source(path);
            QSignalSpy spy(&source, &PushTokenSource::didRegisterForRemoteNotificationsWithDeviceToken);
            source.registerForRemoteNotifications();
            QCOMPARE(spy.count(), 0); // never inside the call
            QVERIFY(spy.wait());
            first = spy.at(0).at(0).toByteArray();
        }
        QCOMPARE(first.size(), 32);
        QVERIFY(first != QByteArray(32, '\0'));
        QCOMPARE(QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());

        PushTokenSource again(path);
        QSignalSpy spy(&again, &PushTokenSource::didRegisterForRemoteNotificationsWithDeviceToken);
        again.registerForRemoteNotifications();
        QVERIFY(spy.wait());
        QCOMPARE(spy.at(0).at(0).toByteArray(), first);
    }

    void pushTokenFileThatIsDamagedIsReplaced()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("push-token"));
        QVERIFY(writeFile(path, "short"));
        PushTokenSource source(path);
        QSignalSpy spy(&source, &PushTokenSource::didRegisterForRemoteNotificationsWithDeviceToken);
        source.registerForRemoteNotifications();
        QVERIFY(spy.wait());
        QCOMPARE(spy.at(0).at(0).toByteArray().size(), 32);

        // A token that cannot be kept is a failure, reported as such.
        PushTokenSource nowhere(QStringLiteral("/proc/no-such-dir/push-token"));
        QSignalSpy failed(&nowhere, &PushTokenSource::didFailToRegisterForRemoteNotificationsWithError);
        nowhere.registerForRemoteNotifications();
        QVERIFY(failed.wait());
    }

    void notificationPermission_data()
    {
        QTest::addColumn<bool>("service");
        QTest::newRow("granted when the service exists") << true;
        QTest::newRow("denied, with a reason, without it") << false;
    }
    void notificationPermission()
    {
        QFETCH(bool, service);
        PrivateBus bus;
        QVERIFY(bus.isRunning());
        if (service)
            QVERIFY(bus.startTemplate(QStringLiteral("notification_daemon"),
                                      QStringLiteral("org.freedesktop.Notifications")));
        NotificationCenter center(bus.connection());
        std::optional<bool> granted;
        QString error;
        center.requestAuthorizationWithOptions(15, [&](bool g, const QString &e) {
            granted = g;
            error = e;
        });
        QVERIFY(!granted); // never inside the call
        QTRY_VERIFY_WITH_TIMEOUT(granted.has_value(), 10000);
        QCOMPARE(*granted, service);
        QCOMPARE(error.isEmpty(), service);

        std::optional<NotificationCenter::Settings> settings;
        center.getNotificationSettingsWithCompletionHandler([&](NotificationCenter::Settings s) { settings = s; });
        QTRY_VERIFY(settings.has_value());
        QCOMPARE(settings->authorizationStatus == NotificationCenter::AuthorizationStatus::Authorized, service);
        QCOMPARE(settings->description().contains(QLatin1String("authorized")), service);
    }
};

QTEST_GUILESS_MAIN(TestPlatform)
#include "tst_platform.moc"
