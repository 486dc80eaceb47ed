// saveEventually: saves made while the server cannot be reached are kept, survive a restart,
// and land once and in order when the server answers again.
#include "CannedHttpServer.h"
#include "ClientFixture.h"
#include "MemorySecureStorage.h"
#include "PFError.h"
#include "PFEventuallyQueue.h"
#include "PFObject.h"
#include "PFUser.h"
#include "Parse.h"
#include "ParseCore.h"
#include "TestBackend.h"

#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>
#include <filesystem>

namespace {
QString unreachableOrigin()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return QStringLiteral("http://127.0.0.1:%1").arg(probe.serverPort()); // closed when probe goes
}

QJsonObject pointer(const QString &className, const QString &objectId)
{
    return {{QStringLiteral("__type"), QStringLiteral("Pointer")},
            {QStringLiteral("className"), className},
            {QStringLiteral("objectId"), objectId}};
}

QJsonArray findAsMaster(const QString &className, const QJsonObject &where)
{
    const QString encoded = QString::fromUtf8(
        QUrl::toPercentEncoding(QString::fromUtf8(QJsonDocument(where).toJson(QJsonDocument::Compact))));
    return TestBackend::instance()
        .request("GET", QStringLiteral("/classes/%1?where=%2").arg(className, encoded), {}, true)
        .body.object()
        .value(QStringLiteral("results"))
        .toArray();
}

int pending()
{
    return Parse::core()->eventuallyQueue().pendingCount();
}
} // namespace

class ParseEventuallyTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void savesMadeOfflineLandOnceInOrderAfterRestart();
    void saveAppliedBeforeItsReplyWasLostIsNotRepeated();
    void queueRetriesUntilTheServerAnswers();
    void duplicateRequestCountsAsApplied();

private:
    void restart(const QString &server = {});
    std::unique_ptr<QTemporaryDir> m_data;
    std::unique_ptr<MemorySecureStorage> m_secrets;
};

void ParseEventuallyTest::initTestCase()
{
    REQUIRE_BACKEND();
}

void ParseEventuallyTest::init()
{
    m_data = std::make_unique<QTemporaryDir>();
    m_secrets = std::make_unique<MemorySecureStorage>();
    restart();
}

void ParseEventuallyTest::cleanup()
{
    ClientFixture::stop();
}

void ParseEventuallyTest::restart(const QString &server)
{
    ClientFixture::start(ClientFixture::configuration(m_data->path(), m_secrets.get(), server));
}

void ParseEventuallyTest::savesMadeOfflineLandOnceInOrderAfterRestart()
{
    const PFUserPtr user = ClientFixture::signUp();
    QVERIFY(user);
    restart(unreachableOrigin());
    QVERIFY(PFUser::currentUser());

    int landed = 0;
    auto freelancer = PFObject::objectWithClassName(QStringLiteral("Freelancer"));
    freelancer->setObject(PFObjectPtr(PFUser::currentUser()), QStringLiteral("user"));
    freelancer->setObject(QStringLiteral("first"), QStringLiteral("myTown"));
    freelancer->saveEventually([&](bool, const PFError *) { ++landed; });
    freelancer->setObject(QStringLiteral("second"), QStringLiteral("myTown"));
    freelancer->setObject(QStringLiteral("Ruritania"), QStringLiteral("myCountry"));
    freelancer->saveEventually([&](bool, const PFError *) { ++landed; });
    // A record that refers to the one not yet created.
    auto stream = PFObject::objectWithClassName(QStringLiteral("LiveStream"));
    stream->setObject(freelancer, QStringLiteral("freelancer"));
    stream->setObject(QStringLiteral("Live from the square"), QStringLiteral("title"));
    stream->saveEventually([&](bool, const PFError *) { ++landed; });
    QCOMPARE(freelancer->stringForKey(QStringLiteral("myTown")), QStringLiteral("second"));

    QTest::qWait(1000); // several failed attempts
    QCOMPARE(pending(), 3);
    QCOMPARE(landed, 0);
    const QString journal = Parse::core()->dataStore().pathOf(PFEventuallyQueue::fileName());
    QCOMPARE(std::filesystem::status(journal.toStdString()).permissions(),
             std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    QFile journalFile(journal);
    QVERIFY(journalFile.open(QIODevice::ReadOnly));
    QVERIFY(!journalFile.readAll().contains(user->sessionToken().toUtf8()));

    restart(); // the server is back, the program started again
    QCOMPARE(pending(), 3);
    QTRY_COMPARE_WITH_TIMEOUT(pending(), 0, 30000);
    QVERIFY(!QFile::exists(journal));

    const QJsonArray records = findAsMaster(
        QStringLiteral("Freelancer"), {{QStringLiteral("user"), pointer(QStringLiteral("_User"), user->objectId())}});
    QCOMPARE(records.size(), 1);
    const QJsonObject record = records.first().toObject();
    QCOMPARE(record.value(QStringLiteral("myTown")).toString(), QStringLiteral("second"));
    QCOMPARE(record.value(QStringLiteral("myCountry")).toString(), QStringLiteral("Ruritania"));
    const QString freelancerId = record.value(QStringLiteral("objectId")).toString();
    const QJsonArray streams =
        findAsMaster(QStringLiteral("LiveStream"),
                     {{QStringLiteral("freelancer"), pointer(QStringLiteral("Freelancer"), freelancerId)}});
    QCOMPARE(streams.size(), 1);
    QCOMPARE(streams.first()[QStringLiteral("title")].toString(), QStringLiteral("Live from the square"));
}

void ParseEventuallyTest::saveAppliedBeforeItsReplyWasLostIsNotRepeated()
{
    const PFUserPtr user = ClientFixture::signUp();
    QVERIFY(user);
    restart(unreachableOrigin());
    auto freelancer = PFObject::objectWithClassName(QStringLiteral("Freelancer"));
    freelancer->setObject(PFObjectPtr(PFUser::currentUser()), QStringLiteral("user"));
    freelancer->setObject(QStringLiteral("once"), QStringLiteral("myTown"));
    freelancer->saveEventually();
    QTRY_VERIFY(QFile::exists(Parse::core()->dataStore().pathOf(PFEventuallyQueue::fileName())));
    const QJsonObject entry =
        QJsonDocument::fromJson(Parse::core()->dataStore().read(PFEventuallyQueue::fileName()).value_or(QByteArray()))
            .object()
            .value(QStringLiteral("entries"))
            .toArray()
            .first()
            .toObject();
    ClientFixture::stop();

    // The server received the save and applied it, but its answer never arrived.
    QNetworkAccessManager network;
    QUrl url = TestBackend::instance().serverUrl();
    url.setPath(url.path() + QStringLiteral("/classes/Freelancer"));
    QNetworkRequest request(url);
    request.setRawHeader("X-Parse-Application-Id", TestBackend::instance().applicationId().toUtf8());
    request.setRawHeader("X-Parse-Client-Key", TestBackend::instance().clientKey().toUtf8());
    request.setRawHeader("X-Parse-Session-Token", user->sessionToken().toUtf8());
    request.setRawHeader("X-Parse-Request-Id", entry.value(QStringLiteral("requestId")).toString().toUtf8());
    request.setHeader(QNetworkRequest::ContentTypeHeader, "application/json");
    QNetworkReply *reply =
        network.post(request, QJsonDocument(entry.value(QStringLiteral("body")).toObject()).toJson());
    QTRY_VERIFY(reply->isFinished());
    QCOMPARE(reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), 201);
    reply->deleteLater();

    restart();
    QTRY_COMPARE_WITH_TIMEOUT(pending(), 0, 30000);
    const QJsonArray records = findAsMaster(
        QStringLiteral("Freelancer"), {{QStringLiteral("user"), pointer(QStringLiteral("_User"), user->objectId())}});
    QCOMPARE(records.size(), 1);
}

void ParseEventuallyTest::queueRetriesUntilTheServerAnswers()
{
    CannedHttpServer server;
    restart(server.origin());
    // Each attempt is tried twice by the runner; the queue then waits and tries again.
    for (int i = 0; i < 4; ++i)
        server.enqueue(503, "<html>maintenance</html>", "text/html");
    server.enqueue(201, R"({"objectId":"m1","createdAt":"2026-01-01T00:00:00.000Z"})");
    bool landed = false;
    auto message = PFObject::objectWithClassName(QStringLiteral("Message"));
    message->setObject(QStringLiteral("Hello"), QStringLiteral("title"));
    message->saveEventually([&](bool ok, const PFError *) { landed = ok; });
    QTRY_VERIFY_WITH_TIMEOUT(landed, 20000);
    QCOMPARE(message->objectId(), QStringLiteral("m1"));
    QCOMPARE(pending(), 0);
    QCOMPARE(server.requests().size(), 5);
    for (const auto &request : server.requests())
        QCOMPARE(request.headers.value("x-parse-request-id"),
                 server.requests().first().headers.value("x-parse-request-id"));
}

void ParseEventuallyTest::duplicateRequestCountsAsApplied()
{
    CannedHttpServer server;
    restart(server.origin());
    server.enqueue(400, R"({"code":159,"error":"Duplicate request"})");
    server.enqueue(400, R"({"code":142,"error":"refused by a trigger"})");
    QList<std::pair<bool, int>> outcomes;
    for (int i = 0; i < 2; ++i) {
        auto message =
            PFObject::objectWithoutDataWithClassName(QStringLiteral("Message"), QStringLiteral("m%1").arg(i));
        message->setObject(true, QStringLiteral("hasBeenRead"));
        message->saveEventually([&](bool ok, const PFError *error) {
            outcomes.append({ok, error ? error->code() : 0});
        });
    }
    QTRY_COMPARE(outcomes.size(), 2);
    QCOMPARE(outcomes.at(0), std::pair(true, 0));    // applied before: nothing left to do
    QCOMPARE(outcomes.at(1), std::pair(false, 142)); // refused: dropped, not retried forever
    QCOMPARE(pending(), 0);
    QCOMPARE(server.requests().size(), 2);
    QCOMPARE(server.requests().at(0).method, QByteArray("PUT"));
    QCOMPARE(server.requests().at(0).target, QByteArray("/classes/Message/m0"));
}

QTEST_MAIN(ParseEventuallyTest)
#include "tst_parse_eventually.moc"
