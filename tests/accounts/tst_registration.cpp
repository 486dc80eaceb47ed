// The registration screen against the local backend: the form check, the e-mail rule on leaving
// the address, the pickers, the Return key, sign-up with its keys and trimming, the Freelancer
// record per role, every failure's alert and the way back from an account without a profile.
#include "AccountScenes.h"
#include "AccountsFixture.h"
#include "AlertController.h"
#include "ClientFixture.h"
#include "FreelanceCategory.h"
#include "LoginPageTableViewController.h"
#include "NavigationController.h"
#include "PFUser.h"
#include "PickerField.h"
#include "RegistrationTableViewController.h"
#include "SkillLists.h"
#include "Storyboard.h"
#include "UrlOpener.h"

#include <QEventLoop>
#include <QJsonArray>
#include <QNetworkAccessManager>
#include <QNetworkReply>
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

class RecordingOpener : public UrlOpener {
public:
    QList<QUrl> opened;
    bool openURL(const QUrl &url) override
    {
        opened << url;
        return true;
    }
};

QString uniqueEmail()
{
    return QStringLiteral("r%1@example.test").arg(QUuid::createUuid().toString(QUuid::Id128).left(12));
}

// Rows of a class with the master key, by a where clause.
QJsonArray rows(const QString &className, const QJsonObject &where, const QString &include = {})
{
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("where"), QString::fromUtf8(QJsonDocument(where).toJson(QJsonDocument::Compact)));
    if (!include.isEmpty())
        query.addQueryItem(QStringLiteral("include"), include);
    const QString path =
        (className == QLatin1String("_User") ? QStringLiteral("/users") : QStringLiteral("/classes/") + className) +
        QLatin1Char('?') + query.toString(QUrl::FullyEncoded);
    return TestBackend::instance().request("GET", path, {}, true).body.object().value("results").toArray();
}

QJsonObject userPointer(const QString &objectId)
{
    return {{"__type", "Pointer"}, {"className", "_User"}, {"objectId", objectId}};
}
} // namespace

class TestRegistration : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<AccountsFixture> m_fixture;
    RecordingOpener m_opener;
    AccountsFixture &f() { return *m_fixture; }

    // The login's Register button pushes the registration; returns it once the roles are in.
    Controller *open(bool waitForRoles = true)
    {
        ui::StoryboardDefinition main;
        main.initialIdentifier = AccountScenes::kLogin;
        AccountScenes::addTo(main, {QUrl(QStringLiteral("http://127.0.0.1:9/site/termsAndConditions.htm")), &m_opener});
        ui::Storyboard::registerStoryboard(QStringLiteral("Main"), main);
        LoginPageTableViewController *login = f().showLogin();
        if (!login || !login->registerButton()->isEnabled())
            return nullptr;
        login->registerButton()->click();
        if (!QTest::qWaitFor([&] { return qobject_cast<Controller *>(f().navigation()->topViewController()); }, 5000))
            return nullptr;
        auto *screen = qobject_cast<Controller *>(f().navigation()->topViewController());
        if (waitForRoles && !QTest::qWaitFor([&] { return screen->submitButton()->isEnabled(); }, 15000))
            return nullptr;
        return screen;
    }

    static void fill(Controller *screen, const QString &email, const QString &role = QStringLiteral("Print"))
    {
        screen->roleTextField()->setText(role);
        screen->firstNameTextField()->setText(QStringLiteral("Ada"));
        screen->lastNameTextField()->setText(QStringLiteral("Okafor"));
        screen->emailAddressTextField()->setText(email);
        screen->passwordTextField()->setText(QStringLiteral("secret pass"));
        screen->confirmPasswordTextField()->setText(QStringLiteral("secret pass"));
        screen->homeTownTextField()->setText(QStringLiteral("Lagos"));
        screen->homeCountryTextField()->setText(QStringLiteral("Nigeria"));
        screen->confirmSwitch()->setOn(true);
    }

    static void expectAlert(const QString &title, const QString &message, const QString &button)
    {
        ui::AlertController *alert = AccountsFixture::waitForAlert(20000);
        QVERIFY2(alert, qPrintable(QStringLiteral("no alert; expected: ") + message));
        QCOMPARE(alert->title(), title);
        QCOMPARE(alert->message(), message);
        QCOMPARE(AccountsFixture::buttonTitles(alert), QStringList{button});
        AccountsFixture::choose(alert, button);
    }

    bool waitForMenu()
    {
        return QTest::qWaitFor([&] { return f().presentedIdentifier() == "menu"; }, 20000);
    }

private Q_SLOTS:
    void init()
    {
        REQUIRE_BACKEND();
        m_fixture = std::make_unique<AccountsFixture>();
        QVERIFY(f().isReady());
        m_opener.opened.clear();
    }

    void cleanup() { m_fixture.reset(); }

    void opensSignedOutWithRolesAndCountries()
    {
        QVERIFY(ClientFixture::signUp());
        QVERIFY(PFUser::currentUser());
        Controller *screen = open(false);
        QVERIFY(screen);
        QCOMPARE(screen->title(), QStringLiteral("Registration"));
        QVERIFY(!screen->submitButton()->isEnabled()); // until the roles are in
        QVERIFY(!PFUser::currentUser());
        QTRY_VERIFY_WITH_TIMEOUT(screen->submitButton()->isEnabled(), 15000);
        QCOMPARE(screen->navigationItem()->rightBarButtonItem(), screen->submitButton());
        QVERIFY(!screen->loadingSpinner()->actInd()->isAnimating());

        QStringList titles;
        for (const auto &category : screen->categories())
            titles << category->categoryTitle();
        for (const QString &role : Controller::roles())
            QVERIFY2(titles.contains(role), qPrintable(role));

        const QList<std::pair<ui::TextField *, int>> fixedTags{{screen->roleTextField(), 0},
                                                               {screen->emailAddressTextField(), 3},
                                                               {screen->countryCodeTextField(), 5},
                                                               {screen->workCountryCodeTextField(), 7},
                                                               {screen->homeCountryTextField(), 10}};
        for (const auto &[field, tag] : fixedTags)
            QCOMPARE(field->tag(), tag);
        QCOMPARE(screen->countryCodes().first(), CountryCode::placeholder());
        QVERIFY(screen->countryCodes().size() > 240);
        QVERIFY(!screen->countries().contains(QStringLiteral("None")));
        QCOMPARE(screen->countries().size(), screen->countryCodes().size() - 1);
    }

    void categoryLoadFailureKeepsSubmitDisabled()
    {
        QTemporaryDir dir;
        ClientFixture::start(
            ClientFixture::configuration(dir.path(), nullptr, QStringLiteral("http://127.0.0.1:9/parse")));
        Controller *screen = open(false);
        QVERIFY(screen);
        expectAlert(QStringLiteral("Sorry"), kNoConnection, QStringLiteral("OK"));
        QVERIFY(!screen->submitButton()->isEnabled());
        QVERIFY(screen->categories().isEmpty());
        QVERIFY(!screen->loadingSpinner()->actInd()->isAnimating());
    }

    void registrationPerRole_data()
    {
        QTest::addColumn<QString>("role");
        QTest::addColumn<QStringList>("skills");
        QTest::addColumn<bool>("phones");
        QTest::addColumn<bool>("whatsApp");
        QTest::newRow("Broadcast") << "Broadcast" << QStringList() << true << true;
        QTest::newRow("Print, no telephone numbers") << "Print" << QStringList() << false << false;
        QTest::newRow("Multi-Skilled") << "Multi-Skilled" << SkillLists::broadcastSkills() + SkillLists::printSkills()
                                       << true << false;
        QTest::newRow("Citizen Journalist, typed in lower case")
            << "citizen journalist" << QStringList{"User-Generator/Live-Streamer"} << false << true;
    }

    void registrationPerRole()
    {
        QFETCH(QString, role);
        QFETCH(QStringList, skills);
        QFETCH(bool, phones);
        QFETCH(bool, whatsApp);

        Controller *screen = open();
        QVERIFY(screen);
        const QString email = uniqueEmail();
        fill(screen, email, role);
        screen->firstNameTextField()->setText(QStringLiteral("  Ada \t"));
        screen->lastNameTextField()->setText(QStringLiteral("\nOkafor  "));
        if (phones) {
            screen->countryCodeTextField()->setText(QStringLiteral("+234"));
            screen->mobileNumberTextField()->setText(QStringLiteral(" 803 555 0101"));
            screen->workCountryCodeTextField()->setText(QStringLiteral("+44"));
            screen->workNumberTextField()->setText(QStringLiteral("20 7946 0000"));
        }
        screen->whatsAppSwitch()->setOn(whatsApp);
        screen->submitButton()->click();
        QVERIFY(screen->loadingSpinner()->actInd()->isAnimating());
        QVERIFY(!screen->submitButton()->isEnabled()); // no second sign-up while one runs
        QVERIFY2(waitForMenu(),
                 qPrintable(ui::AlertController::alertOnScreen() ? ui::AlertController::alertOnScreen()->message()
                                                                 : QStringLiteral("no menu")));
        QVERIFY(!screen->loadingSpinner()->actInd()->isAnimating());
        QVERIFY(PFUser::currentUser()); // sign-up signs in

        const QJsonArray users = rows(QStringLiteral("_User"), {{"username", email}});
        QCOMPARE(users.size(), 1);
        const QJsonObject user = users.first().toObject();
        QCOMPARE(user.value("email").toString(), email);
        QCOMPARE(user.value("workEmail").toString(), email);
        QCOMPARE(user.value("firstName").toString(), QStringLiteral("Ada"));
        QCOMPARE(user.value("lastName").toString(), QStringLiteral("Okafor"));
        QCOMPARE(user.value("isAuthorised").toBool(), true);
        QCOMPARE(user.value("doesPasswordRequireToBeChanged"), QJsonValue(false));
        QCOMPARE(user.value("mobileCountryCode").toString(), phones ? QStringLiteral("+234") : QString());
        QCOMPARE(user.value("mobileTelephoneNumber").toString(), phones ? QStringLiteral(" 803 555 0101") : QString());
        QCOMPARE(user.value("officeCountryCode").toString(), phones ? QStringLiteral("+44") : QString());
        QCOMPARE(user.value("officeTelephoneNumber").toString(), phones ? QStringLiteral("20 7946 0000") : QString());

        const QJsonArray freelancers =
            rows(QStringLiteral("Freelancer"), {{"user", userPointer(user.value("objectId").toString())}},
                 QStringLiteral("freelanceCategory"));
        QCOMPARE(freelancers.size(), 1);
        const QJsonObject freelancer = freelancers.first().toObject();
        QCOMPARE(freelancer.value("freelanceCategory").toObject().value("categoryTitle").toString().toLower(),
                 role.toLower());
        QStringList saved;
        for (const QJsonValue &skill : freelancer.value("skills").toArray())
            saved << skill.toString();
        QCOMPARE(saved, skills);
        QCOMPARE(freelancer.value("myTown").toString(), QStringLiteral("Lagos"));
        QCOMPARE(freelancer.value("myCountry").toString(), QStringLiteral("Nigeria"));
        QCOMPARE(freelancer.value("isWhatsApp"), QJsonValue(whatsApp));
        QCOMPARE(freelancer.value("languages").toArray().size(), 0);
        QCOMPARE(freelancer.value("notAvailable").toArray().size(), 0);

        // The new account signs in as any other.
        int code = 0;
        PFUser::logOut();
        QVERIFY(ClientFixture::logIn(email, QStringLiteral("secret pass"), &code));
    }

    void formCheck_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("text");
        QTest::newRow("address without a domain") << "emailAddressTextField"
                                                  << "ada@example";
        QTest::newRow("address with a trailing blank") << "emailAddressTextField"
                                                       << "ada@example.com ";
        QTest::newRow("no role") << "roleTextField"
                                 << "";
        QTest::newRow("first name of blanks only") << "firstNameTextField"
                                                   << "   ";
        QTest::newRow("no last name") << "lastNameTextField"
                                      << "";
        QTest::newRow("no password") << "passwordTextField"
                                     << "";
        QTest::newRow("passwords differ") << "confirmPasswordTextField"
                                          << "secret pasS";
        QTest::newRow("terms not agreed") << "confirmSwitch"
                                          << "";
        QTest::newRow("no home country") << "homeCountryTextField"
                                         << "";
        QTest::newRow("home town of blanks only") << "homeTownTextField"
                                                  << " \n ";
    }

    void formCheck()
    {
        QFETCH(QString, field);
        QFETCH(QString, text);
        Controller *screen = open();
        QVERIFY(screen);
        const QString email = uniqueEmail();
        fill(screen, email);
        if (field == QLatin1String("confirmSwitch"))
            screen->confirmSwitch()->setOn(false);
        else
            screen->findChild<ui::TextField *>(field)->setText(text);
        screen->submitButton()->click();
        expectAlert(QStringLiteral("Sorry"), kSorryForm, QStringLiteral("Ok"));
        QVERIFY(!screen->loadingSpinner()->actInd()->isAnimating());
        QVERIFY(screen->submitButton()->isEnabled());
        QVERIFY(!PFUser::currentUser());
        QVERIFY(rows(QStringLiteral("_User"), {{"email", email}}).isEmpty());
    }

    void emailCheckOnLeavingTheAddress_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("alert");
        QTest::newRow("valid address") << "emailAddressTextField"
                                       << "ada@example.com" << false;
        QTest::newRow("one letter after the dot") << "emailAddressTextField"
                                                  << "ada@example.c" << true;
        QTest::newRow("empty address") << "emailAddressTextField"
                                       << "" << true;
        QTest::newRow("other fields are not checked") << "firstNameTextField"
                                                      << "not an address" << false;
    }

    void emailCheckOnLeavingTheAddress()
    {
        QFETCH(QString, field);
        QFETCH(QString, text);
        QFETCH(bool, alert);
        Controller *screen = open();
        QVERIFY(screen);
        auto *input = screen->findChild<ui::TextField *>(field);
        QVERIFY(input->becomeFirstResponder());
        input->userEditedText(text);
        input->resignFirstResponder();
        if (alert)
            expectAlert(QStringLiteral("Error"), kInvalidEmail, QStringLiteral("Ok"));
        else
            QVERIFY(!ui::AlertController::alertOnScreen());
        QCOMPARE(input->text(), text); // the text stays as typed
    }

    void rolePicker()
    {
        Controller *screen = open();
        QVERIFY(screen);
        PickerField *picker = screen->pickerForTag(0);
        QVERIFY(picker);
        QVERIFY(screen->roleTextField()->becomeFirstResponder());
        QCOMPARE(screen->roleTextField()->text(), QStringLiteral("Broadcast"));
        QTRY_VERIFY(picker->sheet());
        QCOMPARE(picker->sheet()->title(), QStringLiteral("Role"));
        QCOMPARE(picker->sheet()->rows(), Controller::roles());
        QCOMPARE(picker->sheet()->selectedIndex(), 0);
        QVERIFY(screen->firstNameTextField()->becomeFirstResponder()); // focus moved on meanwhile
        picker->sheet()->setSelectedIndex(2);
        picker->sheet()->done();
        QTRY_COMPARE(screen->roleTextField()->text(), QStringLiteral("Multi-Skilled"));
        QVERIFY(!screen->roleTextField()->isFirstResponder());
        QVERIFY(!screen->firstNameTextField()->isFirstResponder()); // editing of the view ended
        QTRY_VERIFY(!picker->sheet());

        // A role already chosen opens no picker.
        QVERIFY(screen->roleTextField()->becomeFirstResponder());
        AccountsFixture::settle();
        QVERIFY(!picker->sheet());
        QVERIFY(!screen->presentedViewController());
        QCOMPARE(screen->roleTextField()->text(), QStringLiteral("Multi-Skilled"));
    }

    void dialCodePickers_data()
    {
        QTest::addColumn<int>("tag");
        QTest::addColumn<QString>("title");
        QTest::newRow("mobile") << 5 << "Country Code";
        QTest::newRow("work") << 7 << "Work Country Code";
    }

    void dialCodePickers()
    {
        QFETCH(int, tag);
        QFETCH(QString, title);
        Controller *screen = open();
        QVERIFY(screen);
        ui::TextField *field = screen->textFieldWithTag(tag);
        PickerField *picker = screen->pickerForTag(tag);
        const auto choose = [&](int row) {
            field->setText({});
            QVERIFY(field->becomeFirstResponder());
            QCOMPARE(field->text(), QString()); // the placeholder's empty code
            QTRY_VERIFY(picker->sheet());
            QCOMPARE(picker->sheet()->title(), title);
            QCOMPARE(picker->sheet()->rows().first(), QStringLiteral("None:   :  "));
            picker->sheet()->setSelectedIndex(row);
            picker->sheet()->done();
            QTRY_VERIFY(!picker->sheet());
        };
        const auto codes = screen->countryCodes();
        const auto uk = std::find_if(codes.begin(), codes.end(), [](const CountryCode &c) { return c.code == "GB"; });
        QVERIFY(uk != codes.end());
        choose(int(uk - codes.begin()));
        QCOMPARE(field->text(), QStringLiteral("+44")); // the code alone, not the row
        QCOMPARE(picker->rows().at(int(uk - codes.begin())), QStringLiteral("United Kingdom:  +44 : GB "));
        choose(0);
        QCOMPARE(field->text(), QString()); // the first row clears the code
    }

    void homeCountryPicker()
    {
        Controller *screen = open();
        QVERIFY(screen);
        PickerField *picker = screen->pickerForTag(10);
        QVERIFY(screen->homeCountryTextField()->becomeFirstResponder());
        QCOMPARE(screen->homeCountryTextField()->text(), screen->countries().first());
        QTRY_VERIFY(picker->sheet());
        QCOMPARE(picker->sheet()->title(), QStringLiteral("Home Country"));
        QCOMPARE(picker->sheet()->rows(), screen->countries());
        picker->sheet()->setSelectedIndex(int(screen->countries().indexOf(QStringLiteral("Nigeria"))));
        picker->sheet()->cancel();
        QTRY_VERIFY(!picker->sheet());
        QCOMPARE(screen->homeCountryTextField()->text(), screen->countries().first()); // cancel keeps the prefill
        QVERIFY(!screen->homeCountryTextField()->isFirstResponder());
    }

    void returnKey_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("next"); // -1: nobody holds focus afterwards
        QTest::newRow("role to first name") << 0 << 1;
        QTest::newRow("first to last name") << 1 << 2;
        QTest::newRow("last name to address") << 2 << 3;
        QTest::newRow("address: no field 4, resigns") << 3 << -1;
        QTest::newRow("mobile code resigns") << 5 << -1;
        QTest::newRow("mobile number to work code") << 6 << 7;
        QTest::newRow("home town to home country") << 9 << 10;
        QTest::newRow("home country keeps focus") << 10 << 10;
        QTest::newRow("password to confirmation") << 11 << 12;
        QTest::newRow("confirmation: last field, resigns") << 12 << -1;
    }

    void returnKey()
    {
        QFETCH(int, from);
        QFETCH(int, next);
        Controller *screen = open();
        QVERIFY(screen);
        fill(screen, QStringLiteral("ada@example.com"));
        for (int tag : {5, 7}) // filled: no picker opens on the way
            screen->textFieldWithTag(tag)->setText(QStringLiteral("+1"));
        ui::TextField *field = screen->textFieldWithTag(from);
        QVERIFY(field->becomeFirstResponder());
        field->userPressedReturn();
        for (int tag = 0; tag <= 12; ++tag) {
            if (ui::TextField *other = screen->textFieldWithTag(tag))
                QVERIFY2(other->isFirstResponder() == (tag == next), qPrintable(QString::number(tag)));
        }
        QVERIFY(!screen->presentedViewController());
    }

    void roleMatchingNoCategoryLeavesAnAccountThatCanBeCompleted()
    {
        Controller *screen = open();
        QVERIFY(screen);
        const QString email = uniqueEmail();
        fill(screen, email, QStringLiteral("Astronaut"));
        screen->submitButton()->click();
        expectAlert(QStringLiteral("Error"), kAdmin, QStringLiteral("Ok"));
        const QJsonArray users = rows(QStringLiteral("_User"), {{"username", email}});
        QCOMPARE(users.size(), 1);
        const QJsonObject pointer = userPointer(users.first().toObject().value("objectId").toString());
        QVERIFY(rows(QStringLiteral("Freelancer"), {{"user", pointer}}).isEmpty());
        QVERIFY(screen->submitButton()->isEnabled());

        // Choosing a real role and submitting again completes the same account.
        screen->roleTextField()->setText(QStringLiteral("Print"));
        screen->submitButton()->click();
        QVERIFY(waitForMenu());
        QCOMPARE(rows(QStringLiteral("_User"), {{"username", email}}).size(), 1);
        QCOMPARE(rows(QStringLiteral("Freelancer"), {{"user", pointer}}).size(), 1);
    }

    void addressAlreadyRegistered()
    {
        const auto existing = f().makeUser(true);
        Controller *screen = open();
        QVERIFY(screen);
        fill(screen, existing.username);
        screen->submitButton()->click();
        ui::AlertController *alert = AccountsFixture::waitForAlert(20000);
        QVERIFY(alert);
        QCOMPARE(alert->title(), QStringLiteral("Error "));
        const QString prefix =
            QStringLiteral("Sorry there is an error registering you on our system.  The error we received was \n");
        const QString suffix = QStringLiteral("\nIf the problem persists please contact our admin team.");
        QVERIFY2(alert->message().startsWith(prefix) && alert->message().endsWith(suffix),
                 qPrintable(alert->message()));
        const QString reason =
            alert->message().mid(prefix.size(), alert->message().size() - prefix.size() - suffix.size());
        QVERIFY2(reason.contains(QLatin1String("already exists")), qPrintable(reason));
        AccountsFixture::choose(alert, QStringLiteral("Ok"));
        QVERIFY(!screen->loadingSpinner()->actInd()->isAnimating());
        QVERIFY(screen->submitButton()->isEnabled());
        QVERIFY(!PFUser::currentUser());
        QVERIFY(f().presentedIdentifier().isEmpty());
    }

    void termsPageAndRoleHint()
    {
        Controller *screen = open();
        QVERIFY(screen);
        screen->termsButton()->click();
        QCOMPARE(m_opener.opened, QList<QUrl>{QUrl("http://127.0.0.1:9/site/termsAndConditions.htm")});
        screen->roleInfoButton()->click();
        expectAlert(QStringLiteral("Info"), kRoleHint, QStringLiteral("OK"));
    }

    void localBackendServesTheTermsPage()
    {
        const QUrl page = TestBackend::instance().siteUrl().resolved(QUrl(QStringLiteral("termsAndConditions.htm")));
        QNetworkAccessManager network;
        std::unique_ptr<QNetworkReply> reply(network.get(QNetworkRequest(page)));
        QEventLoop loop;
        connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
        loop.exec();
        QCOMPARE(reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), 200);
        QVERIFY(reply->readAll().size() > 100);
    }
};

QTEST_MAIN(TestRegistration)
#include "tst_registration.moc"
