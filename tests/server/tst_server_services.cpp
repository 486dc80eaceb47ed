// The backend's services against the running backend: the notice functions and what they
// refuse to relay, retried writes answered from their first attempt, malformed requests and
// uploads, the operator's pages and LiveQuery for messages (the read rules of queries, and no
// longer than the session lasts).

#include "BackendProbe.h"
#include "TestBackend.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>
#include <QUuid>
#include <QWebSocket>

using namespace Qt::StringLiterals;
using namespace BackendProbe;

namespace {

const int kOperationForbidden = 119;
const int kDuplicateRequest = 159;
const auto kSms = u"You have a new Vantrel Message please check the app"_s;
const auto kSubject = u"New Vantrel Message"_s;
const auto kMailBody = u"You have a new message in Vantrel, please check the app."_s;
const auto kDeletionSubject = u"Delete Freelancer Profile - Vantrel Message"_s;

QList<QJsonObject> noticesOf(const QString &userId)
{
    QList<QJsonObject> notices;
    for (const QString &line : TestBackend::readLines(TestBackend::instance().noticeOutbox())) {
        const QJsonObject notice = QJsonDocument::fromJson(line.toUtf8()).object();
        if (notice.value(u"requestedBy"_s).toString() == userId)
            notices << notice;
    }
    return notices;
}

// A LiveQuery client of the messages: subscribes once connected and keeps every frame's text.
struct LiveQueryClient {
    QWebSocket socket;
    QString frames;
    explicit LiveQueryClient(const QString &sessionToken, const QJsonObject &where = {})
    {
        const TestBackend &backend = TestBackend::instance();
        const auto send = [this, sessionToken](QJsonObject frame) {
            frame.insert(u"sessionToken"_s, sessionToken);
            socket.sendTextMessage(QString::fromUtf8(QJsonDocument(frame).toJson(QJsonDocument::Compact)));
        };
        QObject::connect(&socket, &QWebSocket::connected, [send, &backend] {
            send({{u"op"_s, u"connect"_s},
                  {u"applicationId"_s, backend.applicationId()},
                  {u"clientKey"_s, backend.clientKey()}});
        });
        QObject::connect(&socket, &QWebSocket::textMessageReceived, [this, send, where](const QString &text) {
            frames += text;
            if (text.contains(u"\"connected\""_s))
                send({{u"op"_s, u"subscribe"_s},
                      {u"requestId"_s, 1},
                      {u"query"_s, QJsonObject{{u"className"_s, u"Message"_s}, {u"where"_s, where}}}});
        });
        socket.open(QUrl(backend.value(u"VANTREL_LIVEQUERY_URL"_s)));
    }
};

} // namespace

class ServerServicesTest : public QObject {
    Q_OBJECT

    const TestBackend &backend() const { return TestBackend::instance(); }

    TestBackend::Reply call(const QString &function, const QJsonObject &params, const QString &token)
    {
        return send("POST", u"/functions/"_s + function, params, token, {});
    }

    // An editor's message to a freelancer, who has just replied on it.
    struct Conversation {
        TestBackend::User editor, freelancer;
    };
    Conversation replied()
    {
        Conversation c{newsroomUser(), backend().signUpUser({{u"firstName"_s, u"Ben"_s}})};
        const QString id =
            send("POST", u"/classes/Message"_s,
                 {{u"from"_s, userPointer(c.editor.objectId)}, {u"to"_s, userPointer(c.freelancer.objectId)}},
                 c.editor.sessionToken, {})
                .text(u"objectId"_s);
        const TestBackend::Reply reply =
            send("PUT", u"/classes/Message/"_s + id,
                 {{u"from"_s, userPointer(c.freelancer.objectId)}, {u"to"_s, userPointer(c.editor.objectId)}},
                 c.freelancer.sessionToken, {});
        if (reply.status != 200)
            qFatal("the reply failed: %s", reply.raw.constData());
        return c;
    }

private Q_SLOTS:
    void initTestCase() { REQUIRE_BACKEND(); }

    // Notices go only to the other party of a message the caller just saved, with the app's
    // texts, or (a deletion request) to the administrator; everything else is refused.
    void noticeRelay_data()
    {
        // clang-format off
        QTest::addColumn<QString>("caller");
        QTest::addColumn<QString>("function");
        QTest::addColumn<QJsonObject>("params");
        QTest::addColumn<QString>("recipient"); // empty: refused
        const QString editorPhone = u"+447700900412"_s;
        QTest::newRow("text to the editor replied to") << "freelancer" << "SendSMS"
            << QJsonObject{{u"phone"_s, editorPhone}, {u"message"_s, kSms}} << editorPhone;
        QTest::newRow("text of the caller's own") << "freelancer" << "SendSMS"
            << QJsonObject{{u"phone"_s, editorPhone}, {u"message"_s, u"Cheap flights!"_s}} << "";
        QTest::newRow("text to any number") << "freelancer" << "SendSMS"
            << QJsonObject{{u"phone"_s, u"+447700900999"_s}, {u"message"_s, kSms}} << "";
        QTest::newRow("text to someone not written to lately") << "editor" << "SendSMS"
            << QJsonObject{{u"phone"_s, u"+447700900111"_s}, {u"message"_s, kSms}} << "";
        QTest::newRow("mail to the editor replied to") << "freelancer" << "sendgridEmail"
            << QJsonObject{{u"toEmail"_s, u"EDITOR"_s}, {u"subject"_s, kSubject}, {u"body"_s, kMailBody}} << "EDITOR";
        QTest::newRow("mail with the caller's own text") << "freelancer" << "sendgridEmail"
            << QJsonObject{{u"toEmail"_s, u"EDITOR"_s}, {u"subject"_s, kSubject}, {u"body"_s, u"Click here"_s}} << "";
        QTest::newRow("mail to any address") << "freelancer" << "sendgridEmail"
            << QJsonObject{{u"toEmail"_s, u"victim@example.test"_s}, {u"subject"_s, kSubject}, {u"body"_s, kMailBody}} << "";
        QTest::newRow("own deletion request") << "freelancer" << "sendgridEmail"
            << QJsonObject{{u"toEmail"_s, u"victim@example.test"_s}, {u"subject"_s, kDeletionSubject}, {u"body"_s, u"OWN"_s}}
            << "ADMIN";
        QTest::newRow("deletion request for someone else") << "freelancer" << "sendgridEmail"
            << QJsonObject{{u"toEmail"_s, u"victim@example.test"_s}, {u"subject"_s, kDeletionSubject}, {u"body"_s, u"OTHER"_s}}
            << "";
        // clang-format on
    }
    void noticeRelay()
    {
        QFETCH(QString, caller);
        QFETCH(QString, function);
        QFETCH(QJsonObject, params);
        QFETCH(QString, recipient);
        const Conversation c = replied();
        const TestBackend::User &by = caller == "editor"_L1 ? c.editor : c.freelancer;
        const QString editorMail = masterGet(u"_User"_s, c.editor.objectId).value(u"workEmail"_s).toString();
        const QHash<QString, QString> placeholders{
            {u"EDITOR"_s, editorMail},
            {u"ADMIN"_s, backend().value(u"VANTREL_ADMIN_EMAIL"_s)},
            {u"OWN"_s, deletionNotice(u"Ben"_s, by.objectId, by.username)},
            {u"OTHER"_s, deletionNotice(u"Claire"_s, c.editor.objectId, c.editor.username)}};
        for (const QString &key : params.keys())
            params[key] = placeholders.value(params[key].toString(), params[key].toString());
        recipient = placeholders.value(recipient, recipient);

        const TestBackend::Reply r = call(function, params, by.sessionToken);
        const QList<QJsonObject> notices = noticesOf(by.objectId);
        if (recipient.isEmpty()) {
            QCOMPARE(errorCode(r), kOperationForbidden);
            QVERIFY(notices.isEmpty());
        } else {
            QCOMPARE(r.body.object().value(u"result"_s).toObject().value(u"delivery"_s).toString(), u"outbox"_s);
            QCOMPARE(notices.size(), 1);
            QCOMPARE(notices.first().value(u"recipient"_s).toString(), recipient);
        }
        QVERIFY(call(function, params, {}).status >= 400); // nobody signed out sends anything
    }

    // The administrator hears of a deletion request once, whether the app's notice arrived
    // before the account's sessions ended or not at all.
    void deletionRequestIsNotifiedOnce_data()
    {
        // clang-format off
        QTest::addColumn<bool>("appSendsNotice");
        QTest::newRow("the app's notice arrives first") << true;
        QTest::newRow("the app's notice is lost") << false;
        // clang-format on
    }
    void deletionRequestIsNotifiedOnce()
    {
        QFETCH(bool, appSendsNotice);
        const TestBackend::User u = backend().signUpUser({{u"firstName"_s, u"Ben"_s}});
        if (appSendsNotice)
            QCOMPARE(call(u"sendgridEmail"_s,
                          {{u"toEmail"_s, u"admin@example.test"_s},
                           {u"subject"_s, kDeletionSubject},
                           {u"body"_s, deletionNotice(u"Ben"_s, u.objectId, u.username)}},
                          u.sessionToken)
                         .status,
                     200);
        QCOMPARE(backend()
                     .request("PUT", u"/users/"_s + u.objectId,
                              {{u"isAuthorised"_s, false}, {u"shouldDeleteAccount"_s, true}}, false, u.sessionToken)
                     .status,
                 200);
        QTRY_COMPARE(noticesOf(u.objectId).size(), 1);
        QCOMPARE(noticesOf(u.objectId).first().value(u"body"_s).toString(),
                 deletionNotice(u"Ben"_s, u.objectId, u.username));
    }

    // A retried write (same request id, user, method, path and body) gets the first answer
    // and is applied once; any other use of the id is refused.
    void retriedWrites_data()
    {
        // clang-format off
        QTest::addColumn<QString>("kind");
        QTest::newRow("object create") << "object";
        QTest::newRow("sign-up") << "user";
        QTest::newRow("upload") << "file";
        // clang-format on
    }
    void retriedWrites()
    {
        QFETCH(QString, kind);
        const TestBackend::User editor = newsroomUser();
        const TestBackend::User other = backend().signUpUser();
        const QString tag = uniqueTag();
        const QList<Header> once{{"X-Parse-Request-Id", QUuid::createUuid().toByteArray(QUuid::WithoutBraces)}};
        const QByteArray picture = QByteArray::fromHex("ffd8ffe0") + tag.toUtf8();
        // Another session of the same user retries, as the app does after signing in again.
        const QString again =
            backend()
                .request("POST", u"/login"_s, {{u"username"_s, editor.username}, {u"password"_s, editor.password}})
                .text(u"sessionToken"_s);
        QString path = u"/classes/Message"_s;
        QJsonObject body{
            {u"title"_s, tag}, {u"from"_s, userPointer(editor.objectId)}, {u"to"_s, userPointer(other.objectId)}};
        QString token = editor.sessionToken, retryToken = again;
        if (kind == "user"_L1) {
            path = u"/users"_s;
            body = {{u"username"_s, tag + u"@example.test"_s}, {u"password"_s, u"Passw0rdAb"_s}};
            token = retryToken = QString();
        } else if (kind == "file"_L1) {
            body = {}; // the picture is sent; an altered request sends other bytes
        }
        const auto attempt = [&](const QJsonObject &b, const QString &t) {
            if (kind != "file"_L1)
                return send("POST", path, b, t, once);
            QNetworkRequest request(QUrl(backend().serverUrl().toString() + u"/files/p.jpg"_s));
            request.setRawHeader("X-Parse-Application-Id", backend().applicationId().toUtf8());
            request.setRawHeader("X-Parse-Client-Key", backend().clientKey().toUtf8());
            request.setRawHeader("X-Parse-Session-Token", t.toUtf8());
            request.setRawHeader(once.first().first, once.first().second);
            return TestBackend::exchange(request, "POST", b.isEmpty() ? picture : picture + "x");
        };
        const TestBackend::Reply first = attempt(body, token);
        QVERIFY2(first.status == 200 || first.status == 201, first.raw.constData());
        const TestBackend::Reply retry = attempt(body, retryToken);
        QCOMPARE(retry.status, first.status);
        QCOMPARE(retry.raw, first.raw);

        QJsonObject altered = body;
        altered.insert(u"password"_s, u"Passw0rdCd"_s);
        QCOMPARE(errorCode(attempt(altered, token)), kDuplicateRequest);
        if (kind != "user"_L1)
            QCOMPARE(errorCode(attempt(body, other.sessionToken)), kDuplicateRequest);
        if (kind == "object"_L1)
            QCOMPARE(masterFind(u"Message"_s, {{u"title"_s, tag}}).size(), 1);
        else if (kind == "user"_L1)
            QCOMPARE(masterFind(u"_User"_s, {{u"username"_s, body.value(u"username"_s)}}).size(), 1);
    }

    // Finds sent as POST are answered afresh each time, never from the replay store.
    void findsSentAsPostAreNotReplayed()
    {
        const TestBackend::User u = backend().signUpUser();
        const QList<Header> once{{"X-Parse-Request-Id", QUuid::createUuid().toByteArray(QUuid::WithoutBraces)}};
        // Neither find keeps an answer, so the id is still free for a write.
        for (int i = 0; i < 2; ++i) {
            const TestBackend::Reply r =
                send("POST", u"/classes/Message"_s, {{u"_method"_s, u"GET"_s}}, u.sessionToken, once);
            QCOMPARE(r.status, 200);
        }
        QCOMPARE(send("PUT", u"/users/"_s + u.objectId, {{u"position"_s, u"Camera"_s}}, u.sessionToken, once).status,
                 200);
    }

    // Malformed requests and uploads that are no picture or too large get a 4xx answer with a
    // message, and the server goes on answering.
    void badInputs_data()
    {
        // clang-format off
        QTest::addColumn<QByteArray>("method");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QByteArray>("body");
        const QByteArray badDate = "{\"__type\":\"Date\",\"iso\":\"not a date\"}";
        QTest::newRow("date that is no date") << QByteArray("POST") << "/users" << "{\"username\":\"a@b.test\",\"password\":\"x\",\"firstName\":" + badDate + "}";
        QTest::newRow("date without iso") << QByteArray("POST") << "/users" << QByteArray("{\"username\":\"a@b.test\",\"password\":\"x\",\"firstName\":{\"__type\":\"Date\"}}");
        QTest::newRow("date in a list") << QByteArray("PUT") << "/classes/Freelancer/FID" << "{\"notAvailable\":[" + badDate + "]}";
        QTest::newRow("date deep in an object") << QByteArray("PUT") << "/users/ME" << "{\"position\":{\"a\":{\"b\":" + badDate + "}}}";
        QTest::newRow("date in a query") << QByteArray("GET") << QString::fromUtf8("/classes/Freelancer?where=" + QUrl::toPercentEncoding("{\"locationDate\":{\"$gt\":" + badDate + "}}")) << QByteArray();
        QTest::newRow("pointer without id") << QByteArray("POST") << "/classes/LiveStream" << QByteArray("{\"freelancer\":{\"__type\":\"Pointer\",\"className\":\"Freelancer\"}}");
        QTest::newRow("pointer with an operator id") << QByteArray("POST") << "/classes/LiveStream" << QByteArray("{\"freelancer\":{\"__type\":\"Pointer\",\"className\":\"Freelancer\",\"objectId\":{\"$ne\":null}}}");
        QTest::newRow("pointer to nobody") << QByteArray("POST") << "/classes/LiveStream" << QByteArray("{\"freelancer\":{\"__type\":\"Pointer\",\"className\":\"Freelancer\",\"objectId\":\"nobody0000\"}}");
        QTest::newRow("text in a list of dates") << QByteArray("PUT") << "/classes/Freelancer/FID" << QByteArray("{\"notAvailable\":[\"monday\"]}");
        QTest::newRow("numbers in a list of skills") << QByteArray("PUT") << "/classes/Freelancer/FID" << QByteArray("{\"skills\":[1,2]}");
        QTest::newRow("a second freelancer record") << QByteArray("POST") << "/classes/Freelancer" << QByteArray("{\"user\":{\"__type\":\"Pointer\",\"className\":\"_User\",\"objectId\":\"ME\"}}");
        QTest::newRow("a name of 5000 letters") << QByteArray("PUT") << "/users/ME" << "{\"firstName\":\"" + QByteArray(5000, 'x') + "\"}";
        QTest::newRow("deep nesting") << QByteArray("PUT") << "/users/ME" << QByteArray(3000, '[') + QByteArray(3000, ']');
        QTest::newRow("NUL in text") << QByteArray("PUT") << "/users/ME" << QByteArray("{\"firstName\":\"a\\u0000b\"}");
        QTest::newRow("geo point off the globe") << QByteArray("PUT") << "/classes/Freelancer/FID" << QByteArray("{\"lastKnownLocation\":{\"__type\":\"GeoPoint\",\"latitude\":200,\"longitude\":0}}");
        QTest::newRow("unknown typed value") << QByteArray("PUT") << "/users/ME" << QByteArray("{\"firstName\":{\"__type\":\"Script\"}}");
        QTest::newRow("list operation without a list") << QByteArray("PUT") << "/classes/Freelancer/FID" << QByteArray("{\"skills\":{\"__op\":\"Add\",\"objects\":\"x\"}}");
        QTest::newRow("not JSON") << QByteArray("POST") << "/users" << QByteArray("{\"username\":");
        QTest::newRow("select of a hidden key") << QByteArray("GET") << QString::fromUtf8("/users?where=" + QUrl::toPercentEncoding("{\"objectId\":{\"$select\":{\"query\":{\"className\":\"_User\",\"where\":{}},\"key\":\"email\"}}}")) << QByteArray();
        QTest::newRow("transaction with a refused write") << QByteArray("POST") << "/batch" << QByteArray("{\"transaction\":true,\"requests\":[{\"method\":\"PUT\",\"path\":\"/users/ME\",\"body\":{\"position\":\"x\"}},{\"method\":\"PUT\",\"path\":\"/classes/FreelanceCategory/x\",\"body\":{}}]}");
        QTest::newRow("broken percent-encoding") << QByteArray("GET") << "/classes/%E0%A4%A" << QByteArray();
        QTest::newRow("upload of a page named like a picture") << QByteArray("POST") << "/files/photo.jpg" << QByteArray("<html><script>");
        QTest::newRow("upload of 11 MB") << QByteArray("POST") << "/files/big.jpg" << QByteArray::fromHex("ffd8ffe0") + QByteArray(11 * 1024 * 1024, 'x');
        // clang-format on
    }
    void badInputs()
    {
        QFETCH(QByteArray, method);
        QFETCH(QString, path);
        QFETCH(QByteArray, body);
        const TestBackend::User u = backend().signUpUser();
        const QString freelancer =
            send("POST", u"/classes/Freelancer"_s, {{u"user"_s, userPointer(u.objectId)}}, u.sessionToken, {})
                .text(u"objectId"_s);
        path.replace(u"FID"_s, freelancer).replace(u"ME"_s, u.objectId);
        body.replace("\"ME\"", '"' + u.objectId.toUtf8() + '"').replace("/users/ME", "/users/" + u.objectId.toUtf8());
        const TestBackend::Reply r = rawRequest(backend(), method, path.toUtf8(), body, u.sessionToken);
        QVERIFY2(r.status >= 400 && r.status < 500,
                 qPrintable(QString::number(r.status) + u' ' + QString::fromUtf8(r.raw)));
        QVERIFY2(!r.text(u"error"_s).isEmpty(), r.raw.constData());
        QVERIFY(healthy());
    }

    void operatorPagesAreServed_data()
    {
        // clang-format off
        QTest::addColumn<QString>("page");
        QTest::addColumn<int>("status");
        QTest::newRow("terms") << "termsAndConditions.htm" << 200;
        QTest::newRow("contact") << "contactUs.htm" << 200;
        QTest::newRow("missing page") << "privacy.htm" << 404;
        QTest::newRow("no escape from the site folder") << "..%2Fpackage.json" << 404;
        // clang-format on
    }
    void operatorPagesAreServed()
    {
        QFETCH(QString, page);
        QFETCH(int, status);
        QByteArray contentType;
        const TestBackend::Reply r = fetch(QUrl(backend().siteUrl().toString() + page), &contentType);
        QCOMPARE(r.status, status);
        QCOMPARE(status == 200, contentType.startsWith("text/html") && r.raw.contains("Vantrel PRO"));
    }

    // A message reaches a subscription only when a query by the same session could read it, and
    // a session that ends takes its subscriptions with it at once.
    void liveQueryFollowsReadRules_data()
    {
        // clang-format off
        QTest::addColumn<QString>("subscriber");
        QTest::addColumn<QString>("where"); // EDITOR and RECIPIENT stand for their objectIds
        QTest::addColumn<QJsonObject>("ending"); // what the subscriber saves to their account first
        QTest::addColumn<bool>("delivered");
        QTest::newRow("the recipient") << "recipient" << "{}" << QJsonObject() << true;
        QTest::newRow("another freelancer") << "outsider" << "{}" << QJsonObject() << false;
        QTest::newRow("another freelancer, on the pair") << "outsider" << R"({"from":{"__type":"Pointer","className":"_User","objectId":"EDITOR"},"to":{"__type":"Pointer","className":"_User","objectId":"RECIPIENT"}})" << QJsonObject() << false;
        QTest::newRow("another freelancer, on users' addresses") << "outsider" << R"({"to":{"$inQuery":{"className":"_User","where":{"email":{"$exists":true}}}}})" << QJsonObject() << false;
        QTest::newRow("authorisation given up") << "recipient" << "{}" << QJsonObject{{u"isAuthorised"_s, false}} << false;
        QTest::newRow("deletion asked") << "recipient" << "{}" << QJsonObject{{u"shouldDeleteAccount"_s, true}} << false;
        // clang-format on
    }
    void liveQueryFollowsReadRules()
    {
        QFETCH(QString, subscriber);
        QFETCH(QString, where);
        QFETCH(QJsonObject, ending);
        QFETCH(bool, delivered);
        const TestBackend::User editor = newsroomUser();
        const QHash<QString, TestBackend::User> people{{u"recipient"_s, backend().signUpUser()},
                                                       {u"outsider"_s, backend().signUpUser()}};
        where.replace(u"EDITOR"_s, editor.objectId).replace(u"RECIPIENT"_s, people[u"recipient"_s].objectId);
        const TestBackend::User &me = people[subscriber];
        LiveQueryClient client(me.sessionToken, QJsonDocument::fromJson(where.toUtf8()).object());
        QTRY_VERIFY(client.frames.contains(u"subscribed"_s));
        if (!ending.isEmpty()) {
            QCOMPARE(send("PUT", u"/users/"_s + me.objectId, ending, me.sessionToken, {}).status, 200);
            // At once (LiveQuery's own cache would trust the session for seconds), and for good.
            QTRY_VERIFY_WITH_TIMEOUT(client.socket.state() == QAbstractSocket::UnconnectedState, 1000);
            LiveQueryClient again(me.sessionToken);
            QTRY_VERIFY(again.frames.contains(u"Invalid session token"_s) && !again.frames.contains(u"subscribed"_s));
        }
        const QString tag = uniqueTag();
        QCOMPARE(send("POST", u"/classes/Message"_s,
                      {{u"title"_s, tag},
                       {u"from"_s, userPointer(editor.objectId)},
                       {u"to"_s, userPointer(people[u"recipient"_s].objectId)}},
                      editor.sessionToken, {})
                     .status,
                 201);
        QTest::qWait(delivered ? 0 : 300);
        QTRY_COMPARE(client.frames.contains(tag), delivered);
    }
};

QTEST_GUILESS_MAIN(ServerServicesTest)
#include "tst_server_services.moc"
