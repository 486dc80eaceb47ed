// The registration screen against the local backend: sign-up with its keys and trimming, the
// Freelancer record per role, the form check, the e-mail rule on leaving the address, the
// pickers, the Return key, every failure's alert and the way back from an account without a
// profile.
#include "AccountScenes.h"
#include "AccountsTestCase.h"
#include "AlertController.h"
#include "ClientFixture.h"
#include "FreelanceCategory.h"
#include "LoginPageTableViewController.h"
#include "NavigationController.h"
#include "PFUser.h"
#include "PickerField.h"
#include "RegistrationTableViewController.h"
#include "SkillLists.h"
#include "UrlOpener.h"

#include <QJsonArray>
#include <QTest>
#include <QUrlQuery>
#include <QUuid>

using Controller = RegistrationTableViewController;

namespace {
// clang-format off
const auto kSorryForm = QStringLiteral("It looks like something is not valid, please ensure you have the following.\n\nYou have a role selected.\n\nYou have completed each field.\n\nThe passwords match and you have entered a valid email address\n\nYou agree to our terms.");
const auto kInvalidEmail = QStringLiteral("Please ensure you have entered a valid email address, as this will be used to send you critical information");
const auto kNoConnection = QStringLiteral("We are having issues connecting to our database please check your connection and try again.");
const auto kRoleHint = QStringLiteral("Choose Multi-Skilled if you are comfortable reporting, producing and filming for broadcast, print and online outlets.");
// clang-format on
const auto kAdmin =
    QStringLiteral("Sorry something has gone wrong. Please contact our admin team at help@vantrel.test");
const QUrl kTerms(QStringLiteral("http://127.0.0.1:9/site/termsAndConditions.htm"));

class RecordingOpener : public UrlOpener {
public:
    QList<QUrl> opened;
    bool openURL(const QUrl &url) override
    {
        opened << url;
        return true;
    }
};

// Rows of a class read with the master key.
QJsonArray rows(const QString &path, const QJsonObject &where)
{
    QUrlQuery query;
    query.addQueryItem("where", QString::fromUtf8(QJsonDocument(where).toJson(QJsonDocument::Compact)));
    query.addQueryItem("include", "freelanceCategory");
    return TestBackend::instance()
        .request("GET", path + '?' + query.toString(QUrl::FullyEncoded), {}, true)
        .body.object()
        .value("results")
        .toArray();
}
QJsonArray users(const QString &email)
{
    return rows("/users", {{"username", email}});
}
QJsonArray freelancers(const QJsonObject &user)
{
    return rows("/classes/Freelancer",
                {{"user", QJsonObject{{"__type", "Pointer"}, {"className", "_User"}, {"objectId", user["objectId"]}}}});
}
} // namespace

class TestRegistration : public AccountsTestCase {
    Q_OBJECT

private:
    RecordingOpener m_opener;
    QString m_email;

    // The login's Register button pushes the registration; returns it (once the roles are in).
    Controller *open(bool waitForRoles = true)
    {
        ui::StoryboardDefinition main;
        main.initialIdentifier = AccountScenes::kLogin;
        AccountScenes::addTo(main, {kTerms, &m_opener});
        ui::Storyboard::registerStoryboard(QStringLiteral("Main"), main);
        LoginPageTableViewController *login = f().showLogin();
        if (!login)
            return nullptr;
        login->registerButton()->click();
        Controller *screen = nullptr;
        if (!QTest::qWaitFor(
                [&] { return (screen = qobject_cast<Controller *>(f().navigation()->topViewController())); }))
            return nullptr;
        if (waitForRoles && !QTest::qWaitFor([&] { return screen->submitButton()->isEnabled(); }, 15000))
            return nullptr;
        return screen;
    }

    // A complete, valid form under a new address.
    Controller *openFilled(const QString &role = QStringLiteral("Print"))
    {
        Controller *screen = open();
        if (!screen)
            return nullptr;
        screen->roleTextField()->setText(role);
        screen->firstNameTextField()->setText(QStringLiteral("Ada"));
        screen->lastNameTextField()->setText(QStringLiteral("Okafor"));
        screen->emailAddressTextField()->setText(m_email);
        screen->passwordTextField()->setText(QStringLiteral("secret pass"));
        screen->confirmPasswordTextField()->setText(QStringLiteral("secret pass"));
        screen->homeTownTextField()->setText(QStringLiteral("Lagos"));
        screen->homeCountryTextField()->setText(QStringLiteral("Nigeria"));
        screen->confirmSwitch()->setOn(true);
        return screen;
    }

    // Registers under a role that matches no category: the account is made, its record is not.
    Controller *submitWithoutAProfile()
    {
        Controller *screen = openFilled(QStringLiteral("Astronaut"));
        if (!screen)
            return nullptr;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("No role matches Astronaut"));
        screen->submitButton()->click();
        const bool refused = AccountsFixture::answer(QStringLiteral("Error"), kAdmin);
        const QJsonArray found = users(m_email);
        return refused && found.size() == 1 && freelancers(found.first().toObject()).isEmpty() ? screen : nullptr;
    }

    bool waitForMenu()
    {
        return QTest::qWaitFor([&] { return f().presentedIdentifier() == "menu"; }, 20000);
    }

private Q_SLOTS:
    void init()
    {
        AccountsTestCase::init();
        m_opener.opened.clear();
        m_email = QStringLiteral("r%1@example.test").arg(QUuid::createUuid().toString(QUuid::Id128).left(12));
    }

    void opensSignedOutAndWaitsForTheRoles()
    {
        QVERIFY(ClientFixture::signUp());
        Controller *screen = open(false);
        QVERIFY(screen);
        QCOMPARE(screen->title(), QStringLiteral("Registration"));
        QVERIFY(!screen->submitButton()->isEnabled());
        QVERIFY(!PFUser::currentUser());
        QTRY_VERIFY_WITH_TIMEOUT(screen->submitButton()->isEnabled(), 15000);
        QCOMPARE(screen->categories().size(), 4);
        QCOMPARE(screen->countryCodes().first(), CountryCode::placeholder());
        QCOMPARE(screen->countries().size(), screen->countryCodes().size() - 1); // "None" is no home country
    }

    void categoryLoadFailureKeepsSubmitDisabled()
    {
        QTemporaryDir dir;
        ClientFixture::start(ClientFixture::configuration(dir.path(), nullptr, "http://127.0.0.1:9/parse"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("The roles could not be loaded"));
        Controller *screen = open(false);
        QVERIFY(screen);
        QVERIFY(AccountsFixture::answer(QStringLiteral("Sorry"), kNoConnection, QStringLiteral("OK")));
        QVERIFY(!screen->submitButton()->isEnabled());
        QVERIFY(!screen->loadingSpinner()->actInd()->isAnimating());
    }

    void registrationPerRole_data()
    {
        QTest::addColumn<QString>("role");
        QTest::addColumn<QStringList>("skills");
        QTest::addColumn<bool>("phones");
        QTest::newRow("Broadcast") << "Broadcast" << QStringList() << true;
        QTest::newRow("Print, no telephone numbers") << "Print" << QStringList() << false;
        QTest::newRow("Multi-Skilled") << "Multi-Skilled" << SkillLists::broadcastSkills() + SkillLists::printSkills()
                                       << true;
        QTest::newRow("citizen journalist, in lower case")
            << "citizen journalist" << QStringList{"User-Generator/Live-Streamer"} << false;
    }

    void registrationPerRole()
    {
        QFETCH(QString, role);
        QFETCH(QStringList, skills);
        QFETCH(bool, phones);
        Controller *screen = openFilled(role);
        QVERIFY(screen);
        screen->firstNameTextField()->setText(QStringLiteral("  Ada \t"));
        screen->lastNameTextField()->setText(QStringLiteral("\nOkafor  "));
        if (phones) {
            screen->countryCodeTextField()->setText(QStringLiteral("+234"));
            screen->mobileNumberTextField()->setText(QStringLiteral(" 803 555 0101"));
            screen->workCountryCodeTextField()->setText(QStringLiteral("+44"));
            screen->workNumberTextField()->setText(QStringLiteral("20 7946 0000"));
        }
        screen->whatsAppSwitch()->setOn(phones);
        screen->submitButton()->click();
        QVERIFY(screen->loadingSpinner()->actInd()->isAnimating());
        QVERIFY(!screen->submitButton()->isEnabled()); // no second sign-up while one runs
        QVERIFY(waitForMenu());
        QVERIFY(PFUser::currentUser()); // sign-up signs in

        const QJsonArray found = users(m_email);
        QCOMPARE(found.size(), 1);
        const QJsonObject user = found.first().toObject();
        for (const char *key : {"email", "workEmail"})
            QCOMPARE(user[key].toString(), m_email);
        QCOMPARE(user["firstName"].toString(), QStringLiteral("Ada"));
        QCOMPARE(user["lastName"].toString(), QStringLiteral("Okafor"));
        QCOMPARE(user["isAuthorised"], QJsonValue(true));
        QCOMPARE(user["doesPasswordRequireToBeChanged"], QJsonValue(false));
        const QStringList numbers{user["mobileCountryCode"].toString(), user["mobileTelephoneNumber"].toString(),
                                  user["officeCountryCode"].toString(), user["officeTelephoneNumber"].toString()};
        const QStringList typed{"+234", " 803 555 0101", "+44", "20 7946 0000"};
        QCOMPARE(numbers, phones ? typed : QStringList(4, QString()));

        const QJsonArray records = freelancers(user);
        QCOMPARE(records.size(), 1);
        const QJsonObject freelancer = records.first().toObject();
        QCOMPARE(freelancer["freelanceCategory"]["categoryTitle"].toString().toLower(), role.toLower());
        QCOMPARE(freelancer["skills"].toVariant().toStringList(), skills);
        QCOMPARE(freelancer["myTown"].toString(), QStringLiteral("Lagos"));
        QCOMPARE(freelancer["myCountry"].toString(), QStringLiteral("Nigeria"));
        QCOMPARE(freelancer["isWhatsApp"], QJsonValue(phones));

        PFUser::logOut(); // the new account signs in as any other
        QVERIFY(ClientFixture::logIn(m_email, QStringLiteral("secret pass")));
    }

    void formCheck_data()
    {
        QTest::addColumn<QString>("field"); // an empty text on confirmSwitch turns it off
        QTest::addColumn<QString>("text");
        // clang-format off
        QTest::newRow("address with a trailing blank") << "emailAddressTextField" << "ada@example.com ";
        QTest::newRow("no role") << "roleTextField" << "";
        QTest::newRow("first name of blanks only") << "firstNameTextField" << "   ";
        QTest::newRow("no password") << "passwordTextField" << "";
        QTest::newRow("passwords differ") << "confirmPasswordTextField" << "secret pasS";
        QTest::newRow("terms not agreed") << "confirmSwitch" << "";
        QTest::newRow("home town of blanks only") << "homeTownTextField" << " \n ";
        QTest::newRow("10,000-character first name") << "firstNameTextField" << QString(10000, 'x');
        // clang-format on
    }

    void formCheck()
    {
        QFETCH(QString, field);
        QFETCH(QString, text);
        Controller *screen = openFilled();
        QVERIFY(screen);
        if (auto *input = screen->findChild<ui::TextField *>(field))
            input->setText(text);
        else
            screen->confirmSwitch()->setOn(false);
        screen->submitButton()->click();
        QVERIFY(AccountsFixture::answer(QStringLiteral("Sorry"), kSorryForm));
        QVERIFY(!screen->loadingSpinner()->actInd()->isAnimating());
        QVERIFY(users(m_email).isEmpty());
    }

    // The rule's cases are tested on their own; here: that leaving the address applies it.
    void emailCheckOnLeavingTheAddress_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("alert");
        QTest::newRow("valid address") << "ada@example.com" << false;
        QTest::newRow("one letter after the dot") << "ada@example.c" << true;
    }

    void emailCheckOnLeavingTheAddress()
    {
        QFETCH(QString, text);
        QFETCH(bool, alert);
        Controller *screen = open();
        QVERIFY(screen);
        ui::TextField *input = screen->emailAddressTextField();
        QVERIFY(input->becomeFirstResponder());
        input->userEditedText(text);
        input->resignFirstResponder();
        if (alert)
            QVERIFY(AccountsFixture::answer(QStringLiteral("Error"), kInvalidEmail));
        QVERIFY(!ui::AlertController::alertOnScreen());
        QCOMPARE(input->text(), text); // kept as typed
    }

    void pickers_data()
    {
        QTest::addColumn<int>("tag");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("prefill");
        QTest::addColumn<QString>("row"); // the start of the row to choose
        QTest::addColumn<QString>("chosen");
        // The role picker is turned by wheel in the view test.
        // clang-format off
        QTest::newRow("mobile code, United Kingdom") << 5 << "Country Code" << "" << "United Kingdom:" << "+44";
        QTest::newRow("work code, first row clears it") << 7 << "Work Country Code" << "" << "None:" << "";
        QTest::newRow("home country") << 10 << "Home Country" << "Afghanistan" << "Aland" << "Aland";
        // clang-format on
    }

    void pickers()
    {
        QFETCH(int, tag);
        QFETCH(QString, title);
        QFETCH(QString, prefill);
        QFETCH(QString, row);
        QFETCH(QString, chosen);
        Controller *screen = open();
        QVERIFY(screen);
        ui::TextField *field = screen->textFieldWithTag(tag);
        PickerField *picker = screen->pickerForTag(tag);
        QVERIFY(field->becomeFirstResponder());
        QCOMPARE(field->text(), prefill);
        QTRY_VERIFY(picker->sheet());
        QCOMPARE(picker->sheet()->title(), title);
        QCOMPARE(picker->sheet()->selectedIndex(), 0);
        QVERIFY(screen->firstNameTextField()->becomeFirstResponder()); // focus moved on meanwhile
        const QStringList rows = picker->sheet()->rows();
        const auto at = std::find_if(rows.begin(), rows.end(), [&](const QString &r) { return r.startsWith(row); });
        QVERIFY(at != rows.end());
        picker->sheet()->setSelectedIndex(int(at - rows.begin()));
        picker->sheet()->done();
        QTRY_VERIFY(!picker->sheet());
        QCOMPARE(field->text(), chosen);
        QVERIFY(!screen->firstNameTextField()->isFirstResponder()); // editing of the view ended

        // A field that holds text opens no picker.
        field->setText(QStringLiteral("+1"));
        QVERIFY(field->becomeFirstResponder());
        AccountsFixture::settle();
        QVERIFY(!screen->presentedViewController());
    }

    void returnKey_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("next"); // -1: nobody holds focus afterwards
        QTest::newRow("role to first name") << 0 << 1;
        QTest::newRow("address: no field 4, resigns") << 3 << -1;
        QTest::newRow("mobile code resigns") << 5 << -1;
        QTest::newRow("mobile number to work code") << 6 << 7;
        QTest::newRow("home country keeps focus") << 10 << 10;
        QTest::newRow("confirmation, the last field, resigns") << 12 << -1;
    }

    void returnKey()
    {
        QFETCH(int, from);
        QFETCH(int, next);
        Controller *screen = openFilled();
        QVERIFY(screen);
        for (int tag : {5, 7}) // filled: no picker opens on the way
            screen->textFieldWithTag(tag)->setText(QStringLiteral("+1"));
        QVERIFY(screen->textFieldWithTag(from)->becomeFirstResponder());
        screen->textFieldWithTag(from)->userPressedReturn();
        for (int tag = 0; tag <= 12; ++tag) {
            if (ui::TextField *field = screen->textFieldWithTag(tag))
                QVERIFY2(field->isFirstResponder() == (tag == next), qPrintable(QString::number(tag)));
        }
    }

    void roleMatchingNoCategoryLeavesAnAccountThatCanBeCompleted()
    {
        Controller *screen = submitWithoutAProfile();
        QVERIFY(screen);
        screen->roleTextField()->setText(QStringLiteral("Print"));
        screen->submitButton()->click();
        QVERIFY(waitForMenu());
        QCOMPARE(users(m_email).size(), 1); // the same account, now with its record
        QCOMPARE(freelancers(users(m_email).first().toObject()).size(), 1);
    }

    void failedProfileSaveLeavesAnAccountThatSignsIn()
    {
        Controller *screen = submitWithoutAProfile();
        QVERIFY(screen);
        // The session ends on the server (an administrator's sign-out): the record's save is refused.
        const QJsonObject user = users(m_email).first().toObject();
        QVERIFY(AccountsFixture::endSessionsOf(user["objectId"].toString()));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("pending save was refused"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("The new profile was not saved"));
        screen->roleTextField()->setText(QStringLiteral("Print"));
        screen->submitButton()->click();
        QVERIFY(AccountsFixture::answer(QStringLiteral("Error"), kAdmin));
        QVERIFY(!screen->loadingSpinner()->actInd()->isAnimating());
        QCOMPARE(freelancers(user).size(), 0);
        QVERIFY(ClientFixture::logIn(m_email, QStringLiteral("secret pass"))); // not locked out
    }

    void addressAlreadyRegistered()
    {
        Controller *screen = openFilled();
        QVERIFY(screen);
        screen->emailAddressTextField()->setText(f().makeUser(true).username);
        screen->submitButton()->click();
        ui::AlertController *alert = AccountsFixture::waitForAlert(20000);
        QVERIFY(alert);
        QCOMPARE(alert->title(), QStringLiteral("Error "));
        QCOMPARE(alert->message(),
                 "Sorry there is an error registering you on our system.  The error we received was \n"
                 "Account already exists for this username.\nIf the problem persists please contact our admin team.");
        AccountsFixture::choose(alert, QStringLiteral("Ok"));
        QVERIFY(screen->submitButton()->isEnabled());
        QVERIFY(!PFUser::currentUser());
    }

    void termsPageAndRoleHint()
    {
        Controller *screen = open();
        QVERIFY(screen);
        screen->termsButton()->click();
        QCOMPARE(m_opener.opened, QList<QUrl>{kTerms});
        screen->roleInfoButton()->click();
        QVERIFY(AccountsFixture::answer(QStringLiteral("Info"), kRoleHint, QStringLiteral("OK")));
    }
};

QTEST_MAIN(TestRegistration)
#include "tst_registration.moc"
