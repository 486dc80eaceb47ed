// The sign-in screen against the local backend, the session's Secret Service and a fake
// fingerprint reader: every account state, the fields, remember-me, the fingerprint sign-in
// and the forgotten-password mail.
#include "AccountsTestCase.h"
#include "AlertController.h"
#include "ClientFixture.h"
#include "DefaultPasswordViewController.h"
#include "InformationViewController.h"
#include "LoginPageTableViewController.h"
#include "NavigationController.h"
#include "PFUser.h"

#include <QTemporaryDir>
#include <QTest>
#include <QUuid>

namespace {
const auto kWelcome = QStringLiteral("Please login using username and password on your first attempt");
const auto kSavedPasswordFailure =
    QStringLiteral("Something has gone wrong, please try to login manually, it maybe you have never logged into the "
                   "app on this device before.  If this fails, please contact Vantrel Admin.");
const auto kNotAuthorised = QStringLiteral("Sorry it appears your account has not yet been authorised.  Please contact "
                                           "Vantrel Admin if you are not authorised within 7 days.");
const auto kNewsDesk = QStringLiteral("Sorry there seems to be a problem.  Please try again later or contact our admin "
                                      "team.  You may not be an authorised Vantrel Pro user.");
} // namespace

class TestLogin : public AccountsTestCase {
    Q_OBJECT

private:
    // Waits for the outcome of a sign-in: an alert, the menu, or the pushed change screen.
    bool waitForOutcome()
    {
        return QTest::qWaitFor(
            [&] {
                return ui::AlertController::alertOnScreen() || !f().presentedIdentifier().isEmpty() ||
                       f().navigation()->viewControllers().size() > 1;
            },
            20000);
    }

    // Leaves the screen and comes back to it, so that its appearance steps run again.
    void reappear(LoginPageTableViewController *login)
    {
        login->informationButton_Click();
        QTRY_VERIFY(qobject_cast<InformationViewController *>(f().navigation()->topViewController()));
        f().navigation()->popViewControllerAnimated(false);
        QTRY_COMPARE(login->appearanceState(), ui::ViewController::AppearanceState::Appeared);
    }

private Q_SLOTS:
    void firstAppearance()
    {
        f().defaults().setObject(QStringLiteral("2.1"), QStringLiteral("version_number"));
        LoginPageTableViewController *login = f().showLogin();
        QVERIFY(login);
        QCOMPARE(login->title(), QStringLiteral("Vantrel PRO Login"));
        QCOMPARE(login->versionLabel()->text(), QStringLiteral("version 2.1 alpha"));
        QVERIFY(login->navigationItem()->hidesBackButton());
        QVERIFY(!login->rememberMeSwitch()->isOn());
        QVERIFY(!ui::AlertController::alertOnScreen()); // remember-me off: no prefill, no alert
    }

    void accountStates_data()
    {
        QTest::addColumn<bool>("authorised");
        QTest::addColumn<bool>("mustChange");
        QTest::addColumn<bool>("newsDesk");
        QTest::addColumn<bool>("wrongPassword");
        QTest::addColumn<QString>("outcome"); // "menu", "change" or the alert's message

        QTest::newRow("ordinary") << true << false << false << false << QStringLiteral("menu");
        QTest::newRow("not authorised") << false << false << false << false << kNotAuthorised;
        QTest::newRow("must change, authorised") << true << true << false << false << QStringLiteral("change");
        QTest::newRow("must change, not authorised") << false << true << false << false << kNotAuthorised;
        QTest::newRow("newsroom account") << true << false << true << false << kNewsDesk;
        QTest::newRow("newsroom account that must change") << true << true << true << false << QStringLiteral("change");
        QTest::newRow("wrong password") << true << false << false << true << QString();
    }

    void accountStates()
    {
        QFETCH(bool, authorised);
        QFETCH(bool, mustChange);
        QFETCH(bool, newsDesk);
        QFETCH(bool, wrongPassword);
        QFETCH(QString, outcome);

        f().defaults().setObject(QStringLiteral("DEADBEEF"), QStringLiteral("deviceToken"));
        const auto account = f().makeUser(authorised, mustChange, newsDesk);
        LoginPageTableViewController *login =
            f().logInWith(account.username, wrongPassword ? QStringLiteral("Wrong0ne!") : account.password);
        QVERIFY(login);
        QVERIFY(login->loadingSpinner()->actInd()->isAnimating());
        QVERIFY(waitForOutcome());

        if (wrongPassword) {
            ui::AlertController *alert = ui::AlertController::alertOnScreen();
            QVERIFY(alert);
            QCOMPARE(alert->title(), QStringLiteral("Error"));
            QVERIFY2(alert->message().startsWith(QLatin1String("Sorry there seems to be a problem.\n\n ")) &&
                         alert->message().endsWith(QLatin1String("\n\nPlease try again later.")) &&
                         alert->message().size() > 60,
                     qPrintable(alert->message()));
            QVERIFY(!login->loadingSpinner()->actInd()->isAnimating());
            QVERIFY(!f().defaults().hasKey(QStringLiteral("username")));
            QVERIFY(!PFUser::currentUser());
            return;
        }

        // Every backend sign-in records the user name and copies the device token. The backend
        // itself refuses an account that is not authorised; the app's own refusals keep the session.
        const bool refusedByBackend = outcome == kNotAuthorised;
        QCOMPARE(f().defaults().stringForKey(QStringLiteral("username")),
                 refusedByBackend ? QString() : account.username);
        QCOMPARE(bool(PFUser::currentUser()), !refusedByBackend);
        QTRY_COMPARE(TestBackend::instance()
                         .request("GET", QStringLiteral("/users/") + account.objectId, {}, true)
                         .body.object()
                         .value(QStringLiteral("deviceToken"))
                         .toString(),
                     refusedByBackend ? QString() : QStringLiteral("DEADBEEF"));

        const bool accepted = outcome == QLatin1String("menu");
        QCOMPARE(f().presentedIdentifier(), accepted ? QStringLiteral("menu") : QString());
        QCOMPARE(f().savedPassword(account.username).has_value(), accepted);
        QCOMPARE(f().defaults().boolForKey(QStringLiteral("hasLoginKey")), accepted);
        if (accepted) {
            QCOMPARE(f().savedPassword(account.username).value_or(QString()), account.password);
            QCOMPARE(f().navigation()->presentedViewController()->modalPresentationStyle(),
                     ui::ViewController::ModalPresentationStyle::FullScreen);
        } else if (outcome == QLatin1String("change")) {
            QVERIFY(qobject_cast<DefaultPasswordViewController *>(f().navigation()->topViewController()));
            QVERIFY(!ui::AlertController::alertOnScreen());
        } else {
            QVERIFY(AccountsFixture::answer(QStringLiteral("Error"), outcome, QStringLiteral("Ok")));
            QVERIFY(!login->loadingSpinner()->actInd()->isAnimating());
            // Only the not-authorised refusal clears the fields.
            QCOMPARE(login->userNameTextField()->text().isEmpty(), outcome == kNotAuthorised);
        }
    }

    void emptyFields_data()
    {
        QTest::addColumn<QString>("username");
        QTest::addColumn<QString>("password");
        QTest::newRow("no user name") << QString() << QStringLiteral("Passw0rdX");
        QTest::newRow("no password") << QStringLiteral("someone@example.test") << QString();
    }

    void emptyFields()
    {
        QFETCH(QString, username);
        QFETCH(QString, password);
        LoginPageTableViewController *login = f().logInWith(username, password);
        QVERIFY(login);
        QVERIFY(AccountsFixture::answer(QStringLiteral("Error"), QStringLiteral("Please enter some log in details."),
                                        QStringLiteral("Ok")));
        QVERIFY(!login->loadingSpinner()->actInd()->isAnimating());
    }

    // Return in the password field signs in as the button does. While that sign-in runs, the
    // spinner says so and neither Return nor the buttons start another one.
    void returnInThePasswordFieldLogsInOnce()
    {
        const auto account = f().makeUser(true);
        LoginPageTableViewController *login = f().showLogin();
        QVERIFY(login);
        QVERIFY(login->userNameTextField()->isFirstResponder()); // the form's first field
        login->userNameTextField()->setText(account.username);
        login->passwordTextField()->setText(account.password);

        login->userNameTextField()->userPressedReturn();
        QTest::qWait(1500);
        QVERIFY(!ui::AlertController::alertOnScreen());
        QVERIFY(f().presentedIdentifier().isEmpty());

        const qsizetype sessionsBefore = AccountsFixture::sessionsOf(account.objectId).size();
        login->passwordTextField()->userPressedReturn();
        QCOMPARE(login->loadingSpinner()->actInd()->caption(), QStringLiteral("Signing in\u2026"));
        login->passwordTextField()->userPressedReturn();
        login->loginButton()->click();
        QTRY_COMPARE_WITH_TIMEOUT(f().presentedIdentifier(), QStringLiteral("menu"), 20000);
        QCOMPARE(AccountsFixture::sessionsOf(account.objectId).size(), sessionsBefore + 1);
    }

    void forgottenPassword()
    {
        const auto account = f().makeUser(true);
        LoginPageTableViewController *login = f().showLogin();
        QVERIFY(login);

        login->forgotPasswordButton()->click();
        QVERIFY(AccountsFixture::answer(QStringLiteral("Error"),
                                        QStringLiteral("Please populate the email address field. field."),
                                        QStringLiteral("OK")));

        // A request that fails (here: no backend to be reached) shows nothing.
        QTemporaryDir offline;
        ClientFixture::start(
            ClientFixture::configuration(offline.path(), nullptr, QStringLiteral("http://127.0.0.1:9")));
        login->userNameTextField()->setText(account.username);
        login->forgotPasswordButton()->click();
        QTest::qWait(2500);
        QVERIFY(!ui::AlertController::alertOnScreen());
        ClientFixture::start(ClientFixture::configuration(offline.path()));

        // The backend does not reveal which addresses have accounts: an unknown one gets the
        // same answer, and no mail.
        const QString unknown = QUuid::createUuid().toString(QUuid::Id128).left(10) + QStringLiteral("@nowhere.test");
        for (const QString &address : {unknown, account.username}) {
            login->userNameTextField()->setText(address);
            login->forgotPasswordButton()->click();
            QVERIFY(AccountsFixture::answer(
                QStringLiteral("Success"),
                QStringLiteral("Please check your registered email address for password reset instructions."),
                QStringLiteral("OK")));
        }
        const QStringList mails = TestBackend::readLines(TestBackend::instance().mailOutbox());
        QVERIFY(
            std::any_of(mails.cbegin(), mails.cend(), [&](const QString &l) { return l.contains(account.username); }));
        QVERIFY(std::none_of(mails.cbegin(), mails.cend(), [&](const QString &l) { return l.contains(unknown); }));
    }

    void rememberMeAcrossAppearances()
    {
        const auto account = f().makeUser(true);
        f().defaults().setBool(true, QStringLiteral("rememberMe"));
        LoginPageTableViewController *login = f().showLogin();
        QVERIFY(login);
        // Remembered, but never signed in here: the first-attempt hint.
        QVERIFY(login->rememberMeSwitch()->isOn());
        QVERIFY(AccountsFixture::answer(QStringLiteral("Info"), kWelcome, QStringLiteral("OK")));

        // A user name without a saved password: the user name stays, the password read fails.
        f().defaults().setObject(account.username, QStringLiteral("username"));
        reappear(login);
        QVERIFY(AccountsFixture::answer(QStringLiteral("Error"), kSavedPasswordFailure, QStringLiteral("Ok")));
        QCOMPARE(login->userNameTextField()->text(), account.username);
        QVERIFY(login->passwordTextField()->text().isEmpty());

        // With the password saved both fields are filled.
        QVERIFY(AccountServices::current().passwordItem(account.username).savePassword(account.password));
        reappear(login);
        QCOMPARE(login->userNameTextField()->text(), account.username);
        QCOMPARE(login->passwordTextField()->text(), account.password);
        QVERIFY(!ui::AlertController::alertOnScreen());

        // Turning it off clears the fields and stops the prefill.
        login->rememberMeSwitch()->userToggled(false);
        QVERIFY(!f().defaults().boolForKey(QStringLiteral("rememberMe")));
        QVERIFY(login->userNameTextField()->text().isEmpty());
        QVERIFY(login->passwordTextField()->text().isEmpty());
        reappear(login);
        QVERIFY(!login->rememberMeSwitch()->isOn());
        QVERIFY(login->userNameTextField()->text().isEmpty());
        QVERIFY(!ui::AlertController::alertOnScreen());

        login->rememberMeSwitch()->userToggled(true);
        QVERIFY(f().defaults().boolForKey(QStringLiteral("rememberMe")));
        reappear(login);
        QCOMPARE(login->passwordTextField()->text(), account.password);
    }

    void biometricButtonNeedsKeyAndReader_data()
    {
        QTest::addColumn<bool>("hasLoginKey");
        QTest::addColumn<QString>("readerState");
        QTest::addColumn<bool>("shown");
        QTest::newRow("key and reader") << true << QStringLiteral("enrolled") << true;
        QTest::newRow("reader without the key") << false << QStringLiteral("enrolled") << false;
        QTest::newRow("key, nothing enrolled") << true << QStringLiteral("empty") << false;
        QTest::newRow("key, no reader") << true << QStringLiteral("absent") << false;
    }

    void biometricButtonNeedsKeyAndReader()
    {
        QFETCH(bool, hasLoginKey);
        QFETCH(QString, readerState);
        QFETCH(bool, shown);
        f().defaults().setBool(hasLoginKey, QStringLiteral("hasLoginKey"));
        if (readerState == QLatin1String("empty"))
            QVERIFY(f().reader(QStringLiteral("SetEnrolledFingers"), {QStringList()}));
        else if (readerState == QLatin1String("absent"))
            QVERIFY(f().reader(QStringLiteral("RemoveDevice")));
        LoginPageTableViewController *login = f().showLogin();
        QVERIFY(login);
        QCOMPARE(!login->loginWithBiometricsButton()->isHidden(), shown);
        QCOMPARE(login->loginWithBiometricsButton()->title(), QStringLiteral("Login With Touch ID"));
    }

    // How each failure of the reader becomes its message is tested with the reader itself, and
    // cancelling with the drawn prompt; here: that the screen shows the failure, and what is
    // caught before the check.
    void biometricFailuresShowTheirMessage_data()
    {
        QTest::addColumn<QString>("setUp");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("message");
        // clang-format off
        QTest::newRow("no match") << "verify-no-match" << "Error" << "There was a problem verifying your identity.";
        QTest::newRow("no reader at all") << "RemoveDevice" << "Error" << "Touch ID not available";
        QTest::newRow("no user name") << "" << "Info" << kWelcome;
        // clang-format on
    }

    void biometricFailuresShowTheirMessage()
    {
        QFETCH(QString, setUp);
        QFETCH(QString, title);
        QFETCH(QString, message);
        const auto account = f().makeUser(true);
        if (!setUp.isEmpty())
            f().defaults().setObject(account.username, QStringLiteral("username"));
        QVERIFY(AccountServices::current().passwordItem(account.username).savePassword(account.password));
        QVERIFY(f().reader(
            QStringLiteral("SetVerifyResults"),
            {QStringList{setUp == QLatin1String("verify-no-match") ? setUp : QStringLiteral("verify-match")}}));
        LoginPageTableViewController *login = f().showLogin();
        QVERIFY(login);
        if (setUp == QLatin1String("RemoveDevice"))
            QVERIFY(f().reader(setUp));
        login->loginWithBiometricsButton_Click();
        QVERIFY(AccountsFixture::answer(title, message, QStringLiteral("OK")));
        QVERIFY(f().presentedIdentifier().isEmpty());
        QVERIFY(!PFUser::currentUser());
    }

    void biometricLoginEndToEndWithAnEmptyUserNameField()
    {
        // Remember-me off: the field stays empty, and a fingerprint sign-in records that empty
        // text as the user name, so the next one cannot find the saved password.
        const auto account = f().makeUser(true);
        f().defaults().setObject(account.username, QStringLiteral("username"));
        QVERIFY(AccountServices::current().passwordItem(account.username).savePassword(account.password));
        f().defaults().setBool(true, QStringLiteral("hasLoginKey"));
        LoginPageTableViewController *login = f().showLogin();
        QVERIFY(login);
        QVERIFY(login->userNameTextField()->text().isEmpty());

        // The saved password of the recorded user signs in, whatever the fields hold.
        login->loginWithBiometricsButton()->click();
        QTRY_COMPARE_WITH_TIMEOUT(f().presentedIdentifier(), QStringLiteral("menu"), 20000);
        QCOMPARE(PFUser::currentUser()->username(), account.username);
        QVERIFY(f().defaults().hasKey(QStringLiteral("username")));
        QCOMPARE(f().defaults().stringForKey(QStringLiteral("username")), QString());

        PFUser::logOut();
        f().navigation()->dismissViewControllerAnimated(false);
        QTRY_COMPARE(login->appearanceState(), ui::ViewController::AppearanceState::Appeared);
        login->loginWithBiometricsButton()->click();
        QVERIFY(AccountsFixture::answer(QStringLiteral("Error"), kSavedPasswordFailure, QStringLiteral("Ok")));
    }
};

QTEST_MAIN(TestLogin)
#include "tst_login.moc"
