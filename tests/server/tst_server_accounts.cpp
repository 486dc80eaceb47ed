// Signing in against the running backend: accounts the server refuses and whose sessions it
// ends, the lockout after repeated failures by every route that checks a password (of unknown
// names alike), and sign-in names (and password-reset requests) in any letter case.

#include "BackendProbe.h"
#include "TestBackend.h"

#include <QJsonArray>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace BackendProbe;

namespace {

const int kObjectNotFound = 101;
const int kOperationForbidden = 119;
const int kInvalidSessionToken = 209;

// The name as someone might type it: every letter in the other case.
QString otherCase(const QString &name)
{
    QString typed = name;
    for (QChar &c : typed)
        c = c.isUpper() ? c.toLower() : c.toUpper();
    return typed;
}

} // namespace

class ServerAccountsTest : public QObject {
    Q_OBJECT

    const TestBackend &backend() const { return TestBackend::instance(); }

    TestBackend::Reply logIn(const QString &username, const QString &password)
    {
        return backend().request("POST", u"/login"_s, {{u"username"_s, username}, {u"password"_s, password}});
    }

private Q_SLOTS:
    void initTestCase() { REQUIRE_BACKEND(); }

    // Refused accounts: their sessions end at once, a login with the right password is
    // forbidden, and a wrong password still gets the usual answer (nothing to learn there).
    void refusedAccounts_data()
    {
        // clang-format off
        QTest::addColumn<bool>("byAdministrator");
        QTest::addColumn<QJsonObject>("flags");
        QTest::newRow("account holder asks for deletion")
            << false << QJsonObject{{u"isAuthorised"_s, false}, {u"shouldDeleteAccount"_s, true}};
        QTest::newRow("administrator withdraws the authorisation") << true << QJsonObject{{u"isAuthorised"_s, false}};
        QTest::newRow("administrator marks it for deletion") << true << QJsonObject{{u"shouldDeleteAccount"_s, true}};
        // clang-format on
    }
    void refusedAccounts()
    {
        QFETCH(bool, byAdministrator);
        QFETCH(QJsonObject, flags);
        const TestBackend::User u = backend().signUpUser();
        const QString remembered = logIn(u.username, u.password).text(u"sessionToken"_s);
        QVERIFY(!remembered.isEmpty());
        QCOMPARE(backend().request("PUT", u"/users/"_s + u.objectId, flags, byAdministrator, u.sessionToken).status,
                 200);

        for (const QString &session : {u.sessionToken, remembered})
            QCOMPARE(errorCode(backend().request("GET", u"/users/me"_s, {}, false, session)), kInvalidSessionToken);
        const TestBackend::Reply refused = logIn(u.username, u.password);
        QCOMPARE(errorCode(refused), kOperationForbidden);
        QVERIFY(!refused.raw.contains("sessionToken"));
        QCOMPARE(errorCode(logIn(u.username, u"Wr0ngPassword"_s)), kObjectNotFound);
    }

    // Five failed attempts lock the account for 15 minutes, whichever route they took; an unknown
    // name locks alike. A batch cannot try passwords at all.
    void lockout_data()
    {
        // clang-format off
        QTest::addColumn<QString>("route");
        QTest::addColumn<int>("failures");
        QTest::newRow("four failures leave it open") << "login" << 4;
        QTest::newRow("five failed logins") << "login" << 5;
        QTest::newRow("in another letter case") << "other case" << 5;
        QTest::newRow("the name in the query string") << "query" << 5;
        QTest::newRow("password checks") << "verifyPassword" << 5;
        QTest::newRow("an unknown name") << "unknown" << 5;
        QTest::newRow("inside a batch: refused, nothing tried") << "batch" << 5;
        // clang-format on
    }
    void lockout()
    {
        QFETCH(QString, route);
        QFETCH(int, failures);
        const TestBackend::User u = backend().signUpUser();
        const QString name = route == "other case"_L1 ? otherCase(u.username)
                             : route == "unknown"_L1  ? u"Nobody."_s + u.username
                                                      : u.username;
        const QJsonObject wrong{{u"username"_s, name}, {u"password"_s, u"Wr0ngPassword"_s}};
        if (route == "batch"_L1) {
            QJsonArray requests;
            for (int i = 0; i < failures; ++i)
                requests.append(QJsonObject{{u"method"_s, u"POST"_s}, {u"path"_s, u"/login"_s}, {u"body"_s, wrong}});
            QCOMPARE(errorCode(backend().request("POST", u"/batch"_s, {{u"requests"_s, requests}})),
                     kOperationForbidden);
        } else {
            const QString path =
                route == "verifyPassword"_L1 ? u"/verifyPassword"_s
                : route == "query"_L1
                    ? u"/login?username=%1&password=x"_s.arg(QString::fromUtf8(QUrl::toPercentEncoding(name)))
                    : u"/login"_s;
            for (int i = 0; i < failures; ++i)
                backend().request("POST", path, route == "query"_L1 ? QJsonObject() : wrong);
        }
        const TestBackend::Reply r = logIn(name, u.password);
        const bool locked = failures >= 5 && route != "batch"_L1;
        QVERIFY2(locked ? errorCode(r) == kObjectNotFound && r.text(u"error"_s).contains(u"locked"_s) : r.status == 200,
                 r.raw.constData());
    }

    // The address typed in another letter case finds the account, which keeps its name as
    // registered; an unknown name gets the same answer as a wrong password.
    void signInInAnyLetterCase()
    {
        const TestBackend::User u = backend().signUpUser();
        const QString typed = otherCase(u.username);
        const TestBackend::Reply r = logIn(typed, u.password);
        QCOMPARE(r.status, 200);
        QCOMPARE(r.text(u"objectId"_s), u.objectId);
        QCOMPARE(r.text(u"username"_s), u.username);
        QCOMPARE(backend()
                     .request("GET", u"/login?username="_s + QString::fromUtf8(QUrl::toPercentEncoding(typed)) +
                                         u"&password="_s + u.password)
                     .status,
                 200);
        const TestBackend::Reply unknown = logIn(u"Nobody."_s + typed, u.password);
        QCOMPARE(unknown.raw, logIn(typed, u"Wr0ngPassword"_s).raw);

        // So does a password-reset request; an unknown address gets the same answer and no mail.
        for (const QString &address : {typed, u"Nobody."_s + typed})
            QCOMPARE(backend().request("POST", u"/requestPasswordReset"_s, {{u"email"_s, address}}).status, 200);
        QTRY_VERIFY(!TestBackend::readLines(backend().mailOutbox()).filter(u.username).isEmpty());
        const QString mail = TestBackend::readLines(backend().mailOutbox()).filter(u.username).constLast();
        QVERIFY2(mail.contains(backend().serverUrl().toString() + u"/apps/"_s) && mail.contains(u"token="_s),
                 qPrintable(mail));
        QVERIFY(TestBackend::readLines(backend().mailOutbox()).filter(u"Nobody."_s, Qt::CaseInsensitive).isEmpty());
    }
};

QTEST_GUILESS_MAIN(ServerAccountsTest)
#include "tst_server_accounts.moc"
