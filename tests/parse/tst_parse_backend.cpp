// The backend client against the real local backend: values, queries, users, files, cloud
// functions and the installation.
#include "ClientFixture.h"
#include "MemorySecureStorage.h"
#include "PFCloud.h"
#include "PFCurrentUserController.h"
#include "PFError.h"
#include "PFFileObject.h"
#include "PFInstallation.h"
#include "PFObject.h"
#include "PFQuery.h"
#include "PFUser.h"
#include "Parse.h"
#include "ParseCore.h"
#include "TestBackend.h"

#include <QDirIterator>
#include <QJsonArray>
#include <QTemporaryDir>
#include <QTest>
#include <QUuid>
#include <filesystem>

namespace {
// Every file the client wrote, with its contents.
QHash<QString, QByteArray> filesIn(const QString &directory)
{
    QHash<QString, QByteArray> files;
    QDirIterator it(directory, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile file(it.next());
        if (file.open(QIODevice::ReadOnly))
            files.insert(file.fileName(), file.readAll());
    }
    return files;
}
} // namespace

class ParseBackendTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { REQUIRE_BACKEND(); }

    void init()
    {
        m_data = std::make_unique<QTemporaryDir>();
        m_secrets = std::make_unique<MemorySecureStorage>();
        ClientFixture::start(ClientFixture::configuration(m_data->path(), m_secrets.get()));
    }

    void cleanup() { ClientFixture::stop(); }

    void everyValueTypeRoundTrips()
    {
        const PFUserPtr user = signUp();
        QVERIFY(user);
        QCOMPARE(PFUser::currentUser(), user);
        QVERIFY(user->isAuthenticated());

        const QDateTime located(QDate(2026, 5, 6), QTime(7, 8, 9, 123), Qt::UTC);
        const QDateTime dayOne(QDate(2026, 6, 1), QTime(0, 0), Qt::UTC);
        const QDateTime dayTwo(QDate(2026, 6, 2), QTime(0, 0), Qt::UTC);
        auto record = PFObject::objectWithClassName(QStringLiteral("Freelancer"));
        record->setObject(PFObjectPtr(user), QStringLiteral("user"));
        record->setObject(QStringLiteral("Zürich \"Nord\""), QStringLiteral("myTown"));
        record->setObject(QStringLiteral("to be removed"), QStringLiteral("myCountry"));
        record->setObject(true, QStringLiteral("isWhatsApp"));
        record->setObject(located, QStringLiteral("locationDate"));
        record->setObject(QVariant::fromValue(PFGeoPoint::geoPointWithLatitude(47.3769, 8.5417)),
                          QStringLiteral("lastKnownLocation"));
        record->setStringList({QStringLiteral("English"), QStringLiteral("Deutsch")}, QStringLiteral("languages"));
        record->setDateList({dayOne, dayTwo}, QStringLiteral("notAvailable"));
        record->setObject(QVariantList{1.5, 42.0, true, QStringLiteral("x")}, QStringLiteral("myEquipment"));
        record->setObject(QVariant::fromValue(nullptr), QStringLiteral("myWork"));
        int code = 0;
        QVERIFY2(ClientFixture::save(record, &code), qPrintable(QString::number(code)));
        QVERIFY(!record->objectId().isEmpty());
        QVERIFY(record->createdAt().isValid());
        QVERIFY(!record->isDirty());

        record->removeObjectForKey(QStringLiteral("myCountry"));
        QVERIFY(ClientFixture::save(record));
        QVERIFY(!record->hasKey(QStringLiteral("myCountry")));

        const QList<PFObjectPtr> found = ClientFixture::find(
            PFQuery(QStringLiteral("Freelancer")).whereKey(QStringLiteral("user"), PFObjectPtr(user)), &code);
        QCOMPARE(code, 0);
        QCOMPARE(found.size(), 1);
        const PFObjectPtr back = found.first();
        QCOMPARE(back->objectId(), record->objectId());
        QCOMPARE(back->createdAt(), record->createdAt());
        QCOMPARE(back->stringForKey(QStringLiteral("myTown")), QStringLiteral("Zürich \"Nord\""));
        QVERIFY(!back->hasKey(QStringLiteral("myCountry")));
        QCOMPARE(back->boolForKey(QStringLiteral("isWhatsApp")), true);
        QCOMPARE(back->dateForKey(QStringLiteral("locationDate")), located);
        QCOMPARE(back->geoPointForKey(QStringLiteral("lastKnownLocation")),
                 std::optional(PFGeoPoint::geoPointWithLatitude(47.3769, 8.5417)));
        QCOMPARE(back->stringListForKey(QStringLiteral("languages")), QStringList({"English", "Deutsch"}));
        QCOMPARE(back->dateListForKey(QStringLiteral("notAvailable")), QList<QDateTime>({dayOne, dayTwo}));
        QCOMPARE(back->listForKey(QStringLiteral("myEquipment")), QVariantList({1.5, 42.0, true, QStringLiteral("x")}));
        QVERIFY(!back->hasKey(QStringLiteral("myWork")) || back->objectForKey(QStringLiteral("myWork")).isNull());
        const PFObjectPtr owner = back->objectPointerForKey(QStringLiteral("user"));
        QVERIFY(owner);
        QCOMPARE(owner->objectId(), user->objectId());
        QVERIFY(std::dynamic_pointer_cast<PFUser>(owner));
    }

    void includeOrderAndDefaultLimit()
    {
        const PFUserPtr user = signUp();
        QVERIFY(user);
        QJsonArray requests;
        for (int i = 0; i < 105; ++i) {
            requests.append(QJsonObject{
                {QStringLiteral("method"), QStringLiteral("POST")},
                {QStringLiteral("path"), QStringLiteral("/classes/Freelancer")},
                {QStringLiteral("body"),
                 QJsonObject{
                     {QStringLiteral("myTown"), QStringLiteral("t%1").arg(i, 3, 10, QLatin1Char('0'))},
                     {QStringLiteral("user"), QJsonObject{{QStringLiteral("__type"), QStringLiteral("Pointer")},
                                                          {QStringLiteral("className"), QStringLiteral("_User")},
                                                          {QStringLiteral("objectId"), user->objectId()}}}}}});
        }
        const auto batch = TestBackend::instance().request("POST", QStringLiteral("/batch"),
                                                           {{QStringLiteral("requests"), requests}}, true);
        QCOMPARE(batch.status, 200);

        PFQuery query(QStringLiteral("Freelancer"));
        query.whereKey(QStringLiteral("user"), PFObjectPtr(user)).orderByDescending(QStringLiteral("myTown"));
        QList<PFObjectPtr> found = ClientFixture::find(query);
        QCOMPARE(found.size(), 100); // the server's default page
        QCOMPARE(found.first()->stringForKey(QStringLiteral("myTown")), QStringLiteral("t104"));
        QCOMPARE(found.last()->stringForKey(QStringLiteral("myTown")), QStringLiteral("t005"));
        const PFObjectPtr pointer = found.first()->objectPointerForKey(QStringLiteral("user"));
        QVERIFY(pointer && !pointer->isDataAvailable());

        query.setLimit(200);
        QCOMPARE(ClientFixture::find(query).size(), 105);
        query.setLimit(10).setSkip(100);
        found = ClientFixture::find(query);
        QCOMPARE(found.size(), 5);
        QCOMPARE(found.first()->stringForKey(QStringLiteral("myTown")), QStringLiteral("t004"));

        query.setLimit(1).setSkip(0).includeKey(QStringLiteral("user"));
        found = ClientFixture::find(query);
        QCOMPARE(found.size(), 1);
        const auto included =
            std::dynamic_pointer_cast<PFUser>(found.first()->objectPointerForKey(QStringLiteral("user")));
        QVERIFY(included && included->isDataAvailable());
        QCOMPARE(included->stringForKey(QStringLiteral("firstName")), QStringLiteral("Ana"));
    }

    void currentUserSurvivesRestart()
    {
        const PFUserPtr user = signUp();
        QVERIFY(user);
        const QString token = user->sessionToken();
        QVERIFY(!token.isEmpty());

        ClientFixture::start(ClientFixture::configuration(m_data->path(), m_secrets.get()));
        PFUserPtr remembered = PFUser::currentUser();
        QVERIFY(remembered);
        QVERIFY(remembered != user);
        QCOMPARE(remembered->objectId(), user->objectId());
        QCOMPARE(remembered->sessionToken(), token);
        QCOMPARE(remembered->stringForKey(QStringLiteral("firstName")), QStringLiteral("Ana"));
        // The session works: the user may change its own record.
        remembered->setObject(QStringLiteral("Bea"), QStringLiteral("firstName"));
        QVERIFY(ClientFixture::save(remembered));

        // The token lives in the secure storage only; the files are the user's alone.
        const auto files = filesIn(m_data->path());
        QVERIFY(!files.isEmpty());
        for (auto it = files.cbegin(); it != files.cend(); ++it) {
            QVERIFY2(!it.value().contains(token.toUtf8()), qPrintable(it.key()));
            QVERIFY2(!it.value().contains("Passw0rdX"), qPrintable(it.key()));
            QCOMPARE(std::filesystem::status(it.key().toStdString()).permissions(),
                     std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
        }

        ClientFixture::start(ClientFixture::configuration(m_data->path(), m_secrets.get()));
        QCOMPARE(PFUser::currentUser()->stringForKey(QStringLiteral("firstName")), QStringLiteral("Bea"));
        PFUser::logOut();
        QVERIFY(!PFUser::currentUser());
        QCOMPARE(m_secrets->size(), 0);
        // The session is ended on the server too.
        QTRY_COMPARE(TestBackend::instance()
                         .request("GET", QStringLiteral("/users/me"), {}, false, token)
                         .body.object()
                         .value(QStringLiteral("code"))
                         .toInt(),
                     209);
        ClientFixture::start(ClientFixture::configuration(m_data->path(), m_secrets.get()));
        QVERIFY(!PFUser::currentUser());
    }

    void withoutSecureStorageSessionIsNotKept()
    {
        ClientFixture::start(ClientFixture::configuration(m_data->path(), nullptr));
        const PFUserPtr user = signUp();
        QVERIFY(user);
        QCOMPARE(PFUser::currentUser(), user);
        const QString token = user->sessionToken();
        for (const QByteArray &contents : filesIn(m_data->path()))
            QVERIFY(!contents.contains(token.toUtf8()));
        ClientFixture::start(ClientFixture::configuration(m_data->path(), nullptr));
        QVERIFY(!PFUser::currentUser());

        // A store that refuses the secret is no better than none.
        m_secrets->setRefusing(true);
        ClientFixture::start(ClientFixture::configuration(m_data->path(), m_secrets.get()));
        QVERIFY(signUp());
        ClientFixture::start(ClientFixture::configuration(m_data->path(), m_secrets.get()));
        QVERIFY(!PFUser::currentUser());
    }

    void logInAndPasswordChange()
    {
        const PFUserPtr user = signUp();
        QVERIFY(user);
        PFUser::logOut();
        int code = 0;
        QVERIFY(!ClientFixture::logIn(user->username(), QStringLiteral("wrong"), &code));
        QCOMPARE(code, 101);
        QVERIFY(!PFUser::currentUser());
        const PFUserPtr back = ClientFixture::logIn(user->username(), QStringLiteral("Passw0rdX"), &code);
        QCOMPARE(code, 0);
        QVERIFY(back && back->isAuthenticated());
        QCOMPARE(back->objectId(), user->objectId());
        QCOMPARE(PFUser::currentUser(), back);
        QCOMPARE(back->stringForKey(QStringLiteral("firstName")), QStringLiteral("Ana"));

        // A new password is saved like any key; the session goes on, and the old password is gone.
        back->setPassword(QStringLiteral("N3wPassword"));
        QVERIFY2(ClientFixture::save(back, &code), qPrintable(QString::number(code)));
        QVERIFY(!back->hasKey(QStringLiteral("password")));
        back->setObject(QStringLiteral("Cleo"), QStringLiteral("firstName"));
        QVERIFY(ClientFixture::save(back));
        PFUser::logOut();
        QVERIFY(!ClientFixture::logIn(user->username(), QStringLiteral("Passw0rdX"), &code));
        QCOMPARE(code, 101);
        QVERIFY(ClientFixture::logIn(user->username(), QStringLiteral("N3wPassword")));
    }

    void fileUploadAndDownload()
    {
        const PFUserPtr user = signUp();
        QVERIFY(user);
        QByteArray picture;
        for (int i = 0; i < 70000; ++i)
            picture.append(char(i * 7));
        auto file = PFFileObject::fileObjectWithName(QStringLiteral("photo.jpg"), picture, "image/jpeg");
        user->setObject(file, QStringLiteral("profilePicture"));
        int code = 0;
        QVERIFY2(ClientFixture::save(user, &code), qPrintable(QString::number(code)));
        QVERIFY(!file->isDirty());
        QVERIFY(file->name().endsWith(QStringLiteral("photo.jpg")));

        const auto stored = std::make_shared<PFFileObject>(file->name(), file->url(), std::nullopt, QByteArray());
        QByteArray downloaded;
        bool done = false;
        stored->getDataInBackgroundWithBlock([&](const QByteArray &data, const PFError *error) {
            QVERIFY(!error);
            downloaded = data;
            done = true;
        });
        QTRY_VERIFY_WITH_TIMEOUT(done, 30000);
        QCOMPARE(downloaded, picture);

        // The saved user refers to the uploaded file.
        const auto me =
            TestBackend::instance().request("GET", QStringLiteral("/users/me"), {}, false, user->sessionToken());
        QCOMPARE(me.body.object()
                     .value(QStringLiteral("profilePicture"))
                     .toObject()
                     .value(QStringLiteral("name"))
                     .toString(),
                 file->name());
    }

    void cloudFunctionsReachTheOutbox()
    {
        QVERIFY(signUp());
        const QString subject = QStringLiteral("Subject %1").arg(QUuid::createUuid().toString(QUuid::Id128));
        const QVariantMap parameters{{QStringLiteral("toEmail"), QStringLiteral("editor@example.test")},
                                     {QStringLiteral("subject"), subject},
                                     {QStringLiteral("body"), QStringLiteral("Hello")}};
        std::optional<int> called;
        PFCloud::callFunctionInBackground(
            QStringLiteral("sendgridEmail"), parameters,
            [&](const QVariant &, const PFError *error) { called = error ? error->code() : 0; });
        QTRY_VERIFY_WITH_TIMEOUT(called.has_value(), 30000);
        QCOMPARE(*called, 0);
        QCOMPARE(TestBackend::readLines(TestBackend::instance().noticeOutbox()).filter(subject).size(), 1);

        // Bad parameters come back as the function's error.
        int code = 0;
        PFCloud::callFunctionInBackground(
            QStringLiteral("sendgridEmail"), {},
            [&](const QVariant &, const PFError *error) { code = error ? error->code() : -1; });
        QTRY_VERIFY(code != 0);
        QVERIFY(code > 0);
    }

    void installationIsSaved()
    {
        PFInstallationPtr installation = PFInstallation::currentInstallation();
        QVERIFY(installation);
        QCOMPARE(PFInstallation::currentInstallation(), installation);
        installation->setDeviceTokenFromData(QByteArray::fromHex("0aff10"));
        installation->setChannels({QStringLiteral("pro")});
        QVERIFY(ClientFixture::save(installation));
        const QString id = installation->installationId();
        QVERIFY(!QUuid::fromString(id).isNull());

        // After a restart the same installation id names the same record.
        ClientFixture::start(ClientFixture::configuration(m_data->path(), m_secrets.get()));
        installation = PFInstallation::currentInstallation();
        QCOMPARE(installation->installationId(), id);
        installation->setChannels({QStringLiteral("pro")});
        int code = 0;
        QVERIFY2(ClientFixture::save(installation, &code), qPrintable(QString::number(code)));

        const QString where =
            QString::fromUtf8(QUrl::toPercentEncoding(QStringLiteral(R"({"installationId":"%1"})").arg(id)));
        const auto found =
            TestBackend::instance().request("GET", QStringLiteral("/installations?where=") + where, {}, true);
        const QJsonArray results = found.body.object().value(QStringLiteral("results")).toArray();
        QCOMPARE(results.size(), 1);
        const QJsonObject stored = results.first().toObject();
        QCOMPARE(stored.value(QStringLiteral("deviceToken")).toString(), QStringLiteral("0aff10"));
        QCOMPARE(stored.value(QStringLiteral("channels")).toArray(), QJsonArray({QStringLiteral("pro")}));
        QCOMPARE(stored.value(QStringLiteral("deviceType")).toString(), QStringLiteral("linux"));
    }

    void passwordResetReachesTheMailOutbox()
    {
        const PFUserPtr user = signUp();
        QVERIFY(user);
        std::optional<bool> done;
        PFUser::requestPasswordResetForEmailInBackground(user->email(), [&](bool ok, const PFError *) { done = ok; });
        QTRY_VERIFY_WITH_TIMEOUT(done.has_value(), 30000);
        QVERIFY(*done);
        QTRY_VERIFY(!TestBackend::readLines(TestBackend::instance().mailOutbox()).filter(user->email()).isEmpty());
    }

private:
    static PFUserPtr signUp() { return ClientFixture::signUp(); }
    std::unique_ptr<QTemporaryDir> m_data;
    std::unique_ptr<MemorySecureStorage> m_secrets;
};

QTEST_MAIN(ParseBackendTest)
#include "tst_parse_backend.moc"
