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

using namespace Qt::StringLiterals;

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
            sendFrame({{u"op"_s, u"connect"_s},
                       {u"applicationId"_s, TestBackend::instance().applicationId()},
                       {u"clientKey"_s, m_clientKey},
                       {u"sessionToken"_s, m_sessionToken}});
        });
        m_socket.open(QUrl(TestBackend::instance().value(u"VANTREL_LIVEQUERY_URL"_s)));
    }

    void subscribe(const QString &className)
    {
        sendFrame({{u"op"_s, u"subscribe"_s},
                   {u"requestId"_s, 1},
                   {u"query"_s, QJsonObject{{u"className"_s, className}, {u"where"_s, QJsonObject()}}},
                   {u"sessionToken"_s, m_sessionToken}});
    }

    [[nodiscard]] bool hasFrame(const QString &op) const { return !frame(op).isEmpty(); }
    [[nodiscard]] QJsonObject frame(const QString &op) const
    {
        for (const QJsonObject &f : m_frames) {
            if (f.value(u"op"_s).toString() == op)
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
        return send("POST", u"/functions/"_s + name, params, sessionToken, headers);
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
        const QString body = u"You have a new Vantrel Message %1"_s.arg(tag);
        const QJsonObject params{{recipientParam, recipient},
                                 {u"message"_s, body},
                                 {u"subject"_s, u"New Vantrel Message"_s},
                                 {u"body"_s, body}};

        // Signed-out callers are refused and nothing is queued.
        const TestBackend::Reply anonymous = callFunction(function, params, {});
        QCOMPARE(anonymous.status, 400);
        QCOMPARE(errorCode(anonymous), kValidationFailed);
        QCOMPARE(linesMentioning(backend().noticeOutbox(), tag), 0);

        const TestBackend::Reply r = callFunction(function, params, caller.sessionToken);
        QCOMPARE(r.status, 200);
        const QJsonObject line = lastJsonLineMentioning(backend().noticeOutbox(), tag);
        QCOMPARE(line.value(u"channel"_s).toString(), channel);
        QCOMPARE(line.value(u"recipient"_s).toString(), recipient);
        QCOMPARE(line.value(u"body"_s).toString(), body);
        QCOMPARE(line.value(u"requestedBy"_s).toString(), caller.objectId);

        const QString id = r.body.object().value(u"result"_s).toObject().value(u"id"_s).toString();
        const QJsonObject stored = masterGet(u"NoticeOutbox"_s, id);
        QCOMPARE(stored.value(u"recipient"_s).toString(), recipient);
        QCOMPARE(stored.value(u"delivery"_s).toString(), u"outbox"_s);
        // The outbox class is for administrators only.
        QCOMPARE(errorCode(backend().request("GET", u"/classes/NoticeOutbox/"_s + id, {}, false, caller.sessionToken)),
                 kOperationForbidden);
    }

    void noticeParametersAreValidated_data()
    {
        QTest::addColumn<QString>("function");
        QTest::addColumn<QJsonObject>("params");
        QTest::addColumn<QString>("named");
        const QString msg = u"message"_s;
        const QString phone = u"phone"_s;
        QTest::newRow("sms without phone") << "SendSMS" << QJsonObject{{msg, u"hi"_s}} << "phone";
        QTest::newRow("sms phone of letters")
            << "SendSMS" << QJsonObject{{msg, u"hi"_s}, {phone, u"call me"_s}} << "phone";
        QTest::newRow("sms empty message")
            << "SendSMS" << QJsonObject{{msg, u"  "_s}, {phone, u"+447700900123"_s}} << "message";
        const QJsonObject mail{
            {u"toEmail"_s, u"ed@example.test"_s}, {u"subject"_s, u"New Vantrel Message"_s}, {u"body"_s, u"Hello"_s}};
        QJsonObject badAddress = mail;
        badAddress.insert(u"toEmail"_s, u"not-an-address"_s);
        QJsonObject injected = mail;
        injected.insert(u"subject"_s, u"Hi\r\nBcc: everyone@example.test"_s);
        QJsonObject noBody = mail;
        noBody.remove(u"body"_s);
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
        QVERIFY2(r.body.object().value(u"error"_s).toString().contains(u'"' + named + u'"'), r.raw.constData());
        QCOMPARE(linesMentioning(backend().noticeOutbox(), caller.objectId), 0);
    }

    void noticesAreRateLimitedPerUser()
    {
        const TestBackend::User caller = newUser();
        const int limit = qEnvironmentVariableIntValue("VANTREL_NOTICE_RATE_LIMIT") > 0
                              ? qEnvironmentVariableIntValue("VANTREL_NOTICE_RATE_LIMIT")
                              : 10;
        const QJsonObject params{{u"message"_s, u"ping"_s}, {u"phone"_s, u"+447700900999"_s}};
        for (int i = 0; i < limit; ++i)
            QCOMPARE(callFunction(u"SendSMS"_s, params, caller.sessionToken).status, 200);
        const TestBackend::Reply refused = callFunction(u"SendSMS"_s, params, caller.sessionToken);
        QCOMPARE(refused.status, 429);
        QCOMPARE(linesMentioning(backend().noticeOutbox(), caller.objectId), limit);
        // Another user is not held back by the first one's notices.
        QCOMPARE(callFunction(u"SendSMS"_s, params, newUser().sessionToken).status, 200);
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
            path = u"/classes/Message"_s;
            body = {{u"title"_s, tag},
                    {u"from"_s, userPointer(sender.objectId)},
                    {u"to"_s, userPointer(recipient.objectId)}};
        } else if (kind == QLatin1String("user")) {
            path = u"/users"_s;
            const QString email = u"r%1@example.test"_s.arg(tag);
            body = {{u"username"_s, email}, {u"email"_s, email}, {u"password"_s, u"Passw0rdAb"_s}};
            token.clear();
        } else {
            path = u"/functions/sendgridEmail"_s;
            body = {{u"toEmail"_s, u"%1@example.test"_s.arg(tag)},
                    {u"subject"_s, u"New Vantrel Message"_s},
                    {u"body"_s, tag}};
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
        altered.insert(kind == QLatin1String("object") ? u"messageBody"_s : u"body"_s, u"altered"_s);
        if (kind == QLatin1String("user"))
            altered.insert(u"password"_s, u"Passw0rdCd"_s);
        const TestBackend::Reply reused = send("POST", path, altered, token, headers);
        QCOMPARE(reused.status, 400);
        QCOMPARE(errorCode(reused), kDuplicateRequest);
        const TestBackend::Reply otherCaller = send("POST", path, body, recipient.sessionToken, headers);
        QCOMPARE(errorCode(otherCaller), kDuplicateRequest);
        QVERIFY(otherCaller.body != first.body);

        if (kind == QLatin1String("object"))
            QCOMPARE(masterFind(u"Message"_s, {{u"title"_s, tag}}).size(), 1);
        else if (kind == QLatin1String("user"))
            QCOMPARE(masterFind(u"_User"_s, {{u"email"_s, body.value(u"email"_s)}}).size(), 1);
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
        QCOMPARE(site.host(), u"127.0.0.1"_s);
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
        QCOMPARE(backend().request("POST", u"/requestPasswordReset"_s, {{u"email"_s, u.username}}).status, 200);
        const QJsonObject mail = lastJsonLineMentioning(backend().mailOutbox(), u.username);
        QCOMPARE(mail.value(u"to"_s).toString(), u.username);
        const QString text = mail.value(u"text"_s).toString();
        QVERIFY2(text.contains(backend().serverUrl().toString() + u"/apps/"_s), qPrintable(text));
        QVERIFY(text.contains(u"token="_s));

        // An unknown address gets the same answer and no mail.
        const QString unknown = u"nobody%1@example.test"_s.arg(uniqueTag());
        QCOMPARE(backend().request("POST", u"/requestPasswordReset"_s, {{u"email"_s, unknown}}).status, 200);
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
        LiveQueryClient wrongKey(u"not-the-client-key"_s, outsider.sessionToken);
        QTRY_VERIFY(recipientClient.hasFrame(u"connected"_s));
        QTRY_VERIFY(outsiderClient.hasFrame(u"connected"_s));
        QTRY_VERIFY(wrongKey.hasFrame(u"error"_s));
        QVERIFY(!wrongKey.hasFrame(u"connected"_s));

        recipientClient.subscribe(u"Message"_s);
        outsiderClient.subscribe(u"Message"_s);
        QTRY_VERIFY(recipientClient.hasFrame(u"subscribed"_s));
        QTRY_VERIFY(outsiderClient.hasFrame(u"subscribed"_s));

        const QString tag = uniqueTag();
        QCOMPARE(backend()
                     .request("POST", u"/classes/Message"_s,
                              {{u"title"_s, tag},
                               {u"from"_s, userPointer(editor.objectId)},
                               {u"to"_s, userPointer(freelancer.objectId)}},
                              false, editor.sessionToken)
                     .status,
                 201);
        QTRY_VERIFY(recipientClient.hasFrame(u"create"_s));
        QCOMPARE(recipientClient.frame(u"create"_s).value(u"object"_s).toObject().value(u"title"_s).toString(), tag);
        QTest::qWait(300);
        QVERIFY(!outsiderClient.hasFrame(u"create"_s));
    }
};

QTEST_GUILESS_MAIN(ServerServicesTest)
#include "tst_server_services.moc"
