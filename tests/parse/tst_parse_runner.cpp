// The command runner and the controllers above it against canned replies: headers, retries,
// and every kind of bad reply turned into a PFError.
#include "CannedHttpServer.h"
#include "PFError.h"
#include "PFFileObject.h"
#include "PFObject.h"
#include "PFQuery.h"
#include "PFUser.h"
#include "Parse.h"
#include "ParseCore.h"

#include <QLoggingCategory>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>

namespace {
QStringList g_log;
void captureLog(QtMsgType, const QMessageLogContext &, const QString &message)
{
    g_log.append(message);
}

struct FindOutcome {
    bool called = false;
    int calls = 0;
    int code = 0;
    QString description;
    QList<PFObjectPtr> objects;
};

const QByteArray kUpdated = R"({"updatedAt":"2026-01-01T00:00:00.000Z"})";
const QByteArray kRefused = R"({"code":142,"error":"refused by a trigger"})";
} // namespace

class ParseRunnerTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void badRepliesBecomeErrors_data();
    void badRepliesBecomeErrors();
    void badLogInRepliesBecomeErrors_data();
    void badLogInRepliesBecomeErrors();
    void writeIsRetriedWithTheSameRequestId();
    void savesOfOneRecordNeverShareChanges();
    void failedSaveLeavesNothingForTheNextSave();
    void retriedCreateAndUploadKeepTheirRequestIds();
    void retriedUpdateAppliedBeforeCountsAsSaved();
    void requestsCarryTheParseHeaders();
    void unreachableServerGivesConnectionError();
    void completionNeverRunsInsideTheCall();
    void secretsNeverReachTheLog();

private:
    void startClient(const QString &server, int retries = 0);
    FindOutcome find(const PFQuery &query);
    std::unique_ptr<CannedHttpServer> m_server;
    std::unique_ptr<QTemporaryDir> m_data;
};

void ParseRunnerTest::init()
{
    m_server = std::make_unique<CannedHttpServer>();
    m_data = std::make_unique<QTemporaryDir>();
    startClient(m_server->origin());
}

void ParseRunnerTest::cleanup()
{
    Parse::setCore(nullptr);
}

void ParseRunnerTest::startClient(const QString &server, int retries)
{
    Parse::initializeWithConfiguration(ParseClientConfiguration::configurationWithBlock([&](auto &c) {
        c.applicationId = QStringLiteral("app");
        c.clientKey = QStringLiteral("client");
        c.server = server;
        c.dataDirectory = m_data->path();
        c.networkRetryAttempts = retries;
        c.retryInitialDelayMs = 10;
    }));
}

FindOutcome ParseRunnerTest::find(const PFQuery &query)
{
    FindOutcome outcome;
    query.findObjectsInBackgroundWithBlock([&outcome](const QList<PFObjectPtr> &objects, const PFError *error) {
        outcome.called = true;
        ++outcome.calls;
        outcome.code = error ? error->code() : 0;
        outcome.description = error ? error->localizedDescription() : QString();
        outcome.objects = objects;
    });
    if (!QTest::qWaitFor([&] { return outcome.called; }, 10000))
        outcome.code = -999;
    return outcome;
}

void ParseRunnerTest::badRepliesBecomeErrors_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("contentType");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("reason"); // what the error's description says about the reply
    const QByteArray json = "application/json";
    const QByteArray html = "text/html";
    QTest::newRow("truncated JSON") << 200 << json << QByteArray(R"({"results":[{"objectId":"a")") << 107
                                    << "at byte 27";
    QTest::newRow("empty body") << 200 << json << QByteArray() << 107 << "at byte 0";
    QTest::newRow("not UTF-8") << 200 << json << QByteArray("{\"results\":[{\"objectId\":\"\xe9t\xe9\"}]}") << 107
                               << "invalid UTF-8";
    QTest::newRow("array instead of object") << 200 << json << QByteArray("[1,2]") << 107 << "not a JSON object";
    QTest::newRow("results not a list") << 200 << json << QByteArray(R"({"results":{"a":1}})") << 107
                                        << "no list of results";
    QTest::newRow("result not a record") << 200 << json << QByteArray(R"({"results":[5]})") << 107
                                         << "not a record";
    QTest::newRow("record id a number") << 200 << json << QByteArray(R"({"results":[{"objectId":5}]})") << 107
                                        << "record id";
    QTest::newRow("record date garbage") << 200 << json
                                         << QByteArray(R"({"results":[{"objectId":"a","createdAt":"soon"}]})") << 107
                                         << "record date";
    QTest::newRow("HTML error page 502") << 502 << html << QByteArray("<html><body>Bad Gateway</body></html>") << 107
                                         << "HTTP 502";
    QTest::newRow("HTML page 404") << 404 << html << QByteArray("<!DOCTYPE html><p>Not found</p>") << 107
                                   << "HTTP 404";
    QTest::newRow("JSON error without code") << 400 << json << QByteArray(R"({"message":"no"})") << 107
                                             << "no error code";
    QTest::newRow("server's own error") << 404 << json << QByteArray(R"({"code":101,"error":"Object not found."})")
                                        << 101 << "Object not found.";
    QTest::newRow("error with message only") << 403 << json << QByteArray(R"({"error":"unauthorized"})") << -1
                                             << "unauthorized";
}

void ParseRunnerTest::badRepliesBecomeErrors()
{
    QFETCH(int, status);
    QFETCH(QByteArray, contentType);
    QFETCH(QByteArray, body);
    QFETCH(int, code);
    QFETCH(QString, reason);
    m_server->enqueue(status, body, contentType);
    const FindOutcome outcome = find(PFQuery(QStringLiteral("Story")));
    QCOMPARE(outcome.code, code);
    QVERIFY2(outcome.description.contains(reason), qPrintable(outcome.description));
    QCOMPARE(outcome.calls, 1);
    QVERIFY(outcome.objects.isEmpty());
}

void ParseRunnerTest::badLogInRepliesBecomeErrors_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("no session token") << QByteArray(R"({"objectId":"u1","username":"a"})");
    QTest::newRow("session token a number") << QByteArray(R"({"objectId":"u1","sessionToken":5})");
    QTest::newRow("no user id") << QByteArray(R"({"sessionToken":"r:x"})");
    QTest::newRow("cut off") << QByteArray(R"({"objectId":"u1","sessionTo)");
}

void ParseRunnerTest::badLogInRepliesBecomeErrors()
{
    QFETCH(QByteArray, body);
    m_server->enqueue(200, body);
    bool called = false;
    int code = 0;
    PFUser::logInWithUsernameInBackground(QStringLiteral("a"), QStringLiteral("b"),
                                          [&](const PFUserPtr &user, const PFError *error) {
                                              called = true;
                                              code = error ? error->code() : 0;
                                              QVERIFY(!user);
                                          });
    QTRY_VERIFY(called);
    QCOMPARE(code, int(PFError::InvalidJSON));
    QVERIFY(!PFUser::currentUser());
}

void ParseRunnerTest::writeIsRetriedWithTheSameRequestId()
{
    startClient(m_server->origin(), 3);
    m_server->enqueue(503, "<html>busy</html>", "text/html");
    m_server->enqueueRaw("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{\"obj"); // cut off mid-reply
    m_server->enqueue(201, R"({"objectId":"s1","createdAt":"2026-01-01T00:00:00.000Z"})");
    auto story = PFObject::objectWithClassName(QStringLiteral("Story"));
    story->setObject(QStringLiteral("Flood"), QStringLiteral("title"));
    bool called = false;
    bool succeeded = false;
    story->saveInBackgroundWithBlock([&](bool ok, const PFError *) {
        called = true;
        succeeded = ok;
    });
    QTRY_VERIFY_WITH_TIMEOUT(called, 10000);
    QVERIFY(succeeded);
    QCOMPARE(story->objectId(), QStringLiteral("s1"));
    QVERIFY(!story->isDirty());
    QCOMPARE(m_server->requests().size(), 3);
    const QByteArray requestId = m_server->requests().first().headers.value("x-parse-request-id");
    QVERIFY(!requestId.isEmpty());
    for (const auto &request : m_server->requests()) {
        QCOMPARE(request.method, QByteArray("POST"));
        QCOMPARE(request.headers.value("x-parse-request-id"), requestId);
        QCOMPARE(request.body, QByteArray(R"({"title":"Flood"})"));
    }
}

namespace {
// Starts a save and returns where its outcome will be.
std::shared_ptr<std::optional<bool>> startSave(const PFObjectPtr &object)
{
    auto outcome = std::make_shared<std::optional<bool>>();
    object->saveInBackgroundWithBlock([outcome](bool ok, const PFError *) { *outcome = ok; });
    return outcome;
}
} // namespace

void ParseRunnerTest::savesOfOneRecordNeverShareChanges()
{
    // Two saves of one record at once: the second waits and sends only its own change, and the
    // first one's failure neither saves nor keeps the second's change.
    m_server->enqueue(400, kRefused);
    m_server->enqueue(200, kUpdated);
    auto story = PFObject::objectWithoutDataWithClassName(QStringLiteral("Story"), QStringLiteral("s1"));
    story->mutableState().serverData.insert(QStringLiteral("title"), QStringLiteral("Old"));
    story->setObject(QStringLiteral("Refused"), QStringLiteral("title"));
    const auto first = startSave(story);
    story->setObject(QStringLiteral("Kept"), QStringLiteral("body"));
    const auto second = startSave(story);
    QTRY_VERIFY(first->has_value() && second->has_value());
    QCOMPARE(**first, false);
    QCOMPARE(**second, true);
    QCOMPARE(m_server->requests().size(), 2);
    QCOMPARE(m_server->requests().at(0).body, QByteArray(R"({"title":"Refused"})"));
    QCOMPARE(m_server->requests().at(1).body, QByteArray(R"({"body":"Kept"})"));
    QCOMPARE(story->stringForKey(QStringLiteral("title")), QStringLiteral("Old"));
    QCOMPARE(story->stringForKey(QStringLiteral("body")), QStringLiteral("Kept"));
    QVERIFY(!story->isDirty());
}

void ParseRunnerTest::failedSaveLeavesNothingForTheNextSave()
{
    // A refused deletion request must not go out with the next profile save.
    m_server->enqueue(400, kRefused);
    m_server->enqueue(200, kUpdated);
    auto user = std::static_pointer_cast<PFUser>(
        PFObject::objectWithoutDataWithClassName(PFUser::parseClassName(), QStringLiteral("u1")));
    user->setObject(true, QStringLiteral("shouldDeleteAccount"));
    const auto refused = startSave(user);
    QTRY_VERIFY(refused->has_value());
    QCOMPARE(**refused, false);
    QVERIFY(!user->hasKey(QStringLiteral("shouldDeleteAccount")));
    user->setObject(QStringLiteral("Ana"), QStringLiteral("firstName"));
    const auto saved = startSave(user);
    QTRY_VERIFY(saved->has_value());
    QCOMPARE(m_server->requests().at(1).body, QByteArray(R"({"firstName":"Ana"})"));
}

void ParseRunnerTest::retriedCreateAndUploadKeepTheirRequestIds()
{
    // Sent again after a failure the server may have applied, a create or an upload keeps its
    // request id: the server answers with what it made the first time instead of a second one.
    m_server->enqueue(503, "<html>busy</html>", "text/html");
    m_server->enqueue(200, R"({"name":"f_photo.jpg","url":"http://files/f_photo.jpg"})");
    m_server->enqueue(503, "<html>busy</html>", "text/html");
    m_server->enqueue(201, R"({"objectId":"s2","createdAt":"2026-01-01T00:00:00.000Z"})");
    auto story = PFObject::objectWithClassName(QStringLiteral("Story"));
    story->setObject(QStringLiteral("Flood"), QStringLiteral("title"));
    story->setObject(PFFileObject::fileObjectWithName(QStringLiteral("photo.jpg"), "jpeg bytes", "image/jpeg"),
                     QStringLiteral("photo"));
    for (bool expected : {false, false, true}) {
        const auto outcome = startSave(story);
        QTRY_VERIFY(outcome->has_value());
        QCOMPARE(**outcome, expected);
    }
    QCOMPARE(story->objectId(), QStringLiteral("s2"));
    const QList<CannedHttpServer::Request> &sent = m_server->requests();
    QCOMPARE(sent.size(), 4);
    QCOMPARE(sent.at(0).target, QByteArray("/files/photo.jpg"));
    QCOMPARE(sent.at(1).headers.value("x-parse-request-id"), sent.at(0).headers.value("x-parse-request-id"));
    QCOMPARE(sent.at(2).target, QByteArray("/classes/Story"));
    QCOMPARE(sent.at(3).headers.value("x-parse-request-id"), sent.at(2).headers.value("x-parse-request-id"));
    QCOMPARE(sent.at(3).body, sent.at(2).body);
}

void ParseRunnerTest::retriedUpdateAppliedBeforeCountsAsSaved()
{
    startClient(m_server->origin(), 1);
    m_server->enqueue(502, "<html>gateway</html>", "text/html"); // applied, but the answer was lost
    m_server->enqueue(400, R"({"code":159,"error":"Duplicate request"})");
    m_server->enqueue(400, R"({"code":159,"error":"Duplicate request"})");
    auto story = PFObject::objectWithoutDataWithClassName(QStringLiteral("Story"), QStringLiteral("s9"));
    story->setObject(QStringLiteral("Update"), QStringLiteral("title"));
    std::optional<bool> saved;
    story->saveInBackgroundWithBlock([&](bool ok, const PFError *) { saved = ok; });
    QTRY_VERIFY(saved.has_value());
    QVERIFY(*saved);
    QVERIFY(!story->isDirty());

    // A create cannot count as saved: its new id never arrived.
    auto fresh = PFObject::objectWithClassName(QStringLiteral("Story"));
    fresh->setObject(QStringLiteral("New"), QStringLiteral("title"));
    saved.reset();
    fresh->saveInBackgroundWithBlock([&](bool ok, const PFError *) { saved = ok; });
    QTRY_VERIFY(saved.has_value());
    QVERIFY(!*saved);
    QVERIFY(fresh->isDirtyForKey(QStringLiteral("title")));
}

void ParseRunnerTest::requestsCarryTheParseHeaders()
{
    m_server->enqueue(200, R"({"results":[]})");
    QCOMPARE(find(PFQuery(QStringLiteral("Story"))).code, 0);
    m_server->enqueue(200, R"({"result":"ok"})");
    ParseCommand command = ParseCommand::callFunction(QStringLiteral("f"), {});
    command.sessionToken = QStringLiteral("r:abc");
    bool called = false;
    Parse::core()->runner().runCommand(command, [&](const ParseCommandResult &) { called = true; });
    QTRY_VERIFY(called);

    QCOMPARE(m_server->requests().size(), 2);
    const auto &get = m_server->requests().at(0);
    QCOMPARE(get.method, QByteArray("GET"));
    QCOMPARE(get.target, QByteArray("/classes/Story"));
    QCOMPARE(get.headers.value("x-parse-application-id"), QByteArray("app"));
    QCOMPARE(get.headers.value("x-parse-client-key"), QByteArray("client"));
    QVERIFY(!get.headers.contains("x-parse-request-id"));
    QVERIFY(!get.headers.contains("x-parse-session-token"));
    const QByteArray installationId = get.headers.value("x-parse-installation-id");
    QVERIFY(!QUuid::fromString(QLatin1String(installationId)).isNull());
    const auto &post = m_server->requests().at(1);
    QCOMPARE(post.target, QByteArray("/functions/f"));
    QCOMPARE(post.headers.value("x-parse-session-token"), QByteArray("r:abc"));
    QCOMPARE(post.headers.value("x-parse-installation-id"), installationId);
    QVERIFY(!post.headers.value("x-parse-request-id").isEmpty());
}

void ParseRunnerTest::unreachableServerGivesConnectionError()
{
    QTcpServer closed;
    QVERIFY(closed.listen(QHostAddress::LocalHost));
    const QString origin = QStringLiteral("http://127.0.0.1:%1").arg(closed.serverPort());
    closed.close();
    startClient(origin, 2);
    const FindOutcome outcome = find(PFQuery(QStringLiteral("Story")));
    QCOMPARE(outcome.code, int(PFError::ConnectionFailed));
    QCOMPARE(outcome.calls, 1);
}

void ParseRunnerTest::completionNeverRunsInsideTheCall()
{
    m_server->enqueue(200, R"({"results":[]})");
    bool called = false;
    PFQuery(QStringLiteral("Story")).findObjectsInBackgroundWithBlock([&](auto &&, auto) { called = true; });
    QVERIFY(!called);
    QTRY_VERIFY(called);

    // Also when the call fails at once.
    called = false;
    PFQuery(QStringLiteral("Story"))
        .whereKey(QStringLiteral("p"), PFObject::objectWithClassName(QStringLiteral("Story")))
        .findObjectsInBackgroundWithBlock([&](auto &&, auto) { called = true; });
    QVERIFY(!called);
    QTRY_VERIFY(called);
    Parse::setCore(nullptr);
    called = false;
    PFObject::objectWithClassName(QStringLiteral("Story"))->saveInBackgroundWithBlock([&](bool, auto) {
        called = true;
    });
    QVERIFY(!called);
    QTRY_VERIFY(called);
}

void ParseRunnerTest::secretsNeverReachTheLog()
{
    QLoggingCategory::setFilterRules(QStringLiteral("vantrel.parse.*=true"));
    g_log.clear();
    const QtMessageHandler previous = qInstallMessageHandler(captureLog);
    m_server->enqueue(200, R"({"objectId":"u1","username":"ana","sessionToken":"r:TOKEN-1"})");
    m_server->enqueue(200, R"({"updatedAt":"2026-01-01T00:00:00.000Z"})");
    int code = -1;
    PFUser::logInWithUsernameInBackground(
        QStringLiteral("ana"), QStringLiteral("PASSWORD-1"),
        [&](const PFUserPtr &, const PFError *error) { code = error ? error->code() : 0; });
    QTRY_COMPARE(code, 0);
    PFUserPtr user = PFUser::currentUser();
    user->setPassword(QStringLiteral("PASSWORD-2"));
    bool saved = false;
    user->saveInBackgroundWithBlock([&](bool ok, const PFError *) { saved = ok; });
    QTRY_VERIFY(saved);
    qInstallMessageHandler(previous);
    QLoggingCategory::setFilterRules(QString());

    QVERIFY(g_log.size() >= 4); // the requests were logged...
    const QString all = g_log.join(u'\n');
    for (const char *secret : {"TOKEN-1", "PASSWORD-1", "PASSWORD-2"})
        QVERIFY2(!all.contains(QLatin1String(secret)), secret); // ...but not their secrets
    QCOMPARE(m_server->requests().at(1).headers.value("x-parse-session-token"), QByteArray("r:TOKEN-1"));
    QVERIFY(!user->hasKey(QStringLiteral("password")));
}

QTEST_MAIN(ParseRunnerTest)
#include "tst_parse_runner.moc"
