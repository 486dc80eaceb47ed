// Each case tries a forbidden thing as another user (or as no user) against the running
// backend and checks both the refusal and that the stored record did not change.

#include "BackendProbe.h"
#include "TestBackend.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>
#include <QUrlQuery>
#include <QUuid>

using namespace Qt::StringLiterals;

using namespace BackendProbe;

namespace {

const int kOperationForbidden = 119;
const int kObjectNotFound = 101;

QString whereQuery(const QJsonObject &where, const QString &extra = {})
{
    QUrlQuery q;
    q.addQueryItem(u"where"_s, QString::fromUtf8(QJsonDocument(where).toJson(QJsonDocument::Compact)));
    QString s = q.toString(QUrl::FullyEncoded);
    if (!extra.isEmpty())
        s += u'&' + extra;
    return s;
}

} // namespace

class ServerPermissionsTest : public QObject {
    Q_OBJECT

private:
    const TestBackend &backend() const { return TestBackend::instance(); }

    TestBackend::User newUser(const QJsonObject &fields = {})
    {
        const TestBackend::User u = backend().signUpUser(fields);
        if (u.sessionToken.isEmpty())
            qFatal("sign-up failed");
        return u;
    }

    QString categoryId(const QString &title)
    {
        const QList<QJsonObject> found = masterFind(u"FreelanceCategory"_s, {{u"categoryTitle"_s, title}});
        return found.isEmpty() ? QString() : found.first().value(u"objectId"_s).toString();
    }

    QString createFreelancer(const TestBackend::User &owner)
    {
        const TestBackend::Reply r =
            backend().request("POST", u"/classes/Freelancer"_s,
                              {{u"user"_s, userPointer(owner.objectId)},
                               {u"freelanceCategory"_s, pointer(u"FreelanceCategory"_s, categoryId(u"Broadcast"_s))},
                               {u"myTown"_s, u"Leeds"_s}},
                              false, owner.sessionToken);
        return r.status == 201 ? r.body.object().value(u"objectId"_s).toString() : QString();
    }

    QString sendMessage(const TestBackend::User &from, const TestBackend::User &to, const QString &title)
    {
        const TestBackend::Reply r = backend().request("POST", u"/classes/Message"_s,
                                                       {{u"title"_s, title},
                                                        {u"messageBody"_s, u"Are you free on Thursday?"_s},
                                                        {u"from"_s, userPointer(from.objectId)},
                                                        {u"to"_s, userPointer(to.objectId)},
                                                        {u"hasBeenRead"_s, false}},
                                                       false, from.sessionToken);
        return r.status == 201 ? r.body.object().value(u"objectId"_s).toString() : QString();
    }

private Q_SLOTS:
    void initTestCase() { REQUIRE_BACKEND(); }

    // --- users -------------------------------------------------------------------------

    void signUpFlags_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<bool>("value");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("registration authorises itself") << "isAuthorised" << true << true;
        QTest::newRow("no password change requested") << "doesPasswordRequireToBeChanged" << false << true;
        QTest::newRow("cannot demand a password change") << "doesPasswordRequireToBeChanged" << true << false;
        QTest::newRow("cannot register as newsroom") << "isNewsDeskUser" << true << false;
        QTest::newRow("cannot register as supervisor") << "isEditorSupervisor" << true << false;
    }
    void signUpFlags()
    {
        QFETCH(QString, key);
        QFETCH(bool, value);
        QFETCH(bool, accepted);
        const QString email = u"s%1@example.test"_s.arg(uniqueTag());
        const TestBackend::Reply r = backend().request(
            "POST", u"/users"_s,
            {{u"username"_s, email}, {u"email"_s, email}, {u"password"_s, u"Passw0rdAb"_s}, {key, value}});
        QCOMPARE(r.status == 201, accepted);
        if (!accepted) {
            QCOMPARE(errorCode(r), kOperationForbidden);
            QVERIFY(masterFind(u"_User"_s, {{u"email"_s, email}}).isEmpty());
        }
    }

    void ownerFlagChanges_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<bool>("stored");
        QTest::addColumn<bool>("requested");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("isAuthorised lowered") << "isAuthorised" << true << false << true;
        QTest::newRow("isAuthorised raised") << "isAuthorised" << false << true << false;
        QTest::newRow("password change cleared") << "doesPasswordRequireToBeChanged" << true << false << true;
        QTest::newRow("password change demanded") << "doesPasswordRequireToBeChanged" << false << true << false;
        QTest::newRow("deletion requested") << "shouldDeleteAccount" << false << true << true;
        QTest::newRow("deletion withdrawn") << "shouldDeleteAccount" << true << false << false;
        QTest::newRow("newsroom raised") << "isNewsDeskUser" << false << true << false;
        QTest::newRow("newsroom dropped") << "isNewsDeskUser" << true << false << false;
        QTest::newRow("supervisor raised") << "isEditorSupervisor" << false << true << false;
    }
    void ownerFlagChanges()
    {
        QFETCH(QString, key);
        QFETCH(bool, stored);
        QFETCH(bool, requested);
        QFETCH(bool, accepted);
        const TestBackend::User u = newUser();
        const QString path = u"/users/"_s + u.objectId;
        QCOMPARE(backend().request("PUT", path, {{key, stored}}, true).status, 200);

        const TestBackend::Reply r = backend().request("PUT", path, {{key, requested}}, false, u.sessionToken);
        QCOMPARE(r.status == 200, accepted);
        if (!accepted)
            QCOMPARE(errorCode(r), kOperationForbidden);
        QCOMPARE(masterGet(u"_User"_s, u.objectId).value(key).toBool(), accepted ? requested : stored);
    }

    void otherUsersCannotWriteAUser()
    {
        const TestBackend::User owner = newUser({{u"firstName"_s, u"Ada"_s}});
        const TestBackend::User other = newUser();
        const TestBackend::Reply r = backend().request("PUT", u"/users/"_s + owner.objectId,
                                                       {{u"firstName"_s, u"Mallory"_s}}, false, other.sessionToken);
        QVERIFY(r.status >= 400);
        QCOMPARE(masterGet(u"_User"_s, owner.objectId).value(u"firstName"_s).toString(), u"Ada"_s);
        // Nor can a client widen its own record's ACL to let others write it.
        QJsonObject openAcl{{u"*"_s, QJsonObject{{u"read"_s, true}, {u"write"_s, true}}}};
        QCOMPARE(backend()
                     .request("PUT", u"/users/"_s + owner.objectId, {{u"ACL"_s, openAcl}}, false, owner.sessionToken)
                     .status,
                 200);
        const QJsonObject acl = masterGet(u"_User"_s, owner.objectId).value(u"ACL"_s).toObject();
        QVERIFY(!acl.value(u"*"_s).toObject().value(u"write"_s).toBool());
    }

    void profileFieldsVisibility()
    {
        // Other signed-in users see the profile keys; protectedFields hides the private ones.
        const QJsonObject profile{{u"firstName"_s, u"Ada"_s},         {u"lastName"_s, u"Byron"_s},
                                  {u"position"_s, u"Camera"_s},       {u"workEmail"_s, u"ada@work.example"_s},
                                  {u"mobileCountryCode"_s, u"+44"_s}, {u"mobileTelephoneNumber"_s, u"7700900"_s},
                                  {u"officeCountryCode"_s, u"+44"_s}, {u"officeTelephoneNumber"_s, u"1614960"_s}};
        const QStringList hidden = QStringLiteral("username email deviceToken isAuthorised "
                                                  "doesPasswordRequireToBeChanged isNewsDeskUser shouldDeleteAccount")
                                       .split(u' ');
        QJsonObject fields = profile;
        fields.insert(u"deviceToken"_s, u"0AFF"_s);
        fields.insert(u"isAuthorised"_s, true);
        fields.insert(u"doesPasswordRequireToBeChanged"_s, false);
        const TestBackend::User owner = newUser(fields);
        QCOMPARE(backend()
                     .request("PUT", u"/users/"_s + owner.objectId,
                              {{u"isNewsDeskUser"_s, false}, {u"shouldDeleteAccount"_s, false}}, true)
                     .status,
                 200);
        const TestBackend::User reader = newUser();
        QVERIFY(!createFreelancer(owner).isEmpty());

        const TestBackend::Reply direct =
            backend().request("GET", u"/users/"_s + owner.objectId, {}, false, reader.sessionToken);
        QCOMPARE(direct.status, 200);
        // The same holds when the user arrives through a Freelancer query's include.
        const TestBackend::Reply viaInclude = backend().request(
            "GET",
            u"/classes/Freelancer?"_s + whereQuery({{u"user"_s, userPointer(owner.objectId)}}, u"include=user"_s), {},
            false, reader.sessionToken);
        const QJsonArray results = viaInclude.body.object().value(u"results"_s).toArray();
        QCOMPARE(results.size(), 1);
        const QJsonObject included = results.first().toObject().value(u"user"_s).toObject();
        QCOMPARE(included.value(u"firstName"_s).toString(), u"Ada"_s);
        // The owner sees every key of their own record.
        const QJsonObject own = backend().request("GET", u"/users/me"_s, {}, false, owner.sessionToken).body.object();

        for (const QString &key : profile.keys() + hidden) {
            const bool visibleToOthers = profile.contains(key);
            QVERIFY2(direct.body.object().contains(key) == visibleToOthers, qPrintable(key));
            QVERIFY2(included.contains(key) == visibleToOthers, qPrintable(key));
            QVERIFY2(own.contains(key), qPrintable(key));
        }
    }

    void profilePictureReferences_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addColumn<int>("code");
        QTest::newRow("name and url of an upload") << "uploaded" << 0;
        QTest::newRow("name alone") << "name" << 0;
        QTest::newRow("no name") << "empty" << 122;
        QTest::newRow("someone else's server") << "foreign" << 130;
    }
    void profilePictureReferences()
    {
        QFETCH(QString, form);
        QFETCH(int, code);
        const TestBackend::User u = newUser();
        const TestBackend::Reply uploaded = upload(u"photo.jpg"_s, QByteArrayLiteral("\xff\xd8 jpeg"), u.sessionToken);
        QCOMPARE(uploaded.status, 201);
        QJsonObject file{{u"__type"_s, u"File"_s}};
        if (form != QLatin1String("empty"))
            file.insert(u"name"_s, uploaded.body.object().value(u"name"_s));
        if (form == QLatin1String("uploaded"))
            file.insert(u"url"_s, uploaded.body.object().value(u"url"_s));
        if (form == QLatin1String("foreign"))
            file.insert(u"url"_s, u"http://files.elsewhere.example/photo.jpg"_s);

        const TestBackend::Reply r =
            backend().request("PUT", u"/users/"_s + u.objectId, {{u"profilePicture"_s, file}}, false, u.sessionToken);
        QCOMPARE(errorCode(r), code);
        const QJsonObject stored = masterGet(u"_User"_s, u.objectId).value(u"profilePicture"_s).toObject();
        QCOMPARE(stored.value(u"name"_s).toString(),
                 code == 0 ? uploaded.body.object().value(u"name"_s).toString() : QString());
        if (code == 0) {
            // The stored picture downloads from this server.
            const TestBackend::Reply picture = fetch(QUrl(stored.value(u"url"_s).toString()));
            QCOMPARE(picture.status, 200);
            QCOMPARE(picture.raw, QByteArrayLiteral("\xff\xd8 jpeg"));
        }
        // A refused reference never takes the server down.
        QCOMPARE(backend().request("GET", u"/health"_s).status, 200);
    }

    void anonymousCallersSeeNoUsers()
    {
        const TestBackend::User owner = newUser();
        QVERIFY(backend().request("GET", u"/users/"_s + owner.objectId).status >= 400);
        const TestBackend::Reply list = backend().request("GET", u"/users"_s);
        QVERIFY(list.status >= 400);
    }

    void usersCannotBeLookedUpByPrivateKeys()
    {
        const TestBackend::User owner = newUser();
        const TestBackend::User other = newUser();
        const TestBackend::Reply r = backend().request("GET", u"/users?"_s + whereQuery({{u"email"_s, owner.username}}),
                                                       {}, false, other.sessionToken);
        QVERIFY(r.body.object().value(u"results"_s).toArray().isEmpty());
    }

    // --- freelancer and live stream ------------------------------------------------------

    void freelancerBelongsToItsUser()
    {
        const TestBackend::User owner = newUser();
        const TestBackend::User other = newUser();

        // Creating a record for someone else would put it first in their freelancer look-up.
        const TestBackend::Reply forged = backend().request(
            "POST", u"/classes/Freelancer"_s, {{u"user"_s, userPointer(owner.objectId)}}, false, other.sessionToken);
        QCOMPARE(forged.status, 400);
        QCOMPARE(errorCode(forged), kOperationForbidden);

        const QString id = createFreelancer(owner);
        QVERIFY(!id.isEmpty());
        const QJsonObject acl = masterGet(u"Freelancer"_s, id).value(u"ACL"_s).toObject();
        QVERIFY(acl.value(owner.objectId).toObject().value(u"write"_s).toBool());
        QVERIFY(!acl.value(u"*"_s).toObject().value(u"write"_s).toBool());

        // Another user reads the profile but cannot change it or take it over.
        QCOMPARE(backend().request("GET", u"/classes/Freelancer/"_s + id, {}, false, other.sessionToken).status, 200);
        const TestBackend::Reply write = backend().request("PUT", u"/classes/Freelancer/"_s + id,
                                                           {{u"myTown"_s, u"Nowhere"_s}}, false, other.sessionToken);
        QCOMPARE(errorCode(write), kObjectNotFound);
        const TestBackend::Reply takeOver =
            backend().request("PUT", u"/classes/Freelancer/"_s + id, {{u"user"_s, userPointer(other.objectId)}}, false,
                              owner.sessionToken);
        QCOMPARE(errorCode(takeOver), kOperationForbidden);
        const QJsonObject stored = masterGet(u"Freelancer"_s, id);
        QCOMPARE(stored.value(u"myTown"_s).toString(), u"Leeds"_s);
        QCOMPARE(stored.value(u"user"_s).toObject().value(u"objectId"_s).toString(), owner.objectId);

        // The owner edits it; nobody reads it without signing in.
        QCOMPARE(
            backend()
                .request("PUT", u"/classes/Freelancer/"_s + id, {{u"myTown"_s, u"York"_s}}, false, owner.sessionToken)
                .status,
            200);
        QVERIFY(backend().request("GET", u"/classes/Freelancer/"_s + id).status >= 400);
    }

    void liveStreamBelongsToTheFreelancersUser()
    {
        const TestBackend::User owner = newUser();
        const TestBackend::User other = newUser();
        const QString freelancer = createFreelancer(owner);
        QVERIFY(!freelancer.isEmpty());
        const QJsonObject stream{{u"freelancer"_s, pointer(u"Freelancer"_s, freelancer)},
                                 {u"title"_s, u"City centre"_s},
                                 {u"isAvailable"_s, true}};

        const TestBackend::Reply forged =
            backend().request("POST", u"/classes/LiveStream"_s, stream, false, other.sessionToken);
        QCOMPARE(errorCode(forged), kOperationForbidden);

        const TestBackend::Reply created =
            backend().request("POST", u"/classes/LiveStream"_s, stream, false, owner.sessionToken);
        QCOMPARE(created.status, 201);
        const QString id = created.body.object().value(u"objectId"_s).toString();
        const TestBackend::Reply write = backend().request("PUT", u"/classes/LiveStream/"_s + id,
                                                           {{u"title"_s, u"Hijacked"_s}}, false, other.sessionToken);
        QCOMPARE(errorCode(write), kObjectNotFound);
        QCOMPARE(masterGet(u"LiveStream"_s, id).value(u"title"_s).toString(), u"City centre"_s);

        // Pointing one's own stream at someone else's freelancer record is refused too.
        const QString othersFreelancer = createFreelancer(other);
        const TestBackend::Reply move = backend().request(
            "PUT", u"/classes/LiveStream/"_s + id, {{u"freelancer"_s, pointer(u"Freelancer"_s, othersFreelancer)}},
            false, owner.sessionToken);
        QCOMPARE(errorCode(move), kOperationForbidden);
    }

    // --- messages ---------------------------------------------------------------------

    void messageIsPrivateToItsParties()
    {
        const TestBackend::User editor = newUser();
        const TestBackend::User freelancer = newUser();
        const TestBackend::User outsider = newUser();
        const QString id = sendMessage(editor, freelancer, u"Crew needed"_s);
        QVERIFY(!id.isEmpty());

        QCOMPARE(backend().request("GET", u"/classes/Message/"_s + id, {}, false, freelancer.sessionToken).status, 200);
        QCOMPARE(errorCode(backend().request("GET", u"/classes/Message/"_s + id, {}, false, outsider.sessionToken)),
                 kObjectNotFound);
        const TestBackend::Reply inbox =
            backend().request("GET", u"/classes/Message?"_s + whereQuery({{u"to"_s, userPointer(freelancer.objectId)}}),
                              {}, false, outsider.sessionToken);
        QVERIFY(inbox.body.object().value(u"results"_s).toArray().isEmpty());
        QVERIFY(backend().request("GET", u"/classes/Message/"_s + id).status >= 400);

        const TestBackend::Reply tamper = backend().request(
            "PUT", u"/classes/Message/"_s + id, {{u"messageBody"_s, u"changed"_s}}, false, outsider.sessionToken);
        QCOMPARE(errorCode(tamper), kObjectNotFound);
    }

    void messageWrites_data()
    {
        // Who writes (sender, recipient) and what they change on a message from sender to recipient.
        QTest::addColumn<QString>("writer");
        QTest::addColumn<QString>("newFrom");
        QTest::addColumn<QString>("newTo");
        QTest::addColumn<bool>("changesBody");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("recipient marks it read") << "recipient"
                                                 << ""
                                                 << "" << false << true;
        QTest::newRow("recipient replies on the same record") << "recipient"
                                                              << "recipient"
                                                              << "sender" << true << true;
        QTest::newRow("sender follows up") << "sender"
                                           << ""
                                           << "" << true << true;
        QTest::newRow("recipient rewrites the sender's text") << "recipient"
                                                              << ""
                                                              << "" << true << false;
        QTest::newRow("recipient sends in the sender's name") << "recipient"
                                                              << "sender"
                                                              << "recipient" << true << false;
        QTest::newRow("recipient forwards to an outsider") << "recipient"
                                                           << "recipient"
                                                           << "outsider" << true << false;
        QTest::newRow("sender re-addresses to an outsider") << "sender"
                                                            << ""
                                                            << "outsider" << true << false;
    }
    void messageWrites()
    {
        QFETCH(QString, writer);
        QFETCH(QString, newFrom);
        QFETCH(QString, newTo);
        QFETCH(bool, changesBody);
        QFETCH(bool, accepted);
        const QHash<QString, TestBackend::User> people{
            {u"sender"_s, newUser()}, {u"recipient"_s, newUser()}, {u"outsider"_s, newUser()}};
        const QString id = sendMessage(people[u"sender"_s], people[u"recipient"_s], u"Live hit"_s);
        QVERIFY(!id.isEmpty());

        QJsonObject change{{u"hasBeenRead"_s, true}};
        if (!newFrom.isEmpty())
            change.insert(u"from"_s, userPointer(people[newFrom].objectId));
        if (!newTo.isEmpty())
            change.insert(u"to"_s, userPointer(people[newTo].objectId));
        if (changesBody)
            change.insert(u"messageBody"_s, u"New text"_s);
        const TestBackend::Reply r =
            backend().request("PUT", u"/classes/Message/"_s + id, change, false, people[writer].sessionToken);
        QCOMPARE(r.status == 200, accepted);
        if (!accepted)
            QCOMPARE(errorCode(r), kOperationForbidden);

        const QJsonObject stored = masterGet(u"Message"_s, id);
        QCOMPARE(stored.value(u"hasBeenRead"_s).toBool(), accepted);
        const QString storedFrom = stored.value(u"from"_s).toObject().value(u"objectId"_s).toString();
        QCOMPARE(storedFrom, people[accepted && !newFrom.isEmpty() ? newFrom : u"sender"_s].objectId);
        // Whatever the parties, only they can read the record afterwards.
        const QJsonObject acl = stored.value(u"ACL"_s).toObject();
        QCOMPARE(acl.size(), 2);
        QVERIFY(!acl.contains(people[u"outsider"_s].objectId));
    }

    void messageCannotBeSentInSomeoneElsesName()
    {
        const TestBackend::User impostor = newUser();
        const TestBackend::User victim = newUser();
        const TestBackend::User recipient = newUser();
        const TestBackend::Reply r = backend().request("POST", u"/classes/Message"_s,
                                                       {{u"title"_s, u"Forged"_s},
                                                        {u"from"_s, userPointer(victim.objectId)},
                                                        {u"to"_s, userPointer(recipient.objectId)}},
                                                       false, impostor.sessionToken);
        QCOMPARE(errorCode(r), kOperationForbidden);
        QVERIFY(masterFind(u"Message"_s, {{u"to"_s, userPointer(recipient.objectId)}}).isEmpty());
    }

    // --- read-only classes and the locked schema ------------------------------------------

    void catalogueIsSeededAndReadOnly_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<int>("skills");
        QTest::newRow("Broadcast") << "Broadcast" << 10;
        QTest::newRow("Print") << "Print" << 3;
        QTest::newRow("Multi-Skilled") << "Multi-Skilled" << 13;
        QTest::newRow("Citizen Journalist") << "Citizen Journalist" << 1;
    }
    void catalogueIsSeededAndReadOnly()
    {
        QFETCH(QString, title);
        QFETCH(int, skills);
        // Registration reads the roles before anyone has signed in.
        const TestBackend::Reply roles =
            backend().request("GET", u"/classes/FreelanceCategory?"_s + whereQuery({{u"categoryTitle"_s, title}}));
        const QJsonArray found = roles.body.object().value(u"results"_s).toArray();
        QCOMPARE(found.size(), 1);
        const QString id = found.first().toObject().value(u"objectId"_s).toString();
        QVERIFY(!found.first().toObject().value(u"categoryDescription"_s).toString().isEmpty());
        const TestBackend::Reply sub =
            backend().request("GET", u"/classes/FreelanceSubCategory?"_s +
                                         whereQuery({{u"category"_s, pointer(u"FreelanceCategory"_s, id)}}));
        QCOMPARE(sub.body.object().value(u"results"_s).toArray().size(), skills);

        const TestBackend::User u = newUser();
        QCOMPARE(errorCode(backend().request("PUT", u"/classes/FreelanceCategory/"_s + id,
                                             {{u"categoryTitle"_s, u"Hacked"_s}}, false, u.sessionToken)),
                 kOperationForbidden);
        QCOMPARE(
            errorCode(backend().request("DELETE", u"/classes/FreelanceCategory/"_s + id, {}, false, u.sessionToken)),
            kOperationForbidden);
        QCOMPARE(errorCode(backend().request("POST", u"/classes/FreelanceSubCategory"_s, {{u"title"_s, u"Extra"_s}},
                                             false, u.sessionToken)),
                 kOperationForbidden);
    }

    void schemaIsLocked_data()
    {
        QTest::addColumn<QByteArray>("method");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("key");
        QTest::newRow("new class") << QByteArray("POST") << "/classes/Scratch"
                                   << "anything";
        QTest::newRow("new key on a freelancer") << QByteArray("POST") << "/classes/Freelancer"
                                                 << "secretNote";
        QTest::newRow("new key on a message") << QByteArray("POST") << "/classes/Message"
                                              << "priority";
        QTest::newRow("new key on an installation") << QByteArray("POST") << "/installations"
                                                    << "jailbroken";
        QTest::newRow("write to news hot spots") << QByteArray("POST") << "/classes/NewsHotSpot"
                                                 << "title";
    }
    void schemaIsLocked()
    {
        QFETCH(QByteArray, method);
        QFETCH(QString, path);
        QFETCH(QString, key);
        const TestBackend::User u = newUser();
        const TestBackend::User other = newUser();
        // A body that would be valid apart from the key under test.
        QJsonObject body{{key, u"x"_s}};
        if (path.endsWith(QLatin1String("Freelancer")))
            body.insert(u"user"_s, userPointer(u.objectId));
        if (path.endsWith(QLatin1String("Message"))) {
            body.insert(u"from"_s, userPointer(u.objectId));
            body.insert(u"to"_s, userPointer(other.objectId));
        }
        if (path == QLatin1String("/installations")) {
            body.insert(u"deviceType"_s, u"linux"_s);
            body.insert(u"installationId"_s, QUuid::createUuid().toString(QUuid::WithoutBraces));
        }
        const TestBackend::Reply r = backend().request(method, path, body, false, u.sessionToken);
        QCOMPARE(r.status, 400);
        QCOMPARE(errorCode(r), kOperationForbidden);
    }

    void schemaCannotBeChangedWhileRunning()
    {
        // Even the master key cannot change the schema through the API while the server runs.
        const TestBackend::Reply r =
            backend().request("POST", u"/schemas/Scratch"_s, {{u"className"_s, u"Scratch"_s}}, true);
        QCOMPARE(r.status, 400);
        QCOMPARE(errorCode(r), kOperationForbidden);
    }
};

QTEST_GUILESS_MAIN(ServerPermissionsTest)
#include "tst_server_permissions.moc"
