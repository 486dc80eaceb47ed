// saveEventually: saves made while the server cannot be reached are kept, survive a restart,
// land once and in order when the server answers again, and go only with the session of the
// user who made them.
#include "BackendProbe.h"
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

#include <QJsonArray>
#include <QJsonDocument>
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

QList<QJsonObject> ownFreelancers(const PFUserPtr &user)
{
    return BackendProbe::masterFind(QStringLiteral("Freelancer"),
                                    {{QStringLiteral("user"), BackendProbe::userPointer(user->objectId())}});
}

int pending()
{
    return Parse::core()->eventuallyQueue().pendingCount();
}

QStringList g_log;
void captureLog(QtMsgType, const QMessageLogContext &, const QString &message)
{
    g_log.append(message);
}

PFObjectPtr freelancerOf(const PFUserPtr &user, const QString &town)
{
    auto freelancer = PFObject::objectWithClassName(QStringLiteral("Freelancer"));
    freelancer->setObject(PFObjectPtr(user), QStringLiteral("user"));
    freelancer->setObject(town, QStringLiteral("myTown"));
    return freelancer;
}
} // namespace

class ParseEventuallyTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { REQUIRE_BACKEND(); }

    void init()
    {
        m_data = std::make_unique<QTemporaryDir>();
        m_secrets = std::make_unique<MemorySecureStorage>();
        restart();
    }

    void cleanup() { ClientFixture::stop(); }

    void savesMadeOfflineLandOnceInOrderAfterRestart()
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

        const QList<QJsonObject> records = ownFreelancers(user);
        QCOMPARE(records.size(), 1);
        const QJsonObject &record = records.first();
        QCOMPARE(record.value(QStringLiteral("myTown")).toString(), QStringLiteral("second"));
        QCOMPARE(record.value(QStringLiteral("myCountry")).toString(), QStringLiteral("Ruritania"));
        const QString freelancerId = record.value(QStringLiteral("objectId")).toString();
        const QList<QJsonObject> streams = BackendProbe::masterFind(
            QStringLiteral("LiveStream"),
            {{QStringLiteral("freelancer"), BackendProbe::pointer(QStringLiteral("Freelancer"), freelancerId)}});
        QCOMPARE(streams.size(), 1);
        QCOMPARE(streams.first().value(QStringLiteral("title")).toString(), QStringLiteral("Live from the square"));
    }

    void createWhoseReplyWasLostIsFoundAgainByItsRequestId()
    {
        const PFUserPtr user = ClientFixture::signUp();
        QVERIFY(user);
        restart(unreachableOrigin());
        auto freelancer = freelancerOf(PFUser::currentUser(), QStringLiteral("once"));
        freelancer->saveEventually();
        auto stream = PFObject::objectWithClassName(QStringLiteral("LiveStream"));
        stream->setObject(freelancer, QStringLiteral("freelancer"));
        stream->setObject(QStringLiteral("Quayside"), QStringLiteral("title"));
        stream->saveEventually();
        QTRY_COMPARE(pending(), 2);
        const QJsonObject entry =
            QJsonDocument::fromJson(
                Parse::core()->dataStore().read(PFEventuallyQueue::fileName()).value_or(QByteArray()))
                .object()
                .value(QStringLiteral("entries"))
                .toArray()
                .first()
                .toObject();
        ClientFixture::stop();

        // The server received the create and applied it, but its answer never arrived.
        const TestBackend::Reply applied = BackendProbe::send(
            "POST", QStringLiteral("/classes/Freelancer"), entry.value(QStringLiteral("body")).toObject(),
            user->sessionToken(),
            {{QByteArrayLiteral("X-Parse-Request-Id"), entry.value(QStringLiteral("requestId")).toString().toUtf8()}});
        QVERIFY2(applied.status == 201, applied.raw.constData());

        // Sent again, the create gets its first answer: one record, and the save that points to it lands.
        restart();
        QTRY_COMPARE_WITH_TIMEOUT(pending(), 0, 30000);
        const QList<QJsonObject> records = ownFreelancers(user);
        QCOMPARE(records.size(), 1);
        const QList<QJsonObject> streams = BackendProbe::masterFind(
            QStringLiteral("LiveStream"),
            {{QStringLiteral("freelancer"),
              BackendProbe::pointer(QStringLiteral("Freelancer"), records.first().value(QStringLiteral("objectId")).toString())}});
        QCOMPARE(streams.size(), 1);
    }

    void savesGoOnlyWithTheSessionOfTheirUser()
    {
        // Ana saves while offline and signs out; Ben signs in on the same device.
        const PFUserPtr ana = ClientFixture::signUp();
        QVERIFY(ana);
        restart(unreachableOrigin());
        freelancerOf(PFUser::currentUser(), QStringLiteral("Ana's town"))->saveEventually();
        PFUser::logOut();
        restart();
        const PFUserPtr ben = ClientFixture::signUp();
        QVERIFY(ben);
        freelancerOf(ben, QStringLiteral("Ben's town"))->saveEventually();
        QTRY_COMPARE_WITH_TIMEOUT(ownFreelancers(ben).size(), 1, 30000);
        QCOMPARE(pending(), 1); // Ana's save waits, and was never sent with Ben's session
        QVERIFY(ownFreelancers(ana).isEmpty());

        // At her next sign-in her save goes, with her session.
        PFUser::logOut();
        QVERIFY(ClientFixture::logIn(ana->username(), QStringLiteral("Passw0rdX")));
        QTRY_COMPARE_WITH_TIMEOUT(pending(), 0, 30000);
        const QList<QJsonObject> anas = ownFreelancers(ana);
        QCOMPARE(anas.size(), 1);
        QCOMPARE(anas.first().value(QStringLiteral("myTown")).toString(), QStringLiteral("Ana's town"));

        // A save whose session the server has ended meanwhile is kept for her next sign-in, not dropped.
        const QString endedSession = PFUser::currentUser()->sessionToken();
        restart(unreachableOrigin());
        auto record = PFObject::objectWithoutDataWithClassName(QStringLiteral("Freelancer"),
                                                               anas.first().value(QStringLiteral("objectId")).toString());
        record->setObject(QStringLiteral("later"), QStringLiteral("myTown"));
        record->saveEventually();
        QCOMPARE(TestBackend::instance().request("POST", QStringLiteral("/logout"), {}, false, endedSession).status,
                 200);
        restart();
        QTest::qWait(500);
        QCOMPARE(pending(), 1);
        QVERIFY(ClientFixture::logIn(ana->username(), QStringLiteral("Passw0rdX")));
        QTRY_COMPARE_WITH_TIMEOUT(pending(), 0, 30000);
        QCOMPARE(ownFreelancers(ana).first().value(QStringLiteral("myTown")).toString(), QStringLiteral("later"));
    }

    void queueRetriesUntilTheServerAnswers()
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

    void answersThatEndASave()
    {
        CannedHttpServer server;
        restart(server.origin());
        server.enqueue(400, R"({"code":159,"error":"Duplicate request"})");
        server.enqueue(400, R"({"code":142,"error":"refused by a trigger"})");
        server.enqueue(400, R"({"code":142,"error":"refused by a trigger"})");
        QList<std::pair<bool, int>> outcomes;
        g_log.clear();
        const QtMessageHandler previous = qInstallMessageHandler(captureLog);
        for (int i = 0; i < 2; ++i) {
            auto message =
                PFObject::objectWithoutDataWithClassName(QStringLiteral("Message"), QStringLiteral("m%1").arg(i));
            message->setObject(true, QStringLiteral("hasBeenRead"));
            message->saveEventually([&](bool ok, const PFError *error) {
                outcomes.append({ok, error ? error->code() : 0});
            });
        }
        QTRY_COMPARE(outcomes.size(), 2);
        qInstallMessageHandler(previous);
        // A refused save is never dropped in silence: the log names it and the server's answer.
        QVERIFY2(g_log.join(u'\n').contains(QLatin1String("refused and dropped: Message m1 142 refused by a trigger")),
                 qPrintable(g_log.join(u'\n')));
        QCOMPARE(outcomes.at(0), std::pair(true, 0));    // applied before: nothing left to do
        QCOMPARE(outcomes.at(1), std::pair(false, 142)); // refused: dropped, not retried forever

        // A record whose create was refused is not created by a later save of it either.
        auto fresh = PFObject::objectWithClassName(QStringLiteral("Message"));
        for (const char *title : {"first", "second"}) {
            fresh->setObject(QString::fromLatin1(title), QStringLiteral("title"));
            fresh->saveEventually([&](bool ok, const PFError *error) { outcomes.append({ok, error ? error->code() : 0}); });
            QTRY_COMPARE(pending(), 0);
        }
        QCOMPARE(outcomes.mid(2), (QList<std::pair<bool, int>>{{false, 142}, {false, int(PFError::InvalidPointer)}}));
        QCOMPARE(server.requests().size(), 3);
        QCOMPARE(server.requests().at(0).method, QByteArray("PUT"));
        QCOMPARE(server.requests().at(0).target, QByteArray("/classes/Message/m0"));
    }

private:
    void restart(const QString &server = {})
    {
        ClientFixture::start(ClientFixture::configuration(m_data->path(), m_secrets.get(), server));
    }

    std::unique_ptr<QTemporaryDir> m_data;
    std::unique_ptr<MemorySecureStorage> m_secrets;
};

QTEST_MAIN(ParseEventuallyTest)
#include "tst_parse_eventually.moc"
