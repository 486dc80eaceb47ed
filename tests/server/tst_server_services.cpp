// The backend's services: the notice functions and their outbox, retried writes carrying the
// same request id, the operator's pages, password-reset mail and LiveQuery for messages.

#include "BackendProbe.h"
#include "TestBackend.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTest>
#include <QUrlQuery>
#include <QUuid>
#include <QWebSocket>

using namespace BackendProbe;

namespace {

const int kValidationFailed = 142;
const int kDuplicateRequest = 159;
const int kOperationForbidden = 119;

QJsonObject lastJsonLineMentioning(const QString &file, const QString &needle)
{
    const QStringList lines = TestBackend::readLines(file);
    for (auto it = lines.crbegin(); it != lines.crend(); ++it) {
        if (it->contains(needle))
            return QJsonDocument::fromJson(it->toUtf8()).object();
    }
    return {};
}

int linesMentioning(const QString &file, const QString &needle)
{
    int n = 0;
    for (const QString &line : TestBackend::readLines(file))
        n += line.contains(needle) ? 1 : 0;
    return n;
}

// A LiveQuery client: connects with the given client key and session, collects every frame.
class LiveQueryClient {
public:
    explicit LiveQueryClient(const QString &clientKey, const QString &sessionToken)
        : m_clientKey(clientKey), m_sessionToken(sessionToken)
    {
        QObject::connect(&m_socket, &QWebSocket::textMessageReceived, [this](const QString &text) {
            m_frames.append(QJsonDocument::fromJson(text.toUtf8()).object());
        });
        QObject::connect(&m_socket, &QWebSocket::connected, [this] {
            sendFrame({{QStringLiteral("op"), QStringLiteral("connect")},
                       {QStringLiteral("applicationId"), TestBackend::instance().applicationId()},
                       {QStringLiteral("clientKey"), m_clientKey},
                       {QStringLiteral("sessionToken"), m_sessionToken}});
        });
        m_socket.open(QUrl(TestBackend::instance().value(QStringLiteral("VANTREL_LIVEQUERY_URL"))));
    }

    void subscribe(const QString &className)
    {
        sendFrame({{QStringLiteral("op"), QStringLiteral("subscribe")},
                   {QStringLiteral("requestId"), 1},
                   {QStringLiteral("query"),
                    QJsonObject{{QStringLiteral("className"), className}, {QStringLiteral("where"), QJsonObject()}}},
                   {QStringLiteral("sessionToken"), m_sessionToken}});
    }

    [[nodiscard]] bool hasFrame(const QString &op) const { return !frame(op).isEmpty(); }
    [[nodiscard]] QJsonObject frame(const QString &op) const
    {
        for (const QJsonObject &f : m_frames) {
            if (f.value(QStringLiteral("op")).toString() == op)
                return f;
        }
        return {};
    }

private:
    void sendFrame(const QJsonObject &frame)
    {
        m_socket.sendTextMessage(QString::fromUtf8(QJsonDocument(frame).toJson(QJsonDocument::Compact)));
    }

    QString m_clientKey;
    QString m_sessionToken;
    QWebSocket m_socket;
    QList<QJsonObject> m_frames;
};

} // namespace

class ServerServicesTest : public QObject {
    Q_OBJECT

private:
    const TestBackend &backend() const { return TestBackend::instance(); }

    TestBackend::User newUser()
    {
        const TestBackend::User u = backend().signUpUser();
        if (u.sessionToken.isEmpty())
            qFatal("sign-up failed");
        return u;
    }

    TestBackend::Reply callFunction(const QString &name, const QJsonObject &params, const QString &sessionToken,
                                    const QByteArray &requestId = {})
    {
        QList<Header> headers;
        if (!requestId.isEmpty())
            headers.append({QByteArrayLiteral("X-Parse-Request-Id"), requestId});
        return send("POST", QStringLiteral("/functions/") + name, params, sessionToken, headers);
    }

private Q_SLOTS:
    void initTestCase() { REQUIRE_BACKEND(); }

    // --- notice functions -------------------------------------------------------------

    void noticesReachTheOutbox_data()
    {
        QTest::addColumn<QString>("function");
        QTest::addColumn<QString>("recipientParam");
        QTest::addColumn<QString>("recipient");
        QTest::addColumn<QString>("channel");
        QTest::newRow("SendSMS") << "SendSMS"
                                 << "phone"
                                 << "+447700900123"
                                 << "sms";
        QTest::newRow("sendgridEmail") << "sendgridEmail"
                                       << "toEmail"
                                       << "n%1@example.test"
                                       << "email";
    }
    void noticesReachTheOutbox()
    {
        QFETCH(QString, function);
        QFETCH(QString, recipientParam);
        QFETCH(QString, recipient);
        QFETCH(QString, channel);
        const TestBackend::User caller = newUser();
        const QString tag = uniqueTag();
        if (recipient.contains(QLatin1String("%1")))
            recipient = recipient.arg(tag);
        const QString body = QStringLiteral("You have a new Vantrel Message %1").arg(tag);
        const QJsonObject params{{recipientParam, recipient},
                                 {QStringLiteral("message"), body},
                                 {QStringLiteral("subject"), QStringLiteral("New Vantrel Message")},
                                 {QStringLiteral("body"), body}};

        // Signed-out callers are refused and nothing is queued.
        const TestBackend::Reply anonymous = callFunction(function, params, {});
        QCOMPARE(anonymous.status, 400);
        QCOMPARE(errorCode(anonymous), kValidationFailed);
        QCOMPARE(linesMentioning(backend().noticeOutbox(), tag), 0);

        const TestBackend::Reply r = callFunction(function, params, caller.sessionToken);
        QCOMPARE(r.status, 200);
        const QJsonObject line = lastJsonLineMentioning(backend().noticeOutbox(), tag);
        QCOMPARE(line.value(QStringLiteral("channel")).toString(), channel);
        QCOMPARE(line.value(QStringLiteral("recipient")).toString(), recipient);
        QCOMPARE(line.value(QStringLiteral("body")).toString(), body);
        QCOMPARE(line.value(QStringLiteral("requestedBy")).toString(), caller.objectId);

        const QString id =
            r.body.object().value(QStringLiteral("result")).toObject().value(QStringLiteral("id")).toString();
        const QJsonObject stored = masterGet(QStringLiteral("NoticeOutbox"), id);
        QCOMPARE(stored.value(QStringLiteral("recipient")).toString(), recipient);
        QCOMPARE(stored.value(QStringLiteral("delivery")).toString(), QStringLiteral("outbox"));
        // The outbox class is for administrators only.
        QCOMPARE(errorCode(backend().request("GET", QStringLiteral("/classes/NoticeOutbox/") + id, {}, false,
                                             caller.sessionToken)),
                 kOperationForbidden);
    }

    void noticeParametersAreValidated_data()
    {
        QTest::addColumn<QString>("function");
        QTest::addColumn<QJsonObject>("params");
        QTest::addColumn<QString>("named");
        const QString msg = QStringLiteral("message");
        const QString phone = QStringLiteral("phone");
        QTest::newRow("sms without phone") << "SendSMS" << QJsonObject{{msg, QStringLiteral("hi")}} << "phone";
        QTest::newRow("sms phone of letters")
            << "SendSMS" << QJsonObject{{msg, QStringLiteral("hi")}, {phone, QStringLiteral("call me")}} << "phone";
        QTest::newRow("sms empty message")
            << "SendSMS" << QJsonObject{{msg, QStringLiteral("  ")}, {phone, QStringLiteral("+447700900123")}}
            << "message";
        const QJsonObject mail{{QStringLiteral("toEmail"), QStringLiteral("ed@example.test")},
                               {QStringLiteral("subject"), QStringLiteral("New Vantrel Message")},
                               {QStringLiteral("body"), QStringLiteral("Hello")}};
        QJsonObject badAddress = mail;
        badAddress.insert(QStringLiteral("toEmail"), QStringLiteral("not-an-address"));
        QJsonObject injected = mail;
        injected.insert(QStringLiteral("subject"), QStringLiteral("Hi\r\nBcc: everyone@example.test"));
        QJsonObject noBody = mail;
        noBody.remove(QStringLiteral("body"));
        QTest::newRow("mail bad address") << "sendgridEmail" << badAddress << "toEmail";
        QTest::newRow("mail header injection") << "sendgridEmail" << injected << "subject";
        QTest::newRow("mail without body") << "sendgridEmail" << noBody << "body";
    }
    void noticeParametersAreValidated()
    {
        QFETCH(QString, function);
        QFETCH(QJsonObject, params);
        QFETCH(QString, named);
        const TestBackend::User caller = newUser();
        const TestBackend::Reply r = callFunction(function, params, caller.sessionToken);
        QCOMPARE(r.status, 400);
        QCOMPARE(errorCode(r), kValidationFailed);
        QVERIFY2(r.body.object().value(QStringLiteral("error")).toString().contains(u'"' + named + u'"'),
                 r.raw.constData());
        QCOMPARE(linesMentioning(backend().noticeOutbox(), caller.objectId), 0);
    }

    void noticesAreRateLimitedPerUser()
    {
        const TestBackend::User caller = newUser();
        const int limit = qEnvironmentVariableIntValue("VANTREL_NOTICE_RATE_LIMIT") > 0
                              ? qEnvironmentVariableIntValue("VANTREL_NOTICE_RATE_LIMIT")
                              : 10;
        const QJsonObject params{{QStringLiteral("message"), QStringLiteral("ping")},
                                 {QStringLiteral("phone"), QStringLiteral("+447700900999")}};
        for (int i = 0; i < limit; ++i)
            QCOMPARE(callFunction(QStringLiteral("SendSMS"), params, caller.sessionToken).status, 200);
        const TestBackend::Reply refused = callFunction(QStringLiteral("SendSMS"), params, caller.sessionToken);
        QCOMPARE(refused.status, 429);
        QCOMPARE(linesMentioning(backend().noticeOutbox(), caller.objectId), limit);
        // Another user is not held back by the first one's notices.
        QCOMPARE(callFunction(QStringLiteral("SendSMS"), params, newUser().sessionToken).status, 200);
    }

    // --- retried writes ---------------------------------------------------------------

    void retriedWriteIsAppliedOnce_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("object create") << "object";
        QTest::newRow("sign-up") << "user";
        QTest::newRow("cloud function") << "function";
    }
    void retriedWriteIsAppliedOnce()
    {
        QFETCH(QString, kind);
        const TestBackend::User sender = newUser();
        const TestBackend::User recipient = newUser();
        const QString tag = uniqueTag();
        const QByteArray requestId = QUuid::createUuid().toByteArray(QUuid::WithoutBraces);
        const QList<Header> headers{{QByteArrayLiteral("X-Parse-Request-Id"), requestId}};

        QString path;
        QJsonObject body;
        QString token = sender.sessionToken;
        if (kind == QLatin1String("object")) {
            path = QStringLiteral("/classes/Message");
            body = {{QStringLiteral("title"), tag},
                    {QStringLiteral("from"), userPointer(sender.objectId)},
                    {QStringLiteral("to"), userPointer(recipient.objectId)}};
        } else if (kind == QLatin1String("user")) {
            path = QStringLiteral("/users");
            const QString email = QStringLiteral("r%1@example.test").arg(tag);
            body = {{QStringLiteral("username"), email},
                    {QStringLiteral("email"), email},
                    {QStringLiteral("password"), QStringLiteral("Passw0rdAb")}};
            token.clear();
        } else {
            path = QStringLiteral("/functions/sendgridEmail");
            body = {{QStringLiteral("toEmail"), QStringLiteral("%1@example.test").arg(tag)},
                    {QStringLiteral("subject"), QStringLiteral("New Vantrel Message")},
                    {QStringLiteral("body"), tag}};
        }

        const TestBackend::Reply first = send("POST", path, body, token, headers);
        QVERIFY2(first.status == 200 || first.status == 201, first.raw.constData());
        // The retry gets the first attempt's answer (the same objectId, session or result).
        const TestBackend::Reply retry = send("POST", path, body, token, headers);
        QCOMPARE(retry.status, first.status);
        QCOMPARE(retry.body, first.body);

        // The same id on a different request, or from another caller, is not answered from the
        // first one and is not applied either.
        QJsonObject altered = body;
        altered.insert(kind == QLatin1String("object") ? QStringLiteral("messageBody") : QStringLiteral("body"),
                       QStringLiteral("altered"));
        if (kind == QLatin1String("user"))
            altered.insert(QStringLiteral("password"), QStringLiteral("Passw0rdCd"));
        const TestBackend::Reply reused = send("POST", path, altered, token, headers);
        QCOMPARE(reused.status, 400);
        QCOMPARE(errorCode(reused), kDuplicateRequest);
        const TestBackend::Reply otherCaller = send("POST", path, body, recipient.sessionToken, headers);
        QCOMPARE(errorCode(otherCaller), kDuplicateRequest);
        QVERIFY(otherCaller.body != first.body);

        if (kind == QLatin1String("object"))
            QCOMPARE(masterFind(QStringLiteral("Message"), {{QStringLiteral("title"), tag}}).size(), 1);
        else if (kind == QLatin1String("user"))
            QCOMPARE(
                masterFind(QStringLiteral("_User"), {{QStringLiteral("email"), body.value(QStringLiteral("email"))}})
                    .size(),
                1);
        else
            QCOMPARE(linesMentioning(backend().noticeOutbox(), tag), 1);
    }

    // --- operator pages and mail -----------------------------------------------------------

    void operatorPagesAreServed_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<int>("status");
        QTest::newRow("terms") << "termsAndConditions.htm" << 200;
        QTest::newRow("contact") << "contactUs.htm" << 200;
        QTest::newRow("missing page") << "privacy.htm" << 404;
        QTest::newRow("no escape from the site folder") << "..%2Fpackage.json" << 404;
    }
    void operatorPagesAreServed()
    {
        QFETCH(QString, page);
        QFETCH(int, status);
        const QUrl site = backend().siteUrl();
        QCOMPARE(site.host(), QStringLiteral("127.0.0.1"));
        QByteArray contentType;
        const TestBackend::Reply r = fetch(QUrl(site.toString() + page), &contentType);
        QCOMPARE(r.status, status);
        if (status == 200) {
            QVERIFY(contentType.startsWith("text/html"));
            QVERIFY(r.raw.contains("Vantrel PRO"));
            QVERIFY(r.raw.contains("freelance"));
        }
    }

    void passwordResetMailLandsInTheOutbox()
    {
        const TestBackend::User u = newUser();
        QCOMPARE(backend()
                     .request("POST", QStringLiteral("/requestPasswordReset"), {{QStringLiteral("email"), u.username}})
                     .status,
                 200);
        const QJsonObject mail = lastJsonLineMentioning(backend().mailOutbox(), u.username);
        QCOMPARE(mail.value(QStringLiteral("to")).toString(), u.username);
        const QString text = mail.value(QStringLiteral("text")).toString();
        QVERIFY2(text.contains(backend().serverUrl().toString() + QStringLiteral("/apps/")), qPrintable(text));
        QVERIFY(text.contains(QStringLiteral("token=")));

        // An unknown address gets the same answer and no mail.
        const QString unknown = QStringLiteral("nobody%1@example.test").arg(uniqueTag());
        QCOMPARE(backend()
                     .request("POST", QStringLiteral("/requestPasswordReset"), {{QStringLiteral("email"), unknown}})
                     .status,
                 200);
        QCOMPARE(linesMentioning(backend().mailOutbox(), unknown), 0);
    }

    // --- LiveQuery -------------------------------------------------------------------

    void liveQueryDeliversMessagesToTheirPartiesOnly()
    {
        const TestBackend::User editor = newUser();
        const TestBackend::User freelancer = newUser();
        const TestBackend::User outsider = newUser();
        LiveQueryClient recipientClient(backend().clientKey(), freelancer.sessionToken);
        LiveQueryClient outsiderClient(backend().clientKey(), outsider.sessionToken);
        LiveQueryClient wrongKey(QStringLiteral("not-the-client-key"), outsider.sessionToken);
        QTRY_VERIFY(recipientClient.hasFrame(QStringLiteral("connected")));
        QTRY_VERIFY(outsiderClient.hasFrame(QStringLiteral("connected")));
        QTRY_VERIFY(wrongKey.hasFrame(QStringLiteral("error")));
        QVERIFY(!wrongKey.hasFrame(QStringLiteral("connected")));

        recipientClient.subscribe(QStringLiteral("Message"));
        outsiderClient.subscribe(QStringLiteral("Message"));
        QTRY_VERIFY(recipientClient.hasFrame(QStringLiteral("subscribed")));
        QTRY_VERIFY(outsiderClient.hasFrame(QStringLiteral("subscribed")));

        const QString tag = uniqueTag();
        QCOMPARE(backend()
                     .request("POST", QStringLiteral("/classes/Message"),
                              {{QStringLiteral("title"), tag},
                               {QStringLiteral("from"), userPointer(editor.objectId)},
                               {QStringLiteral("to"), userPointer(freelancer.objectId)}},
                              false, editor.sessionToken)
                     .status,
                 201);
        QTRY_VERIFY(recipientClient.hasFrame(QStringLiteral("create")));
        QCOMPARE(recipientClient.frame(QStringLiteral("create"))
                     .value(QStringLiteral("object"))
                     .toObject()
                     .value(QStringLiteral("title"))
                     .toString(),
                 tag);
        QTest::qWait(300);
        QVERIFY(!outsiderClient.hasFrame(QStringLiteral("create")));
    }
};

QTEST_GUILESS_MAIN(ServerServicesTest)
#include "tst_server_services.moc"
