// The record classes against the local backend: typed records come back from the server, the
// freelancer lookup finds the newest record, the live-stream lookup finds the stream.
#include "ClientFixture.h"
#include "FreelanceCategory.h"
#include "Freelancer.h"
#include "LiveStream.h"
#include "MemorySecureStorage.h"
#include "PFError.h"
#include "RecordClasses.h"
#include "RecordLookups.h"
#include "TestBackend.h"
#include "User.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>
#include <QUuid>

class ModelBackendTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        REQUIRE_BACKEND();
        PFSubclassRegistry::shared().clear();
        registerRecordClasses();
    }

    void init()
    {
        m_data = std::make_unique<QTemporaryDir>();
        ClientFixture::start(ClientFixture::configuration(m_data->path(), &m_secrets));
    }

    void cleanup() { ClientFixture::stop(); }

    void userWithTwoFreelancerRecordsGetsTheNewest()
    {
        const auto user = signUp();
        QVERIFY(user);
        const auto broadcast = category(QStringLiteral("Broadcast"));
        QVERIFY2(broadcast, "the seeded role Broadcast is missing");
        // The backend lets an account make one record itself; a newer one an administrator made.
        const auto older = makeFreelancer(broadcast, user);
        older->setMyTown(QStringLiteral("older"));
        QVERIFY(ClientFixture::save(older));
        QTest::qWait(5); // distinct creation times
        const QString newer = QStringLiteral(
            "{\"user\":{\"__type\":\"Pointer\",\"className\":\"_User\",\"objectId\":\"%1\"},\"myTown\":\"newer\","
            "\"freelanceCategory\":{\"__type\":\"Pointer\",\"className\":\"FreelanceCategory\",\"objectId\":\"%2\"},"
            "\"skills\":[]}");
        const QJsonObject record =
            QJsonDocument::fromJson(newer.arg(user->objectId(), broadcast->objectId()).toUtf8()).object();
        QCOMPARE(TestBackend::instance().request("POST", QStringLiteral("/classes/Freelancer"), record, true).status,
                 201);

        int code = 0;
        const QList<PFObjectPtr> found = ClientFixture::find(freelancerQuery(user), &code);
        QCOMPARE(code, 0);
        QCOMPARE(found.size(), 2);
        const auto newest = std::dynamic_pointer_cast<Freelancer>(found.first());
        QVERIFY(newest);
        QCOMPARE(newest->myTown(), QStringLiteral("newer"));
        QCOMPARE(newest->skills(), QStringList());
        QVERIFY(newest->hasKey(QStringLiteral("skills")));
        QVERIFY(newest->user() && newest->user()->isDataAvailable());
        QCOMPARE(newest->user()->firstName(), QStringLiteral("Kofi"));
        QCOMPARE(newest->freelanceCategory()->categoryTitle(), QStringLiteral("Broadcast"));
    }

    void liveStreamOfAFreelancer()
    {
        const auto user = signUp();
        QVERIFY(user);
        const auto freelancer = makeFreelancer(category(QStringLiteral("Citizen Journalist")), user);
        QVERIFY(ClientFixture::save(freelancer));
        // LiveStream is not registered: its records are made and read as plain objects.
        auto stream = PFObject::objectWithClassName(QStringLiteral("LiveStream"));
        stream->setObject(PFObjectPtr(freelancer), QStringLiteral("freelancer"));
        stream->setObject(QStringLiteral("Harbour"), QStringLiteral("title"));
        stream->setObject(true, QStringLiteral("isAvailable"));
        int code = 0;
        QVERIFY2(ClientFixture::save(stream, &code), qPrintable(QString::number(code)));

        const QList<PFObjectPtr> found = ClientFixture::find(liveStreamQuery(freelancer));
        QCOMPARE(found.size(), 1);
        const auto typed = LiveStream::fromObject(*found.first());
        QCOMPARE(typed->title(), QStringLiteral("Harbour"));
        QVERIFY(typed->isAvailable());
        QCOMPARE(typed->freelancer()->objectId(), freelancer->objectId());
        QVERIFY(typed->freelancer()->isDataAvailable());
    }

    void rememberedUserComesBackTyped()
    {
        const auto user = signUp();
        QVERIFY(user);
        ClientFixture::start(ClientFixture::configuration(m_data->path(), &m_secrets));
        const auto remembered = std::dynamic_pointer_cast<User>(PFUser::currentUser());
        QVERIFY(remembered);
        QCOMPARE(remembered->objectId(), user->objectId());
        QCOMPARE(remembered->firstName(), QStringLiteral("Kofi"));
        QVERIFY(remembered->isAuthorised());
        QCOMPARE(remembered->workEmail(), user->workEmail());
    }

private:
    std::shared_ptr<User> signUp()
    {
        auto user = std::make_shared<User>();
        const QString name =
            QStringLiteral("m%1@example.test").arg(QUuid::createUuid().toString(QUuid::Id128).left(12));
        user->setUsername(name);
        user->setEmail(name);
        user->setPassword(QStringLiteral("Passw0rdX"));
        user->setFirstName(QStringLiteral("Kofi"));
        user->setWorkEmail(name);
        user->setIsAuthorised(true);
        bool done = false;
        user->signUpInBackgroundWithBlock([&](bool ok, const PFError *) { done = ok; });
        return QTest::qWaitFor([&] { return done; }, 30000) ? user : nullptr;
    }

    std::shared_ptr<FreelanceCategory> category(const QString &title)
    {
        PFQuery query = FreelanceCategory::query();
        query.whereKey(QStringLiteral("categoryTitle"), title);
        const QList<PFObjectPtr> found = ClientFixture::find(query);
        return found.isEmpty() ? nullptr : std::dynamic_pointer_cast<FreelanceCategory>(found.first());
    }

    std::unique_ptr<QTemporaryDir> m_data;
    MemorySecureStorage m_secrets;
};

QTEST_MAIN(ModelBackendTest)
#include "tst_model_backend.moc"
