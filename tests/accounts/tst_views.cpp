// The sign-in drawn offscreen: every view of the module loads, and a person types into the
// two fields and presses the login button.
#include "AccountsFixture.h"
#include "AlertController.h"
#include "LoginPageTableViewController.h"
#include "NavigationController.h"
#include "ViewTestHelpers.h"

#include <QQmlApplicationEngine>
#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

using ViewTest::centreOf;
using ViewTest::typeText;

namespace {
QQuickItem *findVisibleItem(QQuickItem *root, const QString &name)
{
    return ViewTest::findItem(root, name, true);
}
} // namespace

class TestAccountViews : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyViewCompiles_data()
    {
        QTest::addColumn<QString>("file");
        for (const char *file :
             {"LoginPage", "InformationPage", "DefaultPasswordPage", "DefaultPasswordForm", "PasswordChangePage"})
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
        AccountsFixture fixture(/*drawsInterface=*/true);
        QVERIFY(fixture.isReady());
        const auto account = fixture.makeUser(true);
        LoginPageTableViewController *login = fixture.showLogin();
        QVERIFY(login);
        QQuickWindow *quick = fixture.window().quickWindow();
        QVERIFY(quick);
        QVERIFY(QTest::qWaitForWindowExposed(quick));

        QQuickItem *userName = nullptr;
        QTRY_VERIFY((userName = findVisibleItem(quick->contentItem(), QStringLiteral("userNameTextField"))));
        QTest::mouseClick(quick, Qt::LeftButton, {}, centreOf(userName));
        QTRY_VERIFY(login->userNameTextField()->isFirstResponder());
        typeText(quick, account.username);

        QQuickItem *password = findVisibleItem(quick->contentItem(), QStringLiteral("passwordTextField"));
        QVERIFY(password);
        QTest::mouseClick(quick, Qt::LeftButton, {}, centreOf(password));
        QTRY_VERIFY(login->passwordTextField()->isFirstResponder());
        typeText(quick, account.password);
        QCOMPARE(login->userNameTextField()->text(), account.username);
        QCOMPARE(login->passwordTextField()->text(), account.password);
        QCOMPARE(password->property("echoMode").toInt(), 2); // TextInput.Password

        QQuickItem *button = findVisibleItem(quick->contentItem(), QStringLiteral("loginButton"));
        QVERIFY(button);
        QTest::mouseClick(quick, Qt::LeftButton, {}, centreOf(button));
        QTRY_COMPARE_WITH_TIMEOUT(fixture.presentedIdentifier(), QStringLiteral("menu"), 20000);
        QCOMPARE(fixture.savedPassword(account.username).value_or(QString()), account.password);
    }

    void fingerprintPromptCanBeCancelled()
    {
        REQUIRE_BACKEND();
        AccountsFixture fixture(/*drawsInterface=*/true);
        QVERIFY(fixture.isReady());
        const auto account = fixture.makeUser(true);
        fixture.defaults().setObject(account.username, QStringLiteral("username"));
        fixture.defaults().setBool(true, QStringLiteral("hasLoginKey"));
        QVERIFY(AccountServices::current().passwordItem(account.username).savePassword(account.password));
        // The reader keeps asking for the finger again for a while.
        QVERIFY(fixture.reader(QStringLiteral("SetVerifyResults"), {QStringList(60, QStringLiteral("verify-retry-scan"))
                                                                    << QStringLiteral("verify-match")}));
        LoginPageTableViewController *login = fixture.showLogin();
        QVERIFY(login);
        QQuickWindow *quick = fixture.window().quickWindow();
        QVERIFY(QTest::qWaitForWindowExposed(quick));

        QQuickItem *fingerprint = nullptr;
        QTRY_VERIFY((fingerprint = findVisibleItem(quick->contentItem(), QStringLiteral("loginWithBiometricsButton"))));
        QTest::mouseClick(quick, Qt::LeftButton, {}, centreOf(fingerprint));
        QQuickItem *cancel = nullptr;
        QTRY_VERIFY((cancel = findVisibleItem(quick->contentItem(), QStringLiteral("biometricCancelButton"))));
        QCOMPARE(login->biometricPromptReason(), QStringLiteral("Logging in with Touch ID"));
        QTRY_VERIFY(cancel->width() > 0 && cancel->mapToScene(QPointF(0, 0)).x() > 0);
        QVERIFY(fixture.biometrics().isEvaluating());
        QTest::mouseClick(quick, Qt::LeftButton, {}, centreOf(cancel));
        QTRY_VERIFY(!fixture.biometrics().isEvaluating());

        ui::AlertController *alert = AccountsFixture::waitForAlert();
        QVERIFY(alert);
        QCOMPARE(alert->message(), QStringLiteral("You pressed cancel."));
        QVERIFY(!login->isBiometricPromptVisible());
        QVERIFY(fixture.presentedIdentifier().isEmpty());
        AccountsFixture::choose(alert, QStringLiteral("OK"));
    }
};

QTEST_MAIN(TestAccountViews)
#include "tst_views.moc"
