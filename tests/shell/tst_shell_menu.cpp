#include "AlertController.h"
#include "BackendProbe.h"
#include "ConsoleLines.h"
#include "MenuController.h"
#include "Message.h"
#include "PFUser.h"
#include "Parse.h"
#include "ParseClientConfiguration.h"
#include "RecordClasses.h"
#include "RevealViewController.h"
#include "TestBackend.h"
#include "UrlOpener.h"
#include "UserDefaults.h"
#include "ui/Label.h"
#include "ui/Storyboard.h"
#include "ui/View.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

// Records what the menu would open instead of starting a browser.
class RecordingOpener : public UrlOpener {
public:
    QList<QUrl> opened;
    bool browser = true; // false: a machine where no browser takes the page
    bool canOpenURL(const QUrl &url) const override
    {
        return url.scheme() == QLatin1String("http") && !url.host().isEmpty();
    }
    bool openURL(const QUrl &url) override
    {
        opened << url;
        return browser;
    }
};

void sendMessage(const TestBackend::User &from, const TestBackend::User &to, bool read)
{
    const QJsonObject message{{QStringLiteral("from"), BackendProbe::userPointer(from.objectId)},
                              {QStringLiteral("to"), BackendProbe::userPointer(to.objectId)},
                              {QStringLiteral("title"), QStringLiteral("Shift on Friday")},
                              {QStringLiteral("messageBody"), QStringLiteral("Are you free?")},
                              {QStringLiteral("hasBeenRead"), read}};
    const TestBackend::Reply reply =
        TestBackend::instance().request("POST", QStringLiteral("/classes/Message"), message, true);
    QCOMPARE(reply.status, 201);
}

} // namespace

class TestMenu : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_data;
    std::unique_ptr<UserDefaults> m_defaults;
    RecordingOpener m_opener;

    void logIn(const TestBackend::User &user)
    {
        bool done = false;
        PFUser::logInWithUsernameInBackground(user.username, user.password,
                                              [&](const PFUserPtr &, const PFError *) { done = true; });
        QTRY_VERIFY_WITH_TIMEOUT(done, 15000);
        QVERIFY(PFUser::currentUser());
    }

    // The menu shown as the rear screen of an open container; returns the label's colour
    // once the unread check has answered.
    QColor colourWhenShown()
    {
        auto *menu = new MenuController(settings());
        QSignalSpy checked(menu, &MenuController::unreadCheckFinished);
        RevealViewController reveal(menu, new ui::ViewController);
        reveal.setFrontViewPosition(FrontRightShift, false);
        reveal.view()->setSize(390, 844);
        reveal.beginAppearanceTransition(true, false);
        reveal.endAppearanceTransition();
        if (checked.isEmpty() && !checked.wait(15000))
            return {};
        return menu->messageLabel()->textColor();
    }

    void startClient()
    {
        const TestBackend &backend = TestBackend::instance();
        Parse::initializeWithConfiguration(
            ParseClientConfiguration::configurationWithBlock([&](ParseClientConfiguration &c) {
                c.applicationId = backend.applicationId();
                c.clientKey = backend.clientKey();
                c.server = backend.serverUrl().toString();
                c.dataDirectory = m_data.path();
            }));
    }

    MenuSettings settings()
    {
        MenuSettings s;
        s.contactPage = TestBackend::instance().siteUrl().resolved(QUrl(QStringLiteral("contactUs.htm")));
        s.userDefaults = m_defaults.get();
        s.urlOpener = &m_opener;
        return s;
    }

private Q_SLOTS:
    void initTestCase()
    {
        REQUIRE_BACKEND();
        QVERIFY(m_data.isValid());
        m_defaults = std::make_unique<UserDefaults>(m_data.filePath(QStringLiteral("defaults.ini")));
        registerRecordClasses();
        startClient();
    }

    void init()
    {
        PFUser::logOut();
        m_opener.opened.clear();
    }

    void versionLine_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<QString>("line");
        QTest::newRow("stored version") << QVariant(QStringLiteral("1.4.2")) << "version 1.4.2 alpha";
        QTest::newRow("missing") << QVariant() << "version  alpha";
        QTest::newRow("not text") << QVariant(QVariantList{1, 2}) << "version  alpha";
    }
    void versionLine()
    {
        QFETCH(QVariant, stored);
        QFETCH(QString, line);
        m_defaults->removeObjectForKey(QStringLiteral("version_number"));
        if (stored.isValid())
            m_defaults->setObject(stored, QStringLiteral("version_number"));
        MenuController menu(settings());
        menu.loadViewIfNeeded();
        QCOMPARE(menu.versionLabel()->text(), line);
    }

    void unreadIndicator_data()
    {
        // Messages as "from>to:read" between me and an editor; empty: nobody signed in.
        QTest::addColumn<QStringList>("messages");
        QTest::addColumn<QColor>("colour");
        QTest::newRow("no user means white and no query") << QStringList() << QColor(Qt::white);
        QTest::newRow("one unread received among read ones turns it red")
            << QStringList{"e>m:1", "e>m:1", "e>m:1", "e>m:1", "e>m:0", "e>m:1"} << QColor(255, 59, 48);
        QTest::newRow("sent messages do not count") << QStringList{"e>m:1", "m>e:0"} << QColor(Qt::white);
    }
    void unreadIndicator()
    {
        QFETCH(QStringList, messages);
        QFETCH(QColor, colour);
        if (!messages.isEmpty()) {
            const QHash<QChar, TestBackend::User> people{{u'm', TestBackend::instance().signUpUser()},
                                                         {u'e', TestBackend::instance().signUpUser()}};
            for (const QString &m : messages)
                sendMessage(people[m.at(0)], people[m.at(2)], m.endsWith(u'1'));
            logIn(people[u'm']);
        }
        QCOMPARE(colourWhenShown(), colour);
    }

    // The contact page opens in the browser; when it cannot, the person is told so (and may
    // copy the address) besides the log line.
    void contactRowOpensTheOperatorsPage()
    {
        MenuController menu(settings());
        menu.tableViewDidSelectRowAtIndexPath(MenuController::kContactRow);
        QCOMPARE(m_opener.opened.size(), 1);
        QCOMPARE(m_opener.opened.first().path(), QStringLiteral("/site/contactUs.htm"));
        QVERIFY(!ui::AlertController::alertOnScreen());

        ConsoleLines log("vantrel.shell.menu");
        m_opener.browser = false;
        menu.tableViewDidSelectRowAtIndexPath(MenuController::kContactRow);
        ui::AlertController *alert = ui::AlertController::alertOnScreen();
        QVERIFY(alert && alert->message().endsWith(m_opener.opened.first().toString()));
        QVERIFY(alert->choosePreferred()); // "Copy Address"
        QTRY_COMPARE(QGuiApplication::clipboard()->text(), m_opener.opened.first().toString());
        m_opener.browser = true;

        MenuSettings broken = settings();
        broken.contactPage = QUrl(QStringLiteral("contactUs.htm")); // no scheme, no host
        MenuController lost(broken);
        lost.tableViewDidSelectRowAtIndexPath(MenuController::kContactRow);
        QCOMPARE(m_opener.opened.size(), 2);
        alert = ui::AlertController::alertOnScreen();
        QVERIFY(alert && alert->title() == QStringLiteral("Sorry") && alert->cancel());
        QCOMPARE(log.lines(), QStringList(2, QStringLiteral("Something has gone wrong.")));
    }

    void logOutPresentsTheLoginScreenAndForgetsTheSession()
    {
        if (!ui::Storyboard::storyboardWithName(QStringLiteral("Registration"))) {
            ui::StoryboardDefinition registration;
            registration.scenes.insert(QStringLiteral("login"), {[] { return new ui::ViewController; }});
            ui::Storyboard::registerStoryboard(QStringLiteral("Registration"), registration);
        }
        const TestBackend::User me = TestBackend::instance().signUpUser();
        logIn(me);
        auto *menu = new MenuController(settings());
        RevealViewController reveal(menu, new ui::ViewController);
        reveal.view()->setSize(390, 844);
        reveal.beginAppearanceTransition(true, false);
        reveal.endAppearanceTransition();
        menu->tableViewDidSelectRowAtIndexPath(MenuController::kLogOutRow);

        QVERIFY(!PFUser::currentUser());
        ui::ViewController *login = reveal.presentedViewController();
        QVERIFY(login);
        QCOMPARE(login->storyboard()->name(), QStringLiteral("Registration"));
        QCOMPARE(login->storyboardIdentifier(), QStringLiteral("login"));
        QCOMPARE(login->modalPresentationStyle(), ui::ViewController::ModalPresentationStyle::FullScreen);
        QTRY_COMPARE(reveal.appearanceState(), ui::ViewController::AppearanceState::Disappeared);

        // A new start of the backend client finds no session either.
        startClient();
        QVERIFY(!PFUser::currentUser());
    }
};

QTEST_MAIN(TestMenu)
#include "tst_shell_menu.moc"
