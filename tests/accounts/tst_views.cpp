// The sign-in drawn offscreen: every view of the module loads, a person types into the two
// fields and presses the login button, and the fingerprint prompt's cancel button works.
#include "AccountsFixture.h"
#include "AlertController.h"
#include "LoginPageTableViewController.h"
#include "NavigationController.h"
#include "ViewTestHelpers.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

using ViewTest::tap;
using ViewTest::typeText;
using ViewTest::visibleItem;

class TestAccountViews : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<AccountsFixture> m_fixture;
    QQuickWindow *m_quick = nullptr;

    // A drawn fixture with a signed-up user, and the login on screen; with a saved password the
    // fingerprint sign-in is offered.
    LoginPageTableViewController *showLogin(AccountsFixture::Account &account, bool savedPassword)
    {
        m_fixture = std::make_unique<AccountsFixture>(/*drawsInterface=*/true);
        if (!m_fixture->isReady())
            return nullptr;
        account = m_fixture->makeUser(true);
        if (savedPassword) {
            m_fixture->defaults().setObject(account.username, QStringLiteral("username"));
            m_fixture->defaults().setBool(true, QStringLiteral("hasLoginKey"));
            if (!AccountServices::current().passwordItem(account.username).savePassword(account.password))
                return nullptr;
        }
        LoginPageTableViewController *login = m_fixture->showLogin();
        m_quick = m_fixture->window().quickWindow();
        return login && m_quick && QTest::qWaitForWindowExposed(m_quick) ? login : nullptr;
    }

private Q_SLOTS:
    void init() { ViewTest::failOnQmlWarnings(); }
    void cleanup() { m_fixture.reset(); }

    void everyViewCompiles_data()
    {
        QTest::addColumn<QString>("file");
        for (const char *file : {"LoginPage", "InformationPage", "DefaultPasswordPage", "DefaultPasswordForm",
                                 "PasswordChangePage", "RegistrationPage"})
            QTest::newRow(file) << QString::fromLatin1(file);
    }

    void everyViewCompiles()
    {
        QFETCH(QString, file);
        const QString errors =
            ViewTest::compileErrors(QUrl(QStringLiteral("qrc:/qt/qml/Vantrel/Accounts/%1.qml").arg(file)));
        QVERIFY2(errors.isEmpty(), qPrintable(errors));
    }

    void typingAndPressingLoginSignsIn()
    {
        REQUIRE_BACKEND();
        AccountsFixture::Account account;
        LoginPageTableViewController *login = showLogin(account, false);
        QVERIFY(login);
        QQuickItem *userName = nullptr;
        QTRY_VERIFY((userName = visibleItem(m_quick, QStringLiteral("userNameTextField"))));
        tap(m_quick, userName);
        QTRY_VERIFY(login->userNameTextField()->isFirstResponder());
        typeText(m_quick, account.username);

        QQuickItem *password = visibleItem(m_quick, QStringLiteral("passwordTextField"));
        QVERIFY(password);
        tap(m_quick, password);
        QTRY_VERIFY(login->passwordTextField()->isFirstResponder());
        typeText(m_quick, account.password);
        QCOMPARE(login->userNameTextField()->text(), account.username);
        QCOMPARE(login->passwordTextField()->text(), account.password);
        QCOMPARE(password->property("echoMode").toInt(), 2); // TextInput.Password

        tap(m_quick, visibleItem(m_quick, QStringLiteral("loginButton")));
        QTRY_COMPARE_WITH_TIMEOUT(m_fixture->presentedIdentifier(), QStringLiteral("menu"), 20000);
        QCOMPARE(m_fixture->savedPassword(account.username).value_or(QString()), account.password);
    }

    void fingerprintPromptCanBeCancelled()
    {
        REQUIRE_BACKEND();
        AccountsFixture::Account account;
        LoginPageTableViewController *login = showLogin(account, true);
        QVERIFY(login);
        AccountsFixture &f = *m_fixture;
        // The reader keeps asking for the finger again for a while.
        QVERIFY(f.reader(QStringLiteral("SetVerifyResults"),
                         {QStringList(60, QStringLiteral("verify-retry-scan")) << QStringLiteral("verify-match")}));

        QQuickItem *fingerprint = nullptr;
        QTRY_VERIFY((fingerprint = visibleItem(m_quick, QStringLiteral("loginWithBiometricsButton"))));
        tap(m_quick, fingerprint);
        QQuickItem *cancel = nullptr;
        QTRY_VERIFY((cancel = visibleItem(m_quick, QStringLiteral("biometricCancelButton"))));
        QCOMPARE(login->biometricPromptReason(), QStringLiteral("Logging in with Touch ID"));
        QTRY_VERIFY(cancel->width() > 0 && cancel->mapToScene(QPointF(0, 0)).x() > 0);
        QVERIFY(f.biometrics().isEvaluating());
        tap(m_quick, cancel);
        QTRY_VERIFY(!f.biometrics().isEvaluating());
        QVERIFY(AccountsFixture::answer(QStringLiteral("Error"), QStringLiteral("You pressed cancel."),
                                        QStringLiteral("OK")));
        QVERIFY(!login->isBiometricPromptVisible());
        QVERIFY(f.presentedIdentifier().isEmpty());
    }
};

QTEST_MAIN(TestAccountViews)
#include "tst_views.moc"
