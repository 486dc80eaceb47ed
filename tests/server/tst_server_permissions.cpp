// Each case tries a forbidden thing as another user (or as no user) against the running
// backend and checks both the refusal and that the stored record did not change.

#include "BackendProbe.h"
#include "TestBackend.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>
#include <QUrlQuery>
#include <QUuid>

using namespace BackendProbe;

namespace {

const int kOperationForbidden = 119;
const int kObjectNotFound = 101;

QString whereQuery(const QJsonObject &where, const QString &extra = {})
{
    QUrlQuery q;
    q.addQueryItem(QStringLiteral("where"), QString::fromUtf8(QJsonDocument(where).toJson(QJsonDocument::Compact)));
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
        const QList<QJsonObject> found =
            masterFind(QStringLiteral("FreelanceCategory"), {{QStringLiteral("categoryTitle"), title}});
        return found.isEmpty() ? QString() : found.first().value(QStringLiteral("objectId")).toString();
    }

    QString createFreelancer(const TestBackend::User &owner)
    {
        const TestBackend::Reply r =
            backend().request("POST", QStringLiteral("/classes/Freelancer"),
                              {{QStringLiteral("user"), userPointer(owner.objectId)},
                               {QStringLiteral("freelanceCategory"),
                                pointer(QStringLiteral("FreelanceCategory"), categoryId(QStringLiteral("Broadcast")))},
                               {QStringLiteral("myTown"), QStringLiteral("Leeds")}},
                              false, owner.sessionToken);
        return r.status == 201 ? r.body.object().value(QStringLiteral("objectId")).toString() : QString();
    }

    QString sendMessage(const TestBackend::User &from, const TestBackend::User &to, const QString &title)
    {
        const TestBackend::Reply r =
            backend().request("POST", QStringLiteral("/classes/Message"),
                              {{QStringLiteral("title"), title},
                               {QStringLiteral("messageBody"), QStringLiteral("Are you free on Thursday?")},
                               {QStringLiteral("from"), userPointer(from.objectId)},
                               {QStringLiteral("to"), userPointer(to.objectId)},
                               {QStringLiteral("hasBeenRead"), false}},
                              false, from.sessionToken);
        return r.status == 201 ? r.body.object().value(QStringLiteral("objectId")).toString() : QString();
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
        const QString email = QStringLiteral("s%1@example.test").arg(uniqueTag());
        const TestBackend::Reply r = backend().request("POST", QStringLiteral("/users"),
                                                       {{QStringLiteral("username"), email},
                                                        {QStringLiteral("email"), email},
                                                        {QStringLiteral("password"), QStringLiteral("Passw0rdAb")},
                                                        {key, value}});
        QCOMPARE(r.status == 201, accepted);
        if (!accepted) {
            QCOMPARE(errorCode(r), kOperationForbidden);
            QVERIFY(masterFind(QStringLiteral("_User"), {{QStringLiteral("email"), email}}).isEmpty());
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
        const QString path = QStringLiteral("/users/") + u.objectId;
        QCOMPARE(backend().request("PUT", path, {{key, stored}}, true).status, 200);

        const TestBackend::Reply r = backend().request("PUT", path, {{key, requested}}, false, u.sessionToken);
        QCOMPARE(r.status == 200, accepted);
        if (!accepted)
            QCOMPARE(errorCode(r), kOperationForbidden);
        QCOMPARE(masterGet(QStringLiteral("_User"), u.objectId).value(key).toBool(), accepted ? requested : stored);
    }

    void otherUsersCannotWriteAUser()
    {
        const TestBackend::User owner = newUser({{QStringLiteral("firstName"), QStringLiteral("Ada")}});
        const TestBackend::User other = newUser();
        const TestBackend::Reply r =
            backend().request("PUT", QStringLiteral("/users/") + owner.objectId,
                              {{QStringLiteral("firstName"), QStringLiteral("Mallory")}}, false, other.sessionToken);
        QVERIFY(r.status >= 400);
        QCOMPARE(masterGet(QStringLiteral("_User"), owner.objectId).value(QStringLiteral("firstName")).toString(),
                 QStringLiteral("Ada"));
        // Nor can a client widen its own record's ACL to let others write it.
        QJsonObject openAcl{
            {QStringLiteral("*"), QJsonObject{{QStringLiteral("read"), true}, {QStringLiteral("write"), true}}}};
        QCOMPARE(backend()
                     .request("PUT", QStringLiteral("/users/") + owner.objectId, {{QStringLiteral("ACL"), openAcl}},
                              false, owner.sessionToken)
                     .status,
                 200);
        const QJsonObject acl =
            masterGet(QStringLiteral("_User"), owner.objectId).value(QStringLiteral("ACL")).toObject();
        QVERIFY(!acl.value(QStringLiteral("*")).toObject().value(QStringLiteral("write")).toBool());
    }

    void profileFieldsVisibility()
    {
        // Other signed-in users see the profile keys; protectedFields hides the private ones.
        const QJsonObject profile{{QStringLiteral("firstName"), QStringLiteral("Ada")},
                                  {QStringLiteral("lastName"), QStringLiteral("Byron")},
                                  {QStringLiteral("position"), QStringLiteral("Camera")},
                                  {QStringLiteral("workEmail"), QStringLiteral("ada@work.example")},
                                  {QStringLiteral("mobileCountryCode"), QStringLiteral("+44")},
                                  {QStringLiteral("mobileTelephoneNumber"), QStringLiteral("7700900")},
                                  {QStringLiteral("officeCountryCode"), QStringLiteral("+44")},
                                  {QStringLiteral("officeTelephoneNumber"), QStringLiteral("1614960")}};
        const QStringList hidden = QStringLiteral("username email deviceToken isAuthorised "
                                                  "doesPasswordRequireToBeChanged isNewsDeskUser shouldDeleteAccount")
                                       .split(u' ');
        QJsonObject fields = profile;
        fields.insert(QStringLiteral("deviceToken"), QStringLiteral("0AFF"));
        fields.insert(QStringLiteral("isAuthorised"), true);
        fields.insert(QStringLiteral("doesPasswordRequireToBeChanged"), false);
        const TestBackend::User owner = newUser(fields);
        QCOMPARE(
            backend()
                .request("PUT", QStringLiteral("/users/") + owner.objectId,
                         {{QStringLiteral("isNewsDeskUser"), false}, {QStringLiteral("shouldDeleteAccount"), false}},
                         true)
                .status,
            200);
        const TestBackend::User reader = newUser();
        QVERIFY(!createFreelancer(owner).isEmpty());

        const TestBackend::Reply direct =
            backend().request("GET", QStringLiteral("/users/") + owner.objectId, {}, false, reader.sessionToken);
        QCOMPARE(direct.status, 200);
        // The same holds when the user arrives through a Freelancer query's include.
        const TestBackend::Reply viaInclude = backend().request(
            "GET",
            QStringLiteral("/classes/Freelancer?") +
                whereQuery({{QStringLiteral("user"), userPointer(owner.objectId)}}, QStringLiteral("include=user")),
            {}, false, reader.sessionToken);
        const QJsonArray results = viaInclude.body.object().value(QStringLiteral("results")).toArray();
        QCOMPARE(results.size(), 1);
        const QJsonObject included = results.first().toObject().value(QStringLiteral("user")).toObject();
        QCOMPARE(included.value(QStringLiteral("firstName")).toString(), QStringLiteral("Ada"));
        // The owner sees every key of their own record.
        const QJsonObject own =
            backend().request("GET", QStringLiteral("/users/me"), {}, false, owner.sessionToken).body.object();

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
        const TestBackend::Reply uploaded =
            upload(QStringLiteral("photo.jpg"), QByteArrayLiteral("\xff\xd8 jpeg"), u.sessionToken);
        QCOMPARE(uploaded.status, 201);
        QJsonObject file{{QStringLiteral("__type"), QStringLiteral("File")}};
        if (form != QLatin1String("empty"))
            file.insert(QStringLiteral("name"), uploaded.body.object().value(QStringLiteral("name")));
        if (form == QLatin1String("uploaded"))
            file.insert(QStringLiteral("url"), uploaded.body.object().value(QStringLiteral("url")));
        if (form == QLatin1String("foreign"))
            file.insert(QStringLiteral("url"), QStringLiteral("http://files.elsewhere.example/photo.jpg"));

        const TestBackend::Reply r =
            backend().request("PUT", QStringLiteral("/users/") + u.objectId, {{QStringLiteral("profilePicture"), file}},
                              false, u.sessionToken);
        QCOMPARE(errorCode(r), code);
        const QJsonObject stored =
            masterGet(QStringLiteral("_User"), u.objectId).value(QStringLiteral("profilePicture")).toObject();
        QCOMPARE(stored.value(QStringLiteral("name")).toString(),
                 code == 0 ? uploaded.body.object().value(QStringLiteral("name")).toString() : QString());
        if (code == 0) {
            // The stored picture downloads from this server.
            const TestBackend::Reply picture = fetch(QUrl(stored.value(QStringLiteral("url")).toString()));
            QCOMPARE(picture.status, 200);
            QCOMPARE(picture.raw, QByteArrayLiteral("\xff\xd8 jpeg"));
        }
        // A refused reference never takes the server down.
        QCOMPARE(backend().request("GET", QStringLiteral("/health")).status, 200);
    }

    void anonymousCallersSeeNoUsers()
    {
        const TestBackend::User owner = newUser();
        QVERIFY(backend().request("GET", QStringLiteral("/users/") + owner.objectId).status >= 400);
        const TestBackend::Reply list = backend().request("GET", QStringLiteral("/users"));
        QVERIFY(list.status >= 400);
    }

    void usersCannotBeLookedUpByPrivateKeys()
    {
        const TestBackend::User owner = newUser();
        const TestBackend::User other = newUser();
        const TestBackend::Reply r = backend().request(
            "GET", QStringLiteral("/users?") + whereQuery({{QStringLiteral("email"), owner.username}}), {}, false,
            other.sessionToken);
        QVERIFY(r.body.object().value(QStringLiteral("results")).toArray().isEmpty());
    }

    // --- freelancer and live stream ------------------------------------------------------

    void freelancerBelongsToItsUser()
    {
        const TestBackend::User owner = newUser();
        const TestBackend::User other = newUser();

        // Creating a record for someone else would put it first in their freelancer look-up.
        const TestBackend::Reply forged =
            backend().request("POST", QStringLiteral("/classes/Freelancer"),
                              {{QStringLiteral("user"), userPointer(owner.objectId)}}, false, other.sessionToken);
        QCOMPARE(forged.status, 400);
        QCOMPARE(errorCode(forged), kOperationForbidden);

        const QString id = createFreelancer(owner);
        QVERIFY(!id.isEmpty());
        const QJsonObject acl = masterGet(QStringLiteral("Freelancer"), id).value(QStringLiteral("ACL")).toObject();
        QVERIFY(acl.value(owner.objectId).toObject().value(QStringLiteral("write")).toBool());
        QVERIFY(!acl.value(QStringLiteral("*")).toObject().value(QStringLiteral("write")).toBool());

        // Another user reads the profile but cannot change it or take it over.
        QCOMPARE(
            backend().request("GET", QStringLiteral("/classes/Freelancer/") + id, {}, false, other.sessionToken).status,
            200);
        const TestBackend::Reply write =
            backend().request("PUT", QStringLiteral("/classes/Freelancer/") + id,
                              {{QStringLiteral("myTown"), QStringLiteral("Nowhere")}}, false, other.sessionToken);
        QCOMPARE(errorCode(write), kObjectNotFound);
        const TestBackend::Reply takeOver =
            backend().request("PUT", QStringLiteral("/classes/Freelancer/") + id,
                              {{QStringLiteral("user"), userPointer(other.objectId)}}, false, owner.sessionToken);
        QCOMPARE(errorCode(takeOver), kOperationForbidden);
        const QJsonObject stored = masterGet(QStringLiteral("Freelancer"), id);
        QCOMPARE(stored.value(QStringLiteral("myTown")).toString(), QStringLiteral("Leeds"));
        QCOMPARE(stored.value(QStringLiteral("user")).toObject().value(QStringLiteral("objectId")).toString(),
                 owner.objectId);

        // The owner edits it; nobody reads it without signing in.
        QCOMPARE(backend()
                     .request("PUT", QStringLiteral("/classes/Freelancer/") + id,
                              {{QStringLiteral("myTown"), QStringLiteral("York")}}, false, owner.sessionToken)
                     .status,
                 200);
        QVERIFY(backend().request("GET", QStringLiteral("/classes/Freelancer/") + id).status >= 400);
    }

    void liveStreamBelongsToTheFreelancersUser()
    {
        const TestBackend::User owner = newUser();
        const TestBackend::User other = newUser();
        const QString freelancer = createFreelancer(owner);
        QVERIFY(!freelancer.isEmpty());
        const QJsonObject stream{{QStringLiteral("freelancer"), pointer(QStringLiteral("Freelancer"), freelancer)},
                                 {QStringLiteral("title"), QStringLiteral("City centre")},
                                 {QStringLiteral("isAvailable"), true}};

        const TestBackend::Reply forged =
            backend().request("POST", QStringLiteral("/classes/LiveStream"), stream, false, other.sessionToken);
        QCOMPARE(errorCode(forged), kOperationForbidden);

        const TestBackend::Reply created =
            backend().request("POST", QStringLiteral("/classes/LiveStream"), stream, false, owner.sessionToken);
        QCOMPARE(created.status, 201);
        const QString id = created.body.object().value(QStringLiteral("objectId")).toString();
        const TestBackend::Reply write =
            backend().request("PUT", QStringLiteral("/classes/LiveStream/") + id,
                              {{QStringLiteral("title"), QStringLiteral("Hijacked")}}, false, other.sessionToken);
        QCOMPARE(errorCode(write), kObjectNotFound);
        QCOMPARE(masterGet(QStringLiteral("LiveStream"), id).value(QStringLiteral("title")).toString(),
                 QStringLiteral("City centre"));

        // Pointing one's own stream at someone else's freelancer record is refused too.
        const QString othersFreelancer = createFreelancer(other);
        const TestBackend::Reply move =
            backend().request("PUT", QStringLiteral("/classes/LiveStream/") + id,
                              {{QStringLiteral("freelancer"), pointer(QStringLiteral("Freelancer"), othersFreelancer)}},
                              false, owner.sessionToken);
        QCOMPARE(errorCode(move), kOperationForbidden);
    }

    // --- messages ---------------------------------------------------------------------

    void messageIsPrivateToItsParties()
    {
        const TestBackend::User editor = newUser();
        const TestBackend::User freelancer = newUser();
        const TestBackend::User outsider = newUser();
        const QString id = sendMessage(editor, freelancer, QStringLiteral("Crew needed"));
        QVERIFY(!id.isEmpty());

        QCOMPARE(backend()
                     .request("GET", QStringLiteral("/classes/Message/") + id, {}, false, freelancer.sessionToken)
                     .status,
                 200);
        QCOMPARE(errorCode(backend().request("GET", QStringLiteral("/classes/Message/") + id, {}, false,
                                             outsider.sessionToken)),
                 kObjectNotFound);
        const TestBackend::Reply inbox =
            backend().request("GET",
                              QStringLiteral("/classes/Message?") +
                                  whereQuery({{QStringLiteral("to"), userPointer(freelancer.objectId)}}),
                              {}, false, outsider.sessionToken);
        QVERIFY(inbox.body.object().value(QStringLiteral("results")).toArray().isEmpty());
        QVERIFY(backend().request("GET", QStringLiteral("/classes/Message/") + id).status >= 400);

        const TestBackend::Reply tamper = backend().request(
            "PUT", QStringLiteral("/classes/Message/") + id,
            {{QStringLiteral("messageBody"), QStringLiteral("changed")}}, false, outsider.sessionToken);
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
        const QHash<QString, TestBackend::User> people{{QStringLiteral("sender"), newUser()},
                                                       {QStringLiteral("recipient"), newUser()},
                                                       {QStringLiteral("outsider"), newUser()}};
        const QString id = sendMessage(people[QStringLiteral("sender")], people[QStringLiteral("recipient")],
                                       QStringLiteral("Live hit"));
        QVERIFY(!id.isEmpty());

        QJsonObject change{{QStringLiteral("hasBeenRead"), true}};
        if (!newFrom.isEmpty())
            change.insert(QStringLiteral("from"), userPointer(people[newFrom].objectId));
        if (!newTo.isEmpty())
            change.insert(QStringLiteral("to"), userPointer(people[newTo].objectId));
        if (changesBody)
            change.insert(QStringLiteral("messageBody"), QStringLiteral("New text"));
        const TestBackend::Reply r = backend().request("PUT", QStringLiteral("/classes/Message/") + id, change, false,
                                                       people[writer].sessionToken);
        QCOMPARE(r.status == 200, accepted);
        if (!accepted)
            QCOMPARE(errorCode(r), kOperationForbidden);

        const QJsonObject stored = masterGet(QStringLiteral("Message"), id);
        QCOMPARE(stored.value(QStringLiteral("hasBeenRead")).toBool(), accepted);
        const QString storedFrom =
            stored.value(QStringLiteral("from")).toObject().value(QStringLiteral("objectId")).toString();
        QCOMPARE(storedFrom, people[accepted && !newFrom.isEmpty() ? newFrom : QStringLiteral("sender")].objectId);
        // Whatever the parties, only they can read the record afterwards.
        const QJsonObject acl = stored.value(QStringLiteral("ACL")).toObject();
        QCOMPARE(acl.size(), 2);
        QVERIFY(!acl.contains(people[QStringLiteral("outsider")].objectId));
    }

    void messageCannotBeSentInSomeoneElsesName()
    {
        const TestBackend::User impostor = newUser();
        const TestBackend::User victim = newUser();
        const TestBackend::User recipient = newUser();
        const TestBackend::Reply r = backend().request("POST", QStringLiteral("/classes/Message"),
                                                       {{QStringLiteral("title"), QStringLiteral("Forged")},
                                                        {QStringLiteral("from"), userPointer(victim.objectId)},
                                                        {QStringLiteral("to"), userPointer(recipient.objectId)}},
                                                       false, impostor.sessionToken);
        QCOMPARE(errorCode(r), kOperationForbidden);
        QVERIFY(
            masterFind(QStringLiteral("Message"), {{QStringLiteral("to"), userPointer(recipient.objectId)}}).isEmpty());
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
            backend().request("GET", QStringLiteral("/classes/FreelanceCategory?") +
                                         whereQuery({{QStringLiteral("categoryTitle"), title}}));
        const QJsonArray found = roles.body.object().value(QStringLiteral("results")).toArray();
        QCOMPARE(found.size(), 1);
        const QString id = found.first().toObject().value(QStringLiteral("objectId")).toString();
        QVERIFY(!found.first().toObject().value(QStringLiteral("categoryDescription")).toString().isEmpty());
        const TestBackend::Reply sub = backend().request(
            "GET", QStringLiteral("/classes/FreelanceSubCategory?") +
                       whereQuery({{QStringLiteral("category"), pointer(QStringLiteral("FreelanceCategory"), id)}}));
        QCOMPARE(sub.body.object().value(QStringLiteral("results")).toArray().size(), skills);

        const TestBackend::User u = newUser();
        QCOMPARE(errorCode(backend().request("PUT", QStringLiteral("/classes/FreelanceCategory/") + id,
                                             {{QStringLiteral("categoryTitle"), QStringLiteral("Hacked")}}, false,
                                             u.sessionToken)),
                 kOperationForbidden);
        QCOMPARE(errorCode(backend().request("DELETE", QStringLiteral("/classes/FreelanceCategory/") + id, {}, false,
                                             u.sessionToken)),
                 kOperationForbidden);
        QCOMPARE(
            errorCode(backend().request("POST", QStringLiteral("/classes/FreelanceSubCategory"),
                                        {{QStringLiteral("title"), QStringLiteral("Extra")}}, false, u.sessionToken)),
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
        QJsonObject body{{key, QStringLiteral("x")}};
        if (path.endsWith(QLatin1String("Freelancer")))
            body.insert(QStringLiteral("user"), userPointer(u.objectId));
        if (path.endsWith(QLatin1String("Message"))) {
            body.insert(QStringLiteral("from"), userPointer(u.objectId));
            body.insert(QStringLiteral("to"), userPointer(other.objectId));
        }
        if (path == QLatin1String("/installations")) {
            body.insert(QStringLiteral("deviceType"), QStringLiteral("linux"));
            body.insert(QStringLiteral("installationId"), QUuid::createUuid().toString(QUuid::WithoutBraces));
        }
        const TestBackend::Reply r = backend().request(method, path, body, false, u.sessionToken);
        QCOMPARE(r.status, 400);
        QCOMPARE(errorCode(r), kOperationForbidden);
    }

    void schemaCannotBeChangedWhileRunning()
    {
        // Even the master key cannot change the schema through the API while the server runs.
        const TestBackend::Reply r =
            backend().request("POST", QStringLiteral("/schemas/Scratch"),
                              {{QStringLiteral("className"), QStringLiteral("Scratch")}}, true);
        QCOMPARE(r.status, 400);
        QCOMPARE(errorCode(r), kOperationForbidden);
    }
};

QTEST_GUILESS_MAIN(ServerPermissionsTest)
#include "tst_server_permissions.moc"
