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
#include "PFSubclassRegistry.h"
#include "Parse.h"
#include "ParseCore.h"
#include "TestBackend.h"

#include <QDirIterator>
#include <QJsonArray>
#include <QTemporaryDir>
#include <QTest>
#include <QUuid>
#include <filesystem>

using namespace Qt::StringLiterals;

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
        auto record = PFObject::objectWithClassName(u"Freelancer"_s);
        record->setObject(PFObjectPtr(user), u"user"_s);
        record->setObject(u"Zürich \"Nord\""_s, u"myTown"_s);
        record->setObject(u"to be removed"_s, u"myCountry"_s);
        record->setObject(true, u"isWhatsApp"_s);
        record->setObject(located, u"locationDate"_s);
        record->setObject(QVariant::fromValue(PFGeoPoint::geoPointWithLatitude(47.3769, 8.5417)),
                          u"lastKnownLocation"_s);
        record->setStringList({u"English"_s, u"Deutsch"_s}, u"languages"_s);
        record->setDateList({dayOne, dayTwo}, u"notAvailable"_s);
        record->setObject(QVariantList{u"Sony FX9"_s, u"x"_s}, u"myEquipment"_s);
        record->setObject(QVariant::fromValue(nullptr), u"myWork"_s);
        int code = 0;
        QVERIFY2(ClientFixture::save(record, &code), qPrintable(QString::number(code)));
        QVERIFY(!record->objectId().isEmpty());
        QVERIFY(record->createdAt().isValid());
        QVERIFY(!record->isDirty());

        record->removeObjectForKey(u"myCountry"_s);
        QVERIFY(ClientFixture::save(record));
        QVERIFY(!record->hasKey(u"myCountry"_s));

        const QList<PFObjectPtr> found =
            ClientFixture::find(PFQuery(u"Freelancer"_s).whereKey(u"user"_s, PFObjectPtr(user)), &code);
        QCOMPARE(code, 0);
        QCOMPARE(found.size(), 1);
        const PFObjectPtr back = found.first();
        QCOMPARE(back->objectId(), record->objectId());
        QCOMPARE(back->createdAt(), record->createdAt());
        QCOMPARE(back->stringForKey(u"myTown"_s), u"Zürich \"Nord\""_s);
        QVERIFY(!back->hasKey(u"myCountry"_s));
        QCOMPARE(back->boolForKey(u"isWhatsApp"_s), true);
        QCOMPARE(back->dateForKey(u"locationDate"_s), located);
        QCOMPARE(back->geoPointForKey(u"lastKnownLocation"_s),
                 std::optional(PFGeoPoint::geoPointWithLatitude(47.3769, 8.5417)));
        QCOMPARE(back->stringListForKey(u"languages"_s), QStringList({"English", "Deutsch"}));
        QCOMPARE(back->dateListForKey(u"notAvailable"_s), QList<QDateTime>({dayOne, dayTwo}));
        QCOMPARE(back->listForKey(u"myEquipment"_s), QVariantList({u"Sony FX9"_s, u"x"_s}));
        QVERIFY(!back->hasKey(u"myWork"_s) || back->objectForKey(u"myWork"_s).isNull());
        const PFObjectPtr owner = back->objectPointerForKey(u"user"_s);
        QVERIFY(owner);
        QCOMPARE(owner->objectId(), user->objectId());
        QVERIFY(std::dynamic_pointer_cast<PFUser>(owner));
    }

    void queryOrdersPagesAndIncludes()
    {
        const PFUserPtr user = signUp();
        QVERIFY(user);
        // An account makes one Freelancer record itself; the other two an administrator makes.
        auto own = PFObject::objectWithClassName(u"Freelancer"_s);
        own->setObject(PFObjectPtr(user), u"user"_s);
        own->setObject(u"b"_s, u"myTown"_s);
        QVERIFY(ClientFixture::save(own));
        for (const QString &town : {u"c"_s, u"a"_s}) {
            const QJsonObject record{
                {u"user"_s, QJsonObject{{u"__type"_s, u"Pointer"_s}, {u"className"_s, u"_User"_s},
                                        {u"objectId"_s, user->objectId()}}},
                {u"myTown"_s, town}};
            QCOMPARE(TestBackend::instance().request("POST", u"/classes/Freelancer"_s, record, true).status, 201);
        }
        PFQuery query(u"Freelancer"_s);
        query.whereKey(u"user"_s, PFObjectPtr(user)).orderByDescending(u"myTown"_s).setLimit(2).setSkip(1);
        QList<PFObjectPtr> found = ClientFixture::find(query);
        QCOMPARE(found.size(), 2);
        QCOMPARE(found.first()->stringForKey(u"myTown"_s), u"b"_s);
        QVERIFY(!found.first()->objectPointerForKey(u"user"_s)->isDataAvailable());

        found = ClientFixture::find(query.setLimit(1).includeKey(u"user"_s));
        const auto included = std::dynamic_pointer_cast<PFUser>(found.first()->objectPointerForKey(u"user"_s));
        QVERIFY(included && included->isDataAvailable());
        QCOMPARE(included->stringForKey(u"firstName"_s), u"Ana"_s);
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
        QCOMPARE(remembered->stringForKey(u"firstName"_s), u"Ana"_s);
        // The session works: the user may change its own record.
        remembered->setObject(u"Bea"_s, u"firstName"_s);
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

        // An app registers its own user class right after it initialises the client, while
        // the remembered user is still being read: that user comes back as the app's class.
        struct AppUser : PFUser {};
        PFSubclassRegistry::shared().clear();
        Parse::setCore(nullptr);
        Parse::initializeWithConfiguration(ClientFixture::configuration(m_data->path(), m_secrets.get()));
        PFSubclassRegistry::shared().registerSubclass(PFUser::parseClassName(), [] { return std::make_shared<AppUser>(); });
        QVERIFY(QTest::qWaitFor([] { return Parse::core()->currentUserController().isLoaded(); }, 30000));
        QVERIFY(std::dynamic_pointer_cast<AppUser>(PFUser::currentUser()));
        PFSubclassRegistry::shared().clear();
        QCOMPARE(PFUser::currentUser()->stringForKey(u"firstName"_s), u"Bea"_s);
        PFUser::logOut();
        QVERIFY(!PFUser::currentUser());
        QCOMPARE(m_secrets->size(), 0);
        // The session is ended on the server too.
        QTRY_COMPARE(TestBackend::instance()
                         .request("GET", u"/users/me"_s, {}, false, token)
                         .body.object()
                         .value(u"code"_s)
                         .toInt(),
                     209);
        ClientFixture::start(ClientFixture::configuration(m_data->path(), m_secrets.get()));
        QVERIFY(!PFUser::currentUser());
    }

    void sessionKeptOnlyWhereTheStoreHoldsIt()
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

        // A store that refuses the secret is no better than none: the session lasts this run.
        m_secrets->setStatus(PFSecureStorage::Status::Locked);
        ClientFixture::start(ClientFixture::configuration(m_data->path(), m_secrets.get()));
        QVERIFY(signUp());
        QVERIFY(PFUser::currentUser());
        ClientFixture::start(ClientFixture::configuration(m_data->path(), m_secrets.get()));
        QVERIFY(!PFUser::currentUser());

        // A remembered user whose store is locked at the next start is not forgotten: the
        // sign-in is asked for now, and the start after the keyring is unlocked has them back.
        m_secrets->setStatus(PFSecureStorage::Status::Ok);
        const PFUserPtr kept = signUp();
        QVERIFY(kept);
        QTRY_VERIFY(QFile::exists(Parse::core()->dataStore().pathOf(PFCurrentUserController::fileName())));
        m_secrets->setStatus(PFSecureStorage::Status::Locked);
        ClientFixture::start(ClientFixture::configuration(m_data->path(), m_secrets.get()));
        QVERIFY(!PFUser::currentUser());
        std::optional<int> code;
        PFUser::getCurrentUserInBackground([&](const PFUserPtr &, const PFError *error) { code = error ? error->code() : 0; });
        QTRY_COMPARE(code, std::optional<int>(PFError::SecureStorageUnavailable));
        m_secrets->setStatus(PFSecureStorage::Status::Ok);
        ClientFixture::start(ClientFixture::configuration(m_data->path(), m_secrets.get()));
        QVERIFY(PFUser::currentUser());
        QCOMPARE(PFUser::currentUser()->objectId(), kept->objectId());
    }

    void logInAndPasswordChange()
    {
        const PFUserPtr user = signUp();
        QVERIFY(user);
        PFUser::logOut();
        int code = 0;
        QVERIFY(!ClientFixture::logIn(user->username(), u"wrong"_s, &code));
        QCOMPARE(code, 101);
        QVERIFY(!PFUser::currentUser());
        const PFUserPtr back = ClientFixture::logIn(user->username(), u"Passw0rdX"_s, &code);
        QCOMPARE(code, 0);
        QVERIFY(back && back->isAuthenticated());
        QCOMPARE(back->objectId(), user->objectId());
        QCOMPARE(PFUser::currentUser(), back);
        QCOMPARE(back->stringForKey(u"firstName"_s), u"Ana"_s);

        // A new password is saved like any key; the session goes on, and the old password is gone.
        back->setPassword(u"N3wPassword"_s);
        QVERIFY2(ClientFixture::save(back, &code), qPrintable(QString::number(code)));
        QVERIFY(!back->hasKey(u"password"_s));
        back->setObject(u"Cleo"_s, u"firstName"_s);
        QVERIFY(ClientFixture::save(back));
        PFUser::logOut();
        QVERIFY(!ClientFixture::logIn(user->username(), u"Passw0rdX"_s, &code));
        QCOMPARE(code, 101);
        QVERIFY(ClientFixture::logIn(user->username(), u"N3wPassword"_s));
    }

    void fileUploadAndDownload()
    {
        const PFUserPtr user = signUp();
        QVERIFY(user);
        QByteArray picture = QByteArray::fromHex("ffd8ffe0"); // the backend takes pictures only
        for (int i = 0; i < 70000; ++i)
            picture.append(char(i * 7));
        auto file = PFFileObject::fileObjectWithName(u"photo.jpg"_s, picture, "image/jpeg");
        user->setObject(file, u"profilePicture"_s);
        int code = 0;
        QVERIFY2(ClientFixture::save(user, &code), qPrintable(QString::number(code)));
        QVERIFY(!file->isDirty());
        QVERIFY(file->name().endsWith(u"photo.jpg"_s));

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
        const auto me = TestBackend::instance().request("GET", u"/users/me"_s, {}, false, user->sessionToken());
        QCOMPARE(me.body.object().value(u"profilePicture"_s).toObject().value(u"name"_s).toString(), file->name());

        // Without a stated type the bytes name it, and the backend stores a picture as one.
        auto unnamed = PFFileObject::fileObjectWithData(QByteArray::fromHex("ffd8ffe000104a46494600") + picture);
        QCOMPARE(unnamed->contentType(), "image/jpeg");
        user->setObject(unnamed, u"profilePicture"_s);
        QVERIFY(ClientFixture::save(user));
        QVERIFY2(unnamed->name().endsWith(u".jpeg"_s) || unnamed->name().endsWith(u".jpg"_s),
                 qPrintable(unnamed->name()));
    }

    void cloudFunctionsReachTheOutbox()
    {
        const PFUserPtr user = signUp();
        QVERIFY(user);
        // The one notice a new account may send: the request to delete it, to the administrator.
        const QString body =
            u"There is a new request from Ana  to delete their profile.  Be sure to delete the user "
            u"and freelancer objects. \n\nPlease delete any messages where to & from user == %1\n\n"
            u"The user's email address they used to register was %2"_s.arg(user->objectId(), user->username());
        const QVariantMap parameters{{u"toEmail"_s, u"editor@example.test"_s},
                                     {u"subject"_s, u"Delete Freelancer Profile - Vantrel Message"_s},
                                     {u"body"_s, body}};
        std::optional<int> called;
        PFCloud::callFunctionInBackground(u"sendgridEmail"_s, parameters, [&](const QVariant &, const PFError *error) {
            called = error ? error->code() : 0;
        });
        QTRY_VERIFY_WITH_TIMEOUT(called.has_value(), 30000);
        QCOMPARE(*called, 0);
        QCOMPARE(TestBackend::readLines(TestBackend::instance().noticeOutbox()).filter(user->objectId()).size(), 1);

        // Bad parameters come back as the function's error.
        int code = 0;
        PFCloud::callFunctionInBackground(
            u"sendgridEmail"_s, {}, [&](const QVariant &, const PFError *error) { code = error ? error->code() : -1; });
        QTRY_VERIFY(code != 0);
        QVERIFY(code > 0);
    }

    void installationIsSaved()
    {
        PFInstallationPtr installation = PFInstallation::currentInstallation();
        QVERIFY(installation);
        QCOMPARE(PFInstallation::currentInstallation(), installation);
        installation->setDeviceTokenFromData(QByteArray::fromHex("0aff10"));
        installation->setChannels({u"pro"_s});
        QVERIFY(ClientFixture::save(installation));
        const QString id = installation->installationId();
        QVERIFY(!QUuid::fromString(id).isNull());

        // After a restart the same installation id names the same record.
        ClientFixture::start(ClientFixture::configuration(m_data->path(), m_secrets.get()));
        installation = PFInstallation::currentInstallation();
        QCOMPARE(installation->installationId(), id);
        installation->setChannels({u"pro"_s});
        int code = 0;
        QVERIFY2(ClientFixture::save(installation, &code), qPrintable(QString::number(code)));

        const QString where =
            QString::fromUtf8(QUrl::toPercentEncoding(QStringLiteral(R"({"installationId":"%1"})").arg(id)));
        const auto found = TestBackend::instance().request("GET", u"/installations?where="_s + where, {}, true);
        const QJsonArray results = found.body.object().value(u"results"_s).toArray();
        QCOMPARE(results.size(), 1);
        const QJsonObject stored = results.first().toObject();
        QCOMPARE(stored.value(u"deviceToken"_s).toString(), u"0aff10"_s);
        QCOMPARE(stored.value(u"channels"_s).toArray(), QJsonArray({u"pro"_s}));
        QCOMPARE(stored.value(u"deviceType"_s).toString(), u"linux"_s);
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
