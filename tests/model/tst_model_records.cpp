// The record classes without a server: new freelancer records, skill lists, registration,
// the classes' standard queries, and typed reads of what the server sends.
#include "FreelanceCategory.h"
#include "FreelanceSubCategory.h"
#include "Freelancer.h"
#include "LiveStream.h"
#include "Message.h"
#include "NewsHotSpot.h"
#include "PFDecoder.h"
#include "RecordClasses.h"
#include "RecordLookups.h"
#include "TrendingSubject.h"
#include "User.h"

#include <QJsonDocument>
#include <QTest>

Q_DECLARE_METATYPE(PFQuery)

namespace {
QString whereOf(const PFQuery &query)
{
    return QString::fromUtf8(QJsonDocument(query.constraints()).toJson(QJsonDocument::Compact));
}
} // namespace

class ModelRecordsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void makeFreelancerStartsEmpty_data();
    void makeFreelancerStartsEmpty();
    void registrationOrderLeavesOutLiveStream();
    void standardQueries_data();
    void standardQueries();
    void lookupsConstrainTheOwner();
    void decodedRecordsAreTyped();
};

void ModelRecordsTest::initTestCase()
{
    PFSubclassRegistry::shared().clear();
    registerRecordClasses();
}

void ModelRecordsTest::makeFreelancerStartsEmpty_data()
{
    QTest::addColumn<QString>("title");
    QTest::newRow("Multi-Skilled") << "Multi-Skilled";
    QTest::newRow("multi-skilled") << "multi-skilled";
    QTest::newRow("mUlTi-SkIlLeD") << "mUlTi-SkIlLeD";
    QTest::newRow("Broadcast") << "Broadcast";
    QTest::newRow("no title") << QString();
}

void ModelRecordsTest::makeFreelancerStartsEmpty()
{
    QFETCH(QString, title);
    auto category = std::make_shared<FreelanceCategory>();
    category->setObjectId(QStringLiteral("c1"));
    if (!title.isNull())
        category->setCategoryTitle(title);
    auto user = std::make_shared<User>();
    user->setObjectId(QStringLiteral("u1"));

    const auto freelancer = makeFreelancer(category, user);
    QCOMPARE(freelancer->user(), user);
    QCOMPARE(freelancer->freelanceCategory(), category);
    // Present and empty, so the saved record holds empty lists.
    for (const char *key : {"skills", "notAvailable", "languages"}) {
        QVERIFY2(freelancer->hasKey(QLatin1String(key)), key);
        QVERIFY2(freelancer->listForKey(QLatin1String(key)).isEmpty(), key);
    }
    QVERIFY(freelancer->objectId().isEmpty());
    QStringList dirty = freelancer->dirtyKeys();
    dirty.sort();
    QCOMPARE(dirty, QStringList({"freelanceCategory", "languages", "notAvailable", "skills", "user"}));
}

void ModelRecordsTest::registrationOrderLeavesOutLiveStream()
{
    QCOMPARE(PFSubclassRegistry::shared().registeredClassNames(),
             QStringList({"_User", "NewsHotSpot", "Freelancer", "FreelanceCategory", "FreelanceSubCategory", "Message",
                          "TrendingSubject"}));
    QVERIFY(!PFSubclassRegistry::shared().isRegistered(LiveStream::parseClassName()));
    // Its records therefore stay plain, and the generic initialiser may make one.
    const PFObjectPtr stream = PFObject::objectWithClassName(QStringLiteral("LiveStream"));
    QVERIFY(!std::dynamic_pointer_cast<LiveStream>(stream));
}

void ModelRecordsTest::standardQueries_data()
{
    QTest::addColumn<PFQuery>("query");
    QTest::addColumn<QString>("className");
    QTest::addColumn<QStringList>("includes");
    QTest::newRow("User") << User::query() << "_User" << QStringList();
    QTest::newRow("Freelancer") << Freelancer::query() << "Freelancer"
                                << QStringList({"freelanceCategory", "freelanceSubCategory", "user"});
    QTest::newRow("LiveStream (on Freelancer)") << LiveStream::query() << "Freelancer" << QStringList({"freelancer"});
    QTest::newRow("FreelanceCategory") << FreelanceCategory::query() << "FreelanceCategory" << QStringList();
    QTest::newRow("FreelanceSubCategory") << FreelanceSubCategory::query() << "FreelanceSubCategory" << QStringList();
    QTest::newRow("Message") << Message::query() << "Message" << QStringList();
    QTest::newRow("NewsHotSpot") << NewsHotSpot::query() << "NewsHotSpot" << QStringList();
    QTest::newRow("TrendingSubject") << TrendingSubject::query() << "TrendingSubject" << QStringList();
}

void ModelRecordsTest::standardQueries()
{
    QFETCH(PFQuery, query);
    QFETCH(QString, className);
    QFETCH(QStringList, includes);
    QCOMPARE(query.parseClassName(), className);
    QCOMPARE(query.includedKeys(), includes);
    QCOMPARE(query.order(), QStringLiteral("-createdAt"));
    QVERIFY(query.constraints().isEmpty());
    QCOMPARE(query.limit(), -1);
}

void ModelRecordsTest::lookupsConstrainTheOwner()
{
    auto user = std::make_shared<User>();
    user->setObjectId(QStringLiteral("u7"));
    const PFQuery own = freelancerQuery(user);
    QCOMPARE(own.parseClassName(), QStringLiteral("Freelancer"));
    QCOMPARE(own.includedKeys(), QStringList({"freelanceCategory", "freelanceSubCategory", "user"}));
    QCOMPARE(own.order(), QStringLiteral("-createdAt"));
    QCOMPARE(whereOf(own), QStringLiteral(R"({"user":{"__type":"Pointer","className":"_User","objectId":"u7"}})"));

    auto freelancer = std::make_shared<Freelancer>();
    freelancer->setObjectId(QStringLiteral("f7"));
    const PFQuery stream = liveStreamQuery(freelancer);
    QCOMPARE(stream.parseClassName(), QStringLiteral("LiveStream"));
    QCOMPARE(stream.includedKeys(), QStringList({"freelancer"}));
    QCOMPARE(stream.order(), QStringLiteral("-createdAt"));
    QCOMPARE(whereOf(stream),
             QStringLiteral(R"({"freelancer":{"__type":"Pointer","className":"Freelancer","objectId":"f7"}})"));
}

void ModelRecordsTest::decodedRecordsAreTyped()
{
    const QJsonObject reply = QJsonDocument::fromJson(R"({
        "objectId":"f1","createdAt":"2026-02-03T04:05:06.007Z","updatedAt":"2026-02-03T04:05:06.007Z",
        "user":{"__type":"Object","className":"_User","objectId":"u1","firstName":"Ana","isAuthorised":true,
                "profilePicture":{"__type":"File","name":"p.jpg","url":"http://h/p.jpg"}},
        "freelanceCategory":{"__type":"Object","className":"FreelanceCategory","objectId":"c1","categoryTitle":"Print"},
        "lastKnownLocation":{"__type":"GeoPoint","latitude":-33.9,"longitude":18.4},
        "notAvailable":[{"__type":"Date","iso":"2026-07-01T00:00:00.000Z"}],
        "skills":["Writer"],"linkedINURL":"https://in.example/ana","isWhatsApp":false,
        "locationDate":{"__type":"Date","iso":"2026-02-03T00:00:00.000Z"}})")
                                  .object();
    PFDecoder decoder;
    const auto freelancer =
        std::dynamic_pointer_cast<Freelancer>(decoder.decodeObject(QStringLiteral("Freelancer"), reply.toVariantMap()));
    QVERIFY(!decoder.error());
    QVERIFY(freelancer);
    QVERIFY(freelancer->user());
    QCOMPARE(freelancer->user()->firstName(), QStringLiteral("Ana"));
    QVERIFY(freelancer->user()->isAuthorised());
    QCOMPARE(freelancer->user()->profilePicture()->name(), QStringLiteral("p.jpg"));
    QCOMPARE(freelancer->freelanceCategory()->categoryTitle(), QStringLiteral("Print"));
    QCOMPARE(freelancer->lastKnownLocation()->latitude(), -33.9);
    QCOMPARE(freelancer->notAvailable(), QList<QDateTime>({QDateTime(QDate(2026, 7, 1), QTime(0, 0), Qt::UTC)}));
    QCOMPARE(freelancer->skills(), QStringList({"Writer"}));
    QCOMPARE(freelancer->linkedINURL(), QStringLiteral("https://in.example/ana"));
    QCOMPARE(freelancer->locationDate(), QDateTime(QDate(2026, 2, 3), QTime(0, 0), Qt::UTC));
    // Keys the record does not hold read as empty.
    QCOMPARE(freelancer->myTown(), QString());
    QCOMPARE(freelancer->languages(), QStringList());
    QVERIFY(!freelancer->hasKey(QStringLiteral("myTown")));
}

QTEST_MAIN(ModelRecordsTest)
#include "tst_model_records.moc"
