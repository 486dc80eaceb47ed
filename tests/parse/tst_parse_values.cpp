// Values, records and local files of the backend client, without a server.
#include "PFDataStore.h"
#include "PFDecoder.h"
#include "PFEncoder.h"
#include "PFFileObject.h"
#include "PFJsonReader.h"
#include "PFObject.h"
#include "PFQuery.h"
#include "PFUser.h"
#include "ParseClientConfiguration.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <filesystem>

namespace {
class Story : public PFObject {
public:
    Story() : PFObject(parseClassName()) {}
    static QString parseClassName() { return QStringLiteral("Story"); }
};

QVariant json(const char *text)
{
    PFJsonReader reader;
    return reader.read(text);
}
} // namespace

class ParseValuesTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void jsonReaderAgreesWithQtOnWellFormedText_data();
    void jsonReaderAgreesWithQtOnWellFormedText();
    void jsonReaderRefusesMalformedText_data();
    void jsonReaderRefusesMalformedText();
    void jsonReaderLimitsAndExactIntegers();
    void initTestCase();
    void roundTrip_data();
    void roundTrip();
    void pointerComesBackAsRegisteredSubclass();
    void malformedValues_data();
    void malformedValues();
    void pointerToUnsavedRecordIsRefused();
    void endpointKeepsServerPath_data();
    void endpointKeepsServerPath();
    void queryParameters();
    void genericInitialiserOfRegisteredSubclassStopsProgram();
    void dataStoreFilesAreUserOnly();
};

void ParseValuesTest::initTestCase()
{
    PFObject::registerSubclass<Story>();
}

void ParseValuesTest::roundTrip_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QByteArray>("encoded");
    const QDateTime date(QDate(2026, 3, 4), QTime(5, 6, 7, 89), Qt::UTC);
    QTest::newRow("string") << QVariant(QStringLiteral("Größe \"x\"")) << QByteArray(R"("Größe \"x\"")");
    QTest::newRow("number") << QVariant(2.5) << QByteArray("2.5");
    QTest::newRow("bool") << QVariant(true) << QByteArray("true");
    QTest::newRow("date") << QVariant(date) << QByteArray(R"({"__type":"Date","iso":"2026-03-04T05:06:07.089Z"})");
    QTest::newRow("geo point") << QVariant::fromValue(PFGeoPoint::geoPointWithLatitude(51.5, -0.12))
                               << QByteArray(R"({"__type":"GeoPoint","latitude":51.5,"longitude":-0.12})");
    QTest::newRow("null") << QVariant::fromValue(nullptr) << QByteArray("null");
    QTest::newRow("list of dates") << QVariant(QVariantList{date, QStringLiteral("x"), 1.0})
                                   << QByteArray(R"([{"__type":"Date","iso":"2026-03-04T05:06:07.089Z"},"x",1])");
    QTest::newRow("map") << QVariant(QVariantMap{{QStringLiteral("a"), QVariantList{}}}) << QByteArray(R"({"a":[]})");
}

void ParseValuesTest::roundTrip()
{
    QFETCH(QVariant, value);
    QFETCH(QByteArray, encoded);
    PFEncoder encoder;
    const QJsonValue out = encoder.encode(value);
    QVERIFY(!encoder.error());
    QCOMPARE(QJsonDocument(QJsonArray{out}).toJson(QJsonDocument::Compact), "[" + encoded + "]");
    PFDecoder decoder;
    const QVariant back = decoder.decode(PFJsonReader().read(QJsonDocument(QJsonArray{out}).toJson()).toList().value(0));
    QVERIFY(!decoder.error());
    if (value.metaType() == QMetaType::fromType<PFGeoPoint>())
        QCOMPARE(back.value<PFGeoPoint>(), value.value<PFGeoPoint>());
    else
        QCOMPARE(back, value);
}

void ParseValuesTest::pointerComesBackAsRegisteredSubclass()
{
    PFDecoder decoder;
    const QVariant pointer = decoder.decode(json(R"({"__type":"Pointer","className":"Story","objectId":"s1"})"));
    const auto story = std::dynamic_pointer_cast<Story>(pointer.value<PFObjectPtr>());
    QVERIFY(story);
    QCOMPARE(story->objectId(), QStringLiteral("s1"));
    QVERIFY(!story->isDataAvailable());

    const QVariant full = decoder.decode(json(R"({"__type":"Object","className":"_User","objectId":"u1",
        "createdAt":"2026-01-02T03:04:05.006Z","firstName":"Ana","sessionToken":"r:secret",
        "profilePicture":{"__type":"File","name":"p.jpg","url":"http://h/p.jpg"}})"));
    QVERIFY(!decoder.error());
    const auto user = std::dynamic_pointer_cast<PFUser>(full.value<PFObjectPtr>());
    QVERIFY(user);
    QVERIFY(user->isDataAvailable());
    QCOMPARE(user->stringForKey(QStringLiteral("firstName")), QStringLiteral("Ana"));
    QCOMPARE(user->createdAt(), QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5, 6), Qt::UTC));
    QVERIFY(!user->hasKey(QStringLiteral("sessionToken")));
    QCOMPARE(user->fileForKey(QStringLiteral("profilePicture"))->url(), QUrl(QStringLiteral("http://h/p.jpg")));
}

void ParseValuesTest::malformedValues_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("date without iso") << QByteArray(R"({"__type":"Date"})");
    QTest::newRow("date not a date") << QByteArray(R"({"__type":"Date","iso":"yesterday"})");
    QTest::newRow("geo point as text") << QByteArray(R"({"__type":"GeoPoint","latitude":"1","longitude":2})");
    QTest::newRow("pointer without id") << QByteArray(R"({"__type":"Pointer","className":"Story"})");
    QTest::newRow("pointer id a number") << QByteArray(R"({"__type":"Pointer","className":"Story","objectId":7})");
    QTest::newRow("object without id") << QByteArray(R"({"__type":"Object","className":"Story"})");
    QTest::newRow("file without name") << QByteArray(R"({"__type":"File","url":"http://h/x"})");
    QTest::newRow("nested in a list") << QByteArray(R"([1,{"__type":"Date","iso":5}])");
}

void ParseValuesTest::malformedValues()
{
    QFETCH(QByteArray, reply);
    PFDecoder decoder;
    (void)decoder.decode(json(reply.constData()));
    QVERIFY(decoder.error());
    QCOMPARE(decoder.error()->code(), int(PFError::InvalidJSON));
    QVERIFY(!decoder.error()->localizedDescription().isEmpty());
}

void ParseValuesTest::pointerToUnsavedRecordIsRefused()
{
    auto unsaved = std::make_shared<Story>();
    PFEncoder refusing;
    (void)refusing.encode(QVariant::fromValue(PFObjectPtr(unsaved)));
    QVERIFY(refusing.error());

    unsaved->mutableState().localId = QStringLiteral("local-1");
    PFEncoder eventual(PFEncoder::UnsavedPointers::UseLocalId);
    const QJsonValue pointer = eventual.encode(QVariant::fromValue(PFObjectPtr(unsaved)));
    QVERIFY(!eventual.error());
    QCOMPARE(pointer[QLatin1String("localId")].toString(), QStringLiteral("local-1"));

    PFQuery query(QStringLiteral("Story"));
    query.whereKey(QStringLiteral("parent"), PFObjectPtr(std::make_shared<Story>()));
    QVERIFY(query.error());
}

void ParseValuesTest::endpointKeepsServerPath_data()
{
    QTest::addColumn<QString>("server");
    QTest::addColumn<QString>("expected");
    QTest::newRow("bare origin") << "http://127.0.0.1:1337"
                                 << "http://127.0.0.1:1337/classes/Message";
    QTest::newRow("origin with slash") << "https://api.example.org/"
                                       << "https://api.example.org/classes/Message";
    QTest::newRow("with path") << "https://example.org/parse"
                               << "https://example.org/parse/classes/Message";
    QTest::newRow("with path and slash") << "https://example.org/parse/"
                                         << "https://example.org/parse/classes/Message";
}

void ParseValuesTest::endpointKeepsServerPath()
{
    QFETCH(QString, server);
    QFETCH(QString, expected);
    ParseClientConfiguration configuration;
    configuration.server = server;
    QCOMPARE(configuration.endpoint(QStringLiteral("/classes/Message")).toString(), expected);
}

void ParseValuesTest::queryParameters()
{
    PFQuery query(QStringLiteral("Story"));
    query.whereKey(QStringLiteral("title"), QStringLiteral("a+b & c=d"));
    ParseClientConfiguration configuration;
    configuration.server = QStringLiteral("http://h");
    const QUrl url = configuration.endpoint(QStringLiteral("/classes/Story"), query.parameters());
    // What a server reads back after decoding the URL: '+' and '&' inside JSON stay themselves.
    const QUrlQuery sent(url.query(QUrl::FullyEncoded));
    QCOMPARE(QUrl::fromPercentEncoding(sent.queryItemValue(QStringLiteral("where"), QUrl::FullyEncoded).toUtf8()),
             QStringLiteral(R"({"title":"a+b & c=d"})"));
    QVERIFY(!url.query(QUrl::FullyEncoded).contains(u'+'));
}

void ParseValuesTest::genericInitialiserOfRegisteredSubclassStopsProgram()
{
    if (qEnvironmentVariableIsSet("VANTREL_CHILD_GENERIC_INIT")) {
        (void)PFObject::objectWithClassName(Story::parseClassName());
        return; // not reached
    }
    // A class without a subclass is made by the generic initialiser.
    QCOMPARE(PFObject::objectWithClassName(QStringLiteral("LiveStream"))->className(), QStringLiteral("LiveStream"));

    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("VANTREL_CHILD_GENERIC_INIT"), QStringLiteral("1"));
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("genericInitialiserOfRegisteredSubclassStopsProgram")});
    QVERIFY(child.waitForFinished(30000));
    QVERIFY(child.exitStatus() == QProcess::CrashExit || child.exitCode() != 0);
    QVERIFY2(child.readAll().contains("registered subclass"), "the child stopped for another reason");
}

void ParseValuesTest::dataStoreFilesAreUserOnly()
{
    QTemporaryDir temporary;
    const QString directory = temporary.filePath(QStringLiteral("data"));
    PFDataStore store(directory);
    QVERIFY(store.write(QStringLiteral("a.json"), "one"));
    QVERIFY(store.write(QStringLiteral("a.json"), "two"));
    QCOMPARE(store.read(QStringLiteral("a.json")).value_or(QByteArray()), QByteArray("two"));
    using std::filesystem::perms;
    QCOMPARE(std::filesystem::status(store.pathOf(QStringLiteral("a.json")).toStdString()).permissions(),
             perms::owner_read | perms::owner_write);
    QCOMPARE(std::filesystem::status(directory.toStdString()).permissions(), perms::owner_all);
    QVERIFY(!store.read(QStringLiteral("absent")));
    QVERIFY(store.remove(QStringLiteral("a.json")));
    QVERIFY(!QFileInfo::exists(store.pathOf(QStringLiteral("a.json"))));
}

void ParseValuesTest::jsonReaderAgreesWithQtOnWellFormedText_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty object") << QByteArray("{}");
    QTest::newRow("nested") << QByteArray(R"({"a":[1,2,{"b":null}],"c":{"d":[]},"e":true,"f":false})");
    QTest::newRow("numbers") << QByteArray(R"([0,-0,12.5,-3e2,1E-3,123456789012,0.1])");
    QTest::newRow("escapes") << QByteArray(R"(["a\"b\\c\/d\b\f\n\r\t","\u00e9\u20ac"])");
    QTest::newRow("surrogate pair") << QByteArray(R"(["\ud83d\udcf7 camera"])");
    QTest::newRow("utf-8 as is") << QByteArray("[\"S\xc3\xa3o Paulo \xe2\x82\xac\"]");
    QTest::newRow("white space") << QByteArray(" \n\t{ \"k\" : [ 1 , 2 ] } \r\n");
    QTest::newRow("repeated keys in rows") << QByteArray(R"({"results":[{"title":"a"},{"title":"b"}]})");
}

void ParseValuesTest::jsonReaderAgreesWithQtOnWellFormedText()
{
    QFETCH(QByteArray, text);
    PFJsonReader reader;
    const QVariant ours = reader.read(text);
    QVERIFY2(ours.isValid(), qPrintable(reader.error()));
    QJsonParseError error{};
    const QJsonDocument qt = QJsonDocument::fromJson(text, &error);
    QCOMPARE(error.error, QJsonParseError::NoError);
    const QVariant theirs = qt.isArray() ? QVariant(qt.array().toVariantList()) : QVariant(qt.object().toVariantMap());
    // Compare as JSON text, so number types (double here, integers there) do not matter.
    QCOMPARE(QJsonDocument::fromVariant(ours).toJson(QJsonDocument::Compact),
             QJsonDocument::fromVariant(theirs).toJson(QJsonDocument::Compact));
}

void ParseValuesTest::jsonReaderRefusesMalformedText_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("truncated object") << QByteArray(R"({"results":[{"title":"a")");
    QTest::newRow("truncated string") << QByteArray(R"(["abc)");
    QTest::newRow("html error page") << QByteArray("<html><body>502 Bad Gateway</body></html>");
    QTest::newRow("trailing comma") << QByteArray("[1,2,]");
    QTest::newRow("leading zero") << QByteArray("[01]");
    QTest::newRow("bare dot") << QByteArray("[1.]");
    QTest::newRow("single quotes") << QByteArray("{'a':1}");
    QTest::newRow("unquoted key") << QByteArray("{a:1}");
    QTest::newRow("raw control character") << QByteArray("[\"a\nb\"]");
    QTest::newRow("bad escape") << QByteArray(R"(["\x41"])");
    QTest::newRow("lone low surrogate") << QByteArray(R"(["\udc00"])");
    QTest::newRow("unpaired high surrogate") << QByteArray(R"(["\ud83d!"])");
    QTest::newRow("text after the value") << QByteArray("{} {}");
    QTest::newRow("misspelt literal") << QByteArray("[tru]");
    QTest::newRow("too deep") << QByteArray(100000, '[');
    QTest::newRow("one level too deep") << QByteArray(PFJsonReader::kMaxDepth + 1, '[') +
                                               QByteArray(PFJsonReader::kMaxDepth + 1, ']');
    QTest::newRow("number too large") << QByteArray("[1e999]");
    // Bytes that are not UTF-8 are refused, not replaced: a mended text saved back would alter the record.
    QTest::newRow("stray continuation byte") << QByteArray("[\"a\x80" "b\"]");
    QTest::newRow("cut-off sequence") << QByteArray("[\"caf\xc3\"]");
    QTest::newRow("cut-off sequence before an escape") << QByteArray("[\"caf\xc3\\n\"]");
    QTest::newRow("overlong slash") << QByteArray("[\"\xc0\xaf\"]");
    QTest::newRow("encoded surrogate") << QByteArray("[\"\xed\xa0\x80\"]");
    QTest::newRow("beyond U+10FFFF") << QByteArray("[\"\xf4\x90\x80\x80\"]");
    QTest::newRow("Latin-1 in a key") << QByteArray("{\"K\xf6ln\":1}");
}

void ParseValuesTest::jsonReaderRefusesMalformedText()
{
    QFETCH(QByteArray, text);
    PFJsonReader reader;
    QVERIFY(!reader.read(text).isValid());
    QVERIFY2(reader.error().contains(QLatin1String(" at byte ")), qPrintable(reader.error()));
}

void ParseValuesTest::jsonReaderLimitsAndExactIntegers()
{
    PFJsonReader reader;
    const QByteArray deepest =
        QByteArray(PFJsonReader::kMaxDepth, '[') + QByteArray(PFJsonReader::kMaxDepth, ']');
    QVERIFY2(reader.read(deepest).isValid(), qPrintable(reader.error()));
    QVERIFY(reader.read("[\"\xf4\x8f\xbf\xbf \xe2\x82\xac \xc3\xa9\"]").isValid()); // the largest code point

    // Whole numbers beyond 2^53 keep their exact value, through the decoder and back out.
    const QVariantList numbers = reader.read("[9007199254740993,-9007199254740993,9223372036854775807,"
                                             "9007199254740992,2.5,1e3]")
                                     .toList();
    PFDecoder decoder;
    const QVariantList decoded = decoder.decode(numbers).toList();
    QCOMPARE(decoded.at(0), QVariant(qint64(9007199254740993)));
    QCOMPARE(decoded.at(1), QVariant(qint64(-9007199254740993)));
    QCOMPARE(decoded.at(2), QVariant(qint64(9223372036854775807LL)));
    QCOMPARE(decoded.at(3).typeId(), QMetaType::Double); // exact as a double: records hold doubles
    QCOMPARE(decoded.at(4), QVariant(2.5));
    QCOMPARE(decoded.at(5), QVariant(1000.0));
    PFEncoder encoder;
    QCOMPARE(QJsonDocument(encoder.encode(decoded).toArray()).toJson(QJsonDocument::Compact),
             QByteArray("[9007199254740993,-9007199254740993,9223372036854775807,9007199254740992,2.5,1000]"));
}

QTEST_MAIN(ParseValuesTest)
#include "tst_parse_values.moc"
