// The forced and the voluntary password change against the local backend and the session's
// Secret Service: the live warning, what is saved where, and in which order.
#include "AccountScenes.h"
#include "AccountsTestCase.h"
#include "AlertController.h"
#include "ClientFixture.h"
#include "DefaultPasswordTableViewController.h"
#include "DefaultPasswordViewController.h"
#include "LoginPageTableViewController.h"
#include "NavigationController.h"
#include "PFUser.h"
#include "PasswordChangeTableViewController.h"
#include "Storyboard.h"

#include <QJsonArray>
#include <QTest>

namespace {
const auto kForcedSuccess = QStringLiteral("You have succesfully changed your password.  You will now be allowed to "
                                           "login using Face ID / Touch ID.  Thank you.");
} // namespace

class TestPassword : public AccountsTestCase {
    Q_OBJECT

private:
    // Signs in through the login screen as a user who must change the password, and returns
    // the forced-change screen it leads to.
    DefaultPasswordViewController *forcedChange(AccountsFixture::Account &account)
    {
        account = f().makeUser(true, true);
        if (!f().logInWith(account.username, account.password) ||
            !QTest::qWaitFor([&] { return f().navigation()->viewControllers().size() == 2; }, 20000))
            return nullptr;
        auto *screen = qobject_cast<DefaultPasswordViewController *>(f().navigation()->topViewController());
        if (screen)
            (void)QTest::qWaitFor(
                [&] { return screen->appearanceState() == ui::ViewController::AppearanceState::Appeared; }, 5000);
        return screen;
    }

private Q_SLOTS:
    void liveWarning_data()
    {
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("confirmation");
        QTest::addColumn<bool>("confirmationEnded"); // which field ended editing
        QTest::addColumn<QString>("label");
        const QString weak = DefaultPasswordTableViewController::errorString;
        const QString differ = DefaultPasswordTableViewController::doNotMatchString;
        QTest::newRow("strong, confirmation empty") << QStringLiteral("Abcdefg1") << QString() << false << QString();
        QTest::newRow("strong and equal")
            << QStringLiteral("Abcdefg1") << QStringLiteral("Abcdefg1") << true << QString();
        QTest::newRow("strong but different")
            << QStringLiteral("Abcdefg1") << QStringLiteral("Abcdefg2") << true << differ;
        QTest::newRow("weak password") << QStringLiteral("abcdefg1") << QString() << false << weak;
        QTest::newRow("weak confirmation ending")
            << QStringLiteral("Abcdefg1") << QStringLiteral("abc") << true << weak;
        // Only the field that ended editing is checked for strength.
        QTest::newRow("weak password, strong confirmation ending")
            << QStringLiteral("abc") << QStringLiteral("Abcdefg1") << true << differ;
    }

    void liveWarning()
    {
        QFETCH(QString, password);
        QFETCH(QString, confirmation);
        QFETCH(bool, confirmationEnded);
        QFETCH(QString, label);
        DefaultPasswordTableViewController form;
        form.passwordErrorLabel()->setText(QStringLiteral("stale"));
        form.passwordTextField()->setText(password);
        form.confirmPasswordTextField()->setText(confirmation);
        form.textFieldDidEndEditing(confirmationEnded ? form.confirmPasswordTextField() : form.passwordTextField());
        QCOMPARE(form.passwordErrorLabel()->text(), label);
    }

    void formReturnMovesDownTheFields()
    {
        DefaultPasswordTableViewController form;
        form.passwordTextField()->becomeFirstResponder();
        form.textFieldShouldReturn(form.passwordTextField());
        QVERIFY(form.confirmPasswordTextField()->isFirstResponder());
        form.textFieldShouldReturn(form.confirmPasswordTextField());
        QVERIFY(!form.confirmPasswordTextField()->isFirstResponder());
        QVERIFY(!form.passwordTextField()->isFirstResponder());
    }

    void forcedChangeAcceptsAMismatchedConfirmation()
    {
        AccountsFixture::Account account;
        DefaultPasswordViewController *screen = forcedChange(account);
        QVERIFY(screen);
        QVERIFY(screen->navigationItem()->hidesBackButton());
        QVERIFY(screen->passwordTable());

        screen->passwordTable()->passwordInfoButton()->click();
        ui::AlertController *help =
            AccountsFixture::expectAlert(QStringLiteral("Help"),
                                         QStringLiteral("The password should contain 1 Uppercase letter, 1 lowercase "
                                                        "letters, 1 digits and be at least 8 characters long"),
                                         {QStringLiteral("Ok")});
        QVERIFY(help);
        AccountsFixture::choose(help, QStringLiteral("Ok"));

        screen->passwordTable()->passwordTextField()->setText(QStringLiteral("Fresh Start 7"));
        screen->passwordTable()->confirmPasswordTextField()->setText(QStringLiteral("Something else 8"));
        screen->confirmButton()->click();
        ui::AlertController *done =
            AccountsFixture::expectAlert(QStringLiteral("Success"), kForcedSuccess, {QStringLiteral("OK")});
        QVERIFY(done);

        QCOMPARE(f().savedPassword(account.username).value_or(QString()), QStringLiteral("Fresh Start 7"));
        QVERIFY(f().defaults().boolForKey(QStringLiteral("hasLoginKey")));
        QVERIFY(AccountsFixture::canSignIn(account.username, QStringLiteral("Fresh Start 7")));
        QVERIFY(!AccountsFixture::canSignIn(account.username, account.password));
        const QJsonObject stored = TestBackend::instance()
                                       .request("GET", QStringLiteral("/users/") + account.objectId, {}, true)
                                       .body.object();
        QCOMPARE(stored.value(QStringLiteral("doesPasswordRequireToBeChanged")).toBool(true), false);

        AccountsFixture::choose(done, QStringLiteral("OK"));
        QTRY_VERIFY(qobject_cast<LoginPageTableViewController *>(f().navigation()->topViewController()));
    }

    void forcedChangeRefusesAWeakPassword()
    {
        AccountsFixture::Account account;
        DefaultPasswordViewController *screen = forcedChange(account);
        QVERIFY(screen);
        screen->passwordTable()->passwordTextField()->setText(QStringLiteral("abcdefg1"));
        screen->confirmButton()->click();
        ui::AlertController *alert = AccountsFixture::expectAlert(
            QStringLiteral("Admin"),
            QStringLiteral("Sorry something appears to have gone wrong.  Please re-enter your new password."),
            {QStringLiteral("Ok")});
        QVERIFY(alert);
        QVERIFY(screen->loadingSpinner()->actInd()->isAnimating());
        QVERIFY(!f().savedPassword(account.username));
        QVERIFY(!f().defaults().boolForKey(QStringLiteral("hasLoginKey")));
        AccountsFixture::choose(alert, QStringLiteral("Ok"));
        QVERIFY(AccountsFixture::canSignIn(account.username, account.password));
    }

    void forcedChangeKeepsTheKeyWhenTheBackendSaveFails()
    {
        AccountsFixture::Account account;
        DefaultPasswordViewController *screen = forcedChange(account);
        QVERIFY(screen);
        // The session ends on the server (an administrator signed the user out everywhere).
        QVERIFY(AccountsFixture::endSessionsOf(account.objectId));
        screen->passwordTable()->passwordTextField()->setText(QStringLiteral("Another Go 9"));
        screen->confirmButton()->click();
        ui::AlertController *alert = AccountsFixture::expectAlert(
            QStringLiteral("Admin"), QStringLiteral("Sorry something appears to have gone wrong.  Please try again."),
            {QStringLiteral("Ok")});
        QVERIFY(alert);
        QVERIFY(f().defaults().boolForKey(QStringLiteral("hasLoginKey")));
        QCOMPARE(f().savedPassword(account.username).value_or(QString()), QStringLiteral("Another Go 9"));
        QVERIFY(AccountsFixture::canSignIn(account.username, account.password)); // the backend still has the old one
    }

    void exitAsksFirst()
    {
        AccountsFixture::Account account;
        DefaultPasswordViewController *screen = forcedChange(account);
        QVERIFY(screen);
        const QString warning = QStringLiteral("Please confirm that you wish to exit this page.  Your passwords will "
                                               "not be saved and you will have to go through this process again.");
        screen->exitButton()->click();
        ui::AlertController *alert = AccountsFixture::expectAlert(
            QStringLiteral("Warning"), warning, {QStringLiteral("Stay On Page"), QStringLiteral("EXIT")});
        QVERIFY(alert);
        QCOMPARE(alert->actions().at(0)->style(), ui::AlertAction::Style::Default);
        QCOMPARE(alert->actions().at(1)->style(), ui::AlertAction::Style::Destructive);
        AccountsFixture::choose(alert, QStringLiteral("Stay On Page"));
        QCOMPARE(f().navigation()->topViewController(), screen);

        screen->exitButton()->click();
        alert = AccountsFixture::expectAlert(QStringLiteral("Warning"), warning,
                                             {QStringLiteral("Stay On Page"), QStringLiteral("EXIT")});
        QVERIFY(alert);
        AccountsFixture::choose(alert, QStringLiteral("EXIT"));
        QTRY_VERIFY(qobject_cast<LoginPageTableViewController *>(f().navigation()->topViewController()));
    }

    void voluntaryChange_data()
    {
        QTest::addColumn<QString>("newPassword");
        QTest::addColumn<QString>("confirmation");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("one letter, no strength rule here") << QStringLiteral("a") << QStringLiteral("a") << true;
        QTest::newRow("empty") << QString() << QString() << false;
        QTest::newRow("case differs") << QStringLiteral("secret") << QStringLiteral("Secret") << false;
    }

    void voluntaryChange()
    {
        QFETCH(QString, newPassword);
        QFETCH(QString, confirmation);
        QFETCH(bool, accepted);
        const auto account = f().makeUser(true);
        QVERIFY(ClientFixture::logIn(account.username, account.password));

        auto *root = new ui::ViewController;
        auto *navigation = new ui::NavigationController(root);
        f().window().setRootViewController(navigation);
        f().window().makeKeyAndVisible();
        auto *screen = qobject_cast<PasswordChangeTableViewController *>(
            ui::Storyboard::storyboardWithName(QStringLiteral("Main"))
                ->instantiateViewControllerWithIdentifier(AccountScenes::kPasswordChange));
        QVERIFY(screen);
        navigation->pushViewController(screen, false);
        QTRY_COMPARE(screen->appearanceState(), ui::ViewController::AppearanceState::Appeared);
        QCOMPARE(screen->title(), QStringLiteral("Choose your Freelance Category"));

        screen->newPasswordTextField()->setText(newPassword);
        screen->confirmPasswordTextField()->setText(confirmation);
        screen->saveButton()->click();
        if (!accepted) {
            ui::AlertController *alert = AccountsFixture::expectAlert(
                QStringLiteral("Error"),
                QStringLiteral(
                    "Please ensure that you have entered a new password and that they match. Please try again"),
                {QStringLiteral("Ok")});
            QVERIFY(alert);
            QCOMPARE(alert->actions().at(0)->style(), ui::AlertAction::Style::Destructive);
            QVERIFY(!screen->loadingSpinner()->actInd()->isAnimating());
            AccountsFixture::choose(alert, QStringLiteral("Ok"));
            QVERIFY(AccountsFixture::canSignIn(account.username, account.password));
            return;
        }
        ui::AlertController *alert = AccountsFixture::expectAlert(
            QStringLiteral("Success"), QStringLiteral("Your Password has been changed"), {QStringLiteral("Ok")});
        QVERIFY(alert);
        QVERIFY(AccountsFixture::canSignIn(account.username, newPassword));
        QVERIFY(!f().savedPassword(account.username)); // this screen leaves the saved password alone
        AccountsFixture::choose(alert, QStringLiteral("Ok"));
        QTRY_COMPARE(navigation->topViewController(), root);
    }

    void voluntaryChangeThatCannotBeSaved()
    {
        const auto account = f().makeUser(true);
        QVERIFY(ClientFixture::logIn(account.username, account.password));
        auto *navigation = new ui::NavigationController(new ui::ViewController);
        f().window().setRootViewController(navigation);
        f().window().makeKeyAndVisible();
        auto *screen = new PasswordChangeTableViewController;
        navigation->pushViewController(screen, false);
        QTRY_COMPARE(screen->appearanceState(), ui::ViewController::AppearanceState::Appeared);

        QVERIFY(AccountsFixture::endSessionsOf(account.objectId));
        screen->newPasswordTextField()->setText(QStringLiteral("Newer1"));
        screen->confirmPasswordTextField()->setText(QStringLiteral("Newer1"));
        screen->saveButton()->click();
        ui::AlertController *alert = AccountsFixture::expectAlert(
            QStringLiteral("Error"),
            QStringLiteral("Sorry something has gone wrong.  Check your data signal and try again"),
            {QStringLiteral("Ok")});
        QVERIFY(alert);
        AccountsFixture::choose(alert, QStringLiteral("Ok"));
        QCOMPARE(navigation->topViewController(), screen); // nothing further happens
        QVERIFY(AccountsFixture::canSignIn(account.username, account.password));
    }
};

QTEST_MAIN(TestPassword)
#include "tst_password.moc"
