// The backend as an operator runs it, started by this suite on free ports: a lasting data
// directory with demo data inside a folder other users cannot enter (a 0700 home), tight
// limits, and an SMS gateway and a mail service configured (a local fake that records calls).

#include "BackendProbe.h"
#include "CannedHttpServer.h"
#include "TestBackend.h"

#include <QDirIterator>
#include <QJsonArray>
#include <QProcess>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>
#include <QUuid>
#include <csignal>

using namespace Qt::StringLiterals;
using namespace BackendProbe;

namespace {

const auto kSms = u"You have a new Vantrel Message please check the app"_s;
const auto kEditorPhone = u"+447700900412"_s;
const auto kEditorMail = u"claire.ashworth@northgate-news.example"_s;
const int kLoginLimit = 12, kSignUpLimit = 3, kResetLimit = 6, kResetAddressLimit = 2, kNoticeLimit = 3;
const int kLockoutWindowSeconds = 4;

int freePort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
}

qint64 bytesIn(const QString &directory)
{
    qint64 total = 0;
    for (QDirIterator it(directory, QDir::Files); it.hasNext();)
        total += QFileInfo(it.next()).size();
    return total;
}

} // namespace

class ServerOperatorTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_home; // mode 0700, as a home directory or /root
    CannedHttpServer m_provider;
    std::optional<TestBackend> m_backend;
    QString m_data, m_started, m_tomToken, m_tomId;
    QStringList m_arguments;

    const TestBackend &backend() const { return *m_backend; }

    QString runBackend(const QStringList &arguments, int *exitCode = nullptr)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        const QString provider = m_provider.origin();
        for (const QString &setting :
             {u"VANTREL_LOGIN_RATE_LIMIT=%1"_s.arg(kLoginLimit), u"VANTREL_SIGNUP_RATE_LIMIT=%1"_s.arg(kSignUpLimit),
              u"VANTREL_RESET_RATE_LIMIT=%1"_s.arg(kResetLimit),
              u"VANTREL_RESET_ADDRESS_RATE_LIMIT=%1"_s.arg(kResetAddressLimit),
              u"VANTREL_NOTICE_RATE_LIMIT=%1"_s.arg(kNoticeLimit), u"VANTREL_SMS_GATEWAY_URL="_s + provider + u"/sms"_s,
              u"VANTREL_LOCKOUT_THRESHOLD=2"_s, u"VANTREL_LOCKOUT_WINDOW=%1"_s.arg(kLockoutWindowSeconds),
              u"VANTREL_SMS_GATEWAY_TOKEN=sms-secret"_s, u"SENDGRID_API_KEY=mail-secret"_s,
              u"SENDGRID_API_URL="_s + provider + u"/mail"_s})
            environment.insert(setting.section(u'=', 0, 0), setting.section(u'=', 1));
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QStringLiteral(VANTREL_SOURCE_DIR "/server/backend"), arguments);
        process.waitForFinished(240000);
        if (exitCode)
            *exitCode = process.exitCode();
        return QString::fromUtf8(process.readAll());
    }

    // Signed in through the master key, so that no per-address limit counts it.
    QString sessionOfNewUser()
    {
        const QString name = uniqueTag() + u"@example.test"_s;
        return backend()
            .request("POST", u"/users"_s,
                     {{u"username"_s, name}, {u"password"_s, u"Passw0rdAb"_s}, {u"isAuthorised"_s, true}}, true)
            .text(u"sessionToken"_s);
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_home.isValid());
        QCOMPARE(QFile::permissions(m_home.path()) & (QFile::ReadOther | QFile::ExeOther), QFile::Permissions());
        m_data = m_home.filePath(u"clone/server/data"_s);
        m_arguments = {
            u"--data"_s, m_data, u"--port"_s, QString::number(freePort()), u"--pg-port"_s, QString::number(freePort())};
        int exitCode = -1;
        m_started = runBackend(QStringList{u"start"_s} + m_arguments, &exitCode);
        QVERIFY2(exitCode == 0, qPrintable(m_started));
        m_backend = TestBackend::fromStateFile(m_data + u"/state.env"_s);
        QVERIFY2(backend().isAvailable(), qPrintable(backend().error()));
    }

    void cleanupTestCase()
    {
        if (!m_data.isEmpty())
            runBackend(QStringList{u"delete"_s} + m_arguments);
    }

    // Every demo freelancer printed by the start command signs in the way the app does and
    // passes the app's checks; the command prints them again when the backend already runs.
    void printedDemoSignInsWork()
    {
        static const QRegularExpression line(u"demo sign-in: (\\S+) / (\\S+)"_s);
        QStringList printed;
        for (auto it = line.globalMatch(m_started); it.hasNext();)
            printed << it.next().captured(0);
        QCOMPARE(printed.size(), 4);
        for (const QString &signIn : std::as_const(printed)) {
            const QRegularExpressionMatch m = line.match(signIn);
            const TestBackend::Reply r = backend().request(
                "POST", u"/login"_s, {{u"username"_s, m.captured(1)}, {u"password"_s, m.captured(2)}});
            QVERIFY2(r.status == 200, r.raw.constData());
            const QJsonObject user = r.body.object();
            QVERIFY(user.value(u"isAuthorised"_s).toBool() && !user.value(u"isNewsDeskUser"_s).toBool() &&
                    !user.value(u"doesPasswordRequireToBeChanged"_s).toBool());
            QVERIFY(!user.value(u"workEmail"_s).toString().isEmpty());
            if (m.captured(1).startsWith(u"tom."_s))
                std::tie(m_tomToken, m_tomId) = std::pair(r.text(u"sessionToken"_s), r.text(u"objectId"_s));
        }
        const QString again = runBackend(QStringList{u"start"_s} + m_arguments);
        QVERIFY2(again.contains(u"already running"_s), qPrintable(again));
        for (const QString &signIn : std::as_const(printed))
            QVERIFY2(again.contains(signIn), qPrintable(again));
    }

    // With providers configured, a notice is delivered through them and says "sent".
    void providersAreCalledForReal()
    {
        const QString &tom = m_tomId;
        const QJsonObject message =
            backend()
                .request("GET", u"/classes/Message?"_s + whereQuery({{u"to"_s, userPointer(tom)}}), {}, true)
                .body.object()
                .value(u"results"_s)[0]
                .toObject();
        QVERIFY(!message.isEmpty());
        const QJsonObject reply{
            {u"from"_s, userPointer(tom)}, {u"to"_s, message.value(u"from"_s)}, {u"hasBeenRead"_s, false}};
        QCOMPARE(backend()
                     .request("PUT", u"/classes/Message/"_s + message.value(u"objectId"_s).toString(), reply, false,
                              m_tomToken)
                     .status,
                 200);
        m_provider.enqueue(202, {});
        m_provider.enqueue(202, {});
        const auto call = [&](const QString &name, const QJsonObject &params) {
            return backend()
                .request("POST", u"/functions/"_s + name, params, false, m_tomToken)
                .body.object()
                .value(u"result"_s)
                .toObject()
                .value(u"delivery"_s)
                .toString();
        };
        QCOMPARE(call(u"SendSMS"_s, {{u"phone"_s, kEditorPhone}, {u"message"_s, kSms}}), u"sent"_s);
        QCOMPARE(call(u"sendgridEmail"_s, {{u"toEmail"_s, kEditorMail},
                                           {u"subject"_s, u"New Vantrel Message"_s},
                                           {u"body"_s, u"You have a new message in Vantrel, please check the app."_s}}),
                 u"sent"_s);
        QCOMPARE(m_provider.requests().size(), 2);
        const CannedHttpServer::Request sms = m_provider.requests().at(0), mail = m_provider.requests().at(1);
        QCOMPARE(sms.target, "/sms");
        QCOMPARE(sms.headers.value("authorization"), "Bearer sms-secret");
        QCOMPARE(QJsonDocument::fromJson(sms.body).object(),
                 QJsonObject({{u"to"_s, kEditorPhone}, {u"from"_s, u"Vantrel"_s}, {u"message"_s, kSms}}));
        QCOMPARE(mail.target, "/mail");
        QCOMPARE(mail.headers.value("authorization"), "Bearer mail-secret");
        const QJsonObject sent = QJsonDocument::fromJson(mail.body).object();
        QCOMPARE(sent.value(u"personalizations"_s)[0][u"to"_s][0][u"email"_s].toString(), kEditorMail);
        QCOMPARE(sent.value(u"subject"_s).toString(), u"New Vantrel Message"_s);
        // Delivered notices are not written to the development outbox.
        QVERIFY(TestBackend::readLines(backend().noticeOutbox()).filter(tom).isEmpty());
    }

    // The supervisor starts the server again when it dies, and a write retried after that is
    // answered from the first attempt, which PostgreSQL kept.
    void serverComesBackAndRemembersRetries()
    {
        const QList<Header> once{{"X-Parse-Request-Id", QUuid::createUuid().toByteArray(QUuid::WithoutBraces)}};
        const QString &tom = m_tomId;
        const QJsonObject change{{u"position"_s, uniqueTag()}};
        const TestBackend::Reply first = backend().request("PUT", u"/users/"_s + tom, change, false, m_tomToken, once);
        QCOMPARE(first.status, 200);
        QFile pidFile(m_data + u"/server.pid"_s);
        QVERIFY(pidFile.open(QIODevice::ReadOnly));
        const pid_t server = pid_t(pidFile.readAll().trimmed().toLongLong());
        QVERIFY(server > 0);
        QCOMPARE(::kill(server, SIGKILL), 0);
        QTRY_VERIFY_WITH_TIMEOUT(!healthy(backend()), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(healthy(backend()), 30000);
        const TestBackend::Reply retry = backend().request("PUT", u"/users/"_s + tom, change, false, m_tomToken, once);
        QCOMPARE(retry.status, 200);
        QCOMPARE(retry.raw, first.raw); // the same updatedAt: not applied again
    }

    // Refused anonymous requests add a few hundred bytes to the logs at most, and the logs
    // hold no addresses or telephone numbers from them.
    void refusalsKeepTheLogsShort()
    {
        const QString logs = m_data + u"/logs"_s;
        const qint64 before = bytesIn(logs);
        const QString personal = u"victim@example.test+447700900999"_s;
        const QString padding(3000, u'x');
        const int requests = 20;
        for (int i = 0; i < requests; ++i) {
            backend().request("POST", u"/classes/_Role/"_s + personal + padding, {{u"name"_s, personal + padding}});
            backend().request(
                "POST", u"/users"_s,
                {{u"username"_s, personal}, {u"password"_s, u"x"_s}, {u"firstName"_s, personal + padding}});
            backend().request("GET", u"/users?"_s + whereQuery({{u"email"_s, personal}}));
        }
        QTest::qWait(300); // the log is appended asynchronously
        const qint64 growth = bytesIn(logs) - before;
        QVERIFY2(growth <= requests * 3 * 300, qPrintable(QString::number(growth)));
        for (QDirIterator it(logs, QDir::Files); it.hasNext();) {
            QFile file(it.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QByteArray text = file.readAll();
            QVERIFY2(!text.contains("victim@") && !text.contains("7700900999"), qPrintable(file.fileName()));
        }
    }

    // A failed password check older than the window no longer counts (here two lock); to wrong
    // passwords an account and an unknown name give the same answers all along.
    void lockoutWindowRolls()
    {
        const QString known = uniqueTag() + u"@example.test"_s;
        backend().request("POST", u"/users"_s,
                          {{u"username"_s, known}, {u"password"_s, u"Passw0rdAb"_s}, {u"isAuthorised"_s, true}}, true);
        QList<QByteArray> answers[2]; // the account's, and an unknown name's (it has no right password)
        const auto attempt = [&](const QString &password) {
            for (int i = 0; i < (password == "wrong"_L1 ? 2 : 1); ++i)
                answers[i] << backend()
                                  .request(
                                      "POST", u"/verifyPassword"_s,
                                      {{u"username"_s, i ? u"nobody."_s + known : known}, {u"password"_s, password}})
                                  .raw;
        };
        attempt(u"wrong"_s);
        QTest::qWait(kLockoutWindowSeconds * 1000 + 500);
        for (const QString &password : {u"wrong"_s, u"Passw0rdAb"_s, u"wrong"_s, u"wrong"_s})
            attempt(password);
        QVERIFY2(answers[0].takeAt(2).contains("objectId"), "the failure of the earlier window still counted");
        QVERIFY2(answers[0].constLast().contains("locked"), answers[0].constLast().constData());
        QCOMPARE(answers[1], answers[0]);
    }

    // Per client address on sign-in, sign-up and reset requests, per address asked for, and per
    // account on notices however the function's name is spelled or wrapped.
    void limits_data()
    {
        // clang-format off
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("kind");
        QTest::addColumn<int>("limit");
        QTest::newRow("sign-in") << "/login" << "login" << kLoginLimit;
        QTest::newRow("sign-up") << "/users" << "sign-up" << kSignUpLimit;
        QTest::newRow("reset, one address") << "/requestPasswordReset" << "same address" << kResetAddressLimit;
        QTest::newRow("reset, many addresses") << "/requestPasswordReset" << "new address" << kResetLimit;
        QTest::newRow("notice, name percent-encoded") << "/functions/Send%53MS" << "notice" << kNoticeLimit;
        QTest::newRow("notices inside a batch") << "/batch" << "batch" << kNoticeLimit;
        // clang-format on
    }
    void limits()
    {
        QFETCH(QString, path);
        QFETCH(QString, kind);
        QFETCH(int, limit);
        const QString token = kind == "notice"_L1 || kind == "batch"_L1 ? sessionOfNewUser() : QString();
        const QJsonObject notice{{u"phone"_s, kEditorPhone}, {u"message"_s, kSms}};
        TestBackend::Reply r;
        for (int i = 0; i <= limit; ++i) {
            const QString name = (kind == "same address"_L1 ? u"same"_s : uniqueTag()) + u"@example.test"_s;
            QJsonObject body{{u"username"_s, name}, {u"email"_s, name}, {u"password"_s, u"Passw0rdAb"_s}};
            if (kind == "notice"_L1)
                body = notice;
            if (kind == "batch"_L1) {
                QJsonArray requests;
                for (int n = 0; n <= limit; ++n)
                    requests.append(QJsonObject{
                        {u"method"_s, u"POST"_s}, {u"path"_s, u"/functions/SendSMS"_s}, {u"body"_s, notice}});
                body = {{u"requests"_s, requests}};
            }
            r = rawRequest(backend(), "POST", path.toUtf8(), QJsonDocument(body).toJson(QJsonDocument::Compact), token);
            if (kind == "batch"_L1)
                break;
        }
        QVERIFY2(r.status == 429 || r.raw.contains("Too many"), r.raw.constData());
    }
};

QTEST_GUILESS_MAIN(ServerOperatorTest)
#include "tst_server_operator.moc"
