// Who may do what, tried against the running backend: one matrix of class x operation x actor
// (anonymous, the owner, another freelancer, a newsroom account), then the rules the matrix
// cannot show (queries that would reveal hidden keys, flags, replies, file references). Every
// refused write is checked to have left the stored record as it was.

#include "BackendProbe.h"
#include "TestBackend.h"

#include <QJsonArray>
#include <QTest>
#include <QUuid>

using namespace Qt::StringLiterals;
using namespace BackendProbe;

namespace {

const int kOperationForbidden = 119;

// One line per class and operation; the four marks are anonymous, owner, another freelancer
// and newsroom account: '+' allowed, '-' refused, '.' not tried.
struct Cell {
    const char *className;
    const char *operation;
    const char *actors;
};
// clang-format off
const Cell kMatrix[] = {
    {"_User", "create", "+..."},  {"_User", "get", "-+-+"},    {"_User", "find", "-+-+"},
    {"_User", "update", "-+--"},  {"_User", "delete", "----"}, {"_User", "column", "----"},
    {"Freelancer", "create", "----"}, {"Freelancer", "get", "-+-+"}, {"Freelancer", "find", "-+-+"},
    {"Freelancer", "update", "-+--"}, {"Freelancer", "delete", "----"}, {"Freelancer", "column", "----"},
    {"LiveStream", "create", "-+--"}, {"LiveStream", "get", "-+-+"}, {"LiveStream", "find", "-+-+"},
    {"LiveStream", "update", "-+--"}, {"LiveStream", "delete", "----"}, {"LiveStream", "column", "----"},
    {"Message", "create", "---+"},  {"Message", "get", "-+-+"},  {"Message", "find", "-+-+"},
    {"Message", "update", "-+-+"},  {"Message", "delete", "----"}, {"Message", "column", "----"},
    {"FreelanceCategory", "get", "++++"}, {"FreelanceCategory", "find", "++++"},
    {"FreelanceCategory", "create", "----"}, {"FreelanceCategory", "update", "----"},
    {"FreelanceCategory", "delete", "----"}, {"NoticeOutbox", "find", "----"},
    {"_Installation", "create", "++++"}, {"_Installation", "get", "-+--"}, {"_Installation", "find", "----"},
    {"_Installation", "update", "-+--"}, {"_Installation", "delete", "----"}, {"_Installation", "column", "----"},
    {"_Session", "find", "----"}, {"_Role", "find", "----"}, {"_Role", "create", "----"},
    {"_Product", "find", "----"}, {"_Product", "create", "----"}, {"_Audience", "create", "----"},
    {"_PushStatus", "find", "----"},
};
// clang-format on
const char *const kActors[] = {"anonymous", "owner", "another freelancer", "newsroom"};

QString classPath(const QString &className)
{
    if (className == "_User"_L1)
        return u"/users"_s;
    if (className == "_Installation"_L1)
        return u"/installations"_s;
    if (className == "_Session"_L1)
        return u"/sessions"_s;
    return u"/classes/"_s + className;
}

} // namespace

class ServerPermissionsTest : public QObject {
    Q_OBJECT

    const TestBackend &backend() const { return TestBackend::instance(); }
    TestBackend::User m_owner, m_other, m_newsroom;
    QHash<QString, QString> m_target; // class -> the owner's record (or one every actor may read)

    QString create(const QString &className, const QJsonObject &body, const TestBackend::User &by,
                   const QList<Header> &headers = {})
    {
        const TestBackend::Reply r = send("POST", classPath(className), body, by.sessionToken, headers);
        if (r.status != 201)
            qFatal("set-up of %s failed: %s", qPrintable(className), r.raw.constData());
        return r.text(u"objectId"_s);
    }

    const TestBackend::User *actor(int index) const
    {
        const TestBackend::User *actors[] = {nullptr, &m_owner, &m_other, &m_newsroom};
        return actors[index];
    }

    QJsonObject creation(const QString &className, const TestBackend::User *by) const
    {
        const QString tag = uniqueTag();
        if (className == "_User"_L1)
            return {{u"username"_s, tag + u"@example.test"_s}, {u"password"_s, u"Passw0rdAb"_s}};
        if (className == "Freelancer"_L1)
            return {{u"user"_s, userPointer(m_owner.objectId)}};
        if (className == "LiveStream"_L1)
            return {{u"freelancer"_s, pointer(u"Freelancer"_s, m_target[u"Freelancer"_s])}, {u"title"_s, tag}};
        if (className == "Message"_L1)
            return {{u"from"_s, userPointer(by ? by->objectId : m_owner.objectId)},
                    {u"to"_s, userPointer(by == &m_newsroom ? m_owner.objectId : m_newsroom.objectId)}};
        if (className == "_Installation"_L1)
            return {{u"deviceType"_s, u"linux"_s},
                    {u"installationId"_s, QUuid::createUuid().toString(QUuid::WithoutBraces)}};
        return {{u"categoryTitle"_s, tag}, {u"name"_s, tag}, {u"productIdentifier"_s, tag}};
    }

    static QJsonObject change(const QString &className)
    {
        static const QHash<QString, QString> keys{{u"_User"_s, u"position"_s},
                                                  {u"Freelancer"_s, u"myTown"_s},
                                                  {u"LiveStream"_s, u"title"_s},
                                                  {u"FreelanceCategory"_s, u"categoryTitle"_s},
                                                  {u"_Installation"_s, u"timeZone"_s}};
        if (className == "Message"_L1)
            return {{u"hasBeenRead"_s, true}};
        return {{keys.value(className), uniqueTag()}};
    }

private Q_SLOTS:
    void initTestCase()
    {
        REQUIRE_BACKEND();
        m_owner = backend().signUpUser({{u"firstName"_s, u"Ada"_s},
                                        {u"workEmail"_s, u"ada@work.test"_s},
                                        {u"mobileTelephoneNumber"_s, u"7700900123"_s}});
        backend().request("PUT", u"/users/"_s + m_owner.objectId, {{u"deviceToken"_s, u"0AFF"_s}}, true);
        m_other = backend().signUpUser();
        m_newsroom = newsroomUser();
        m_target[u"_User"_s] = m_owner.objectId;
        m_target[u"Freelancer"_s] = create(u"Freelancer"_s, creation(u"Freelancer"_s, &m_owner), m_owner);
        m_target[u"LiveStream"_s] = create(u"LiveStream"_s, creation(u"LiveStream"_s, &m_owner), m_owner);
        m_target[u"Message"_s] = create(u"Message"_s, creation(u"Message"_s, &m_newsroom), m_newsroom);
        const QJsonObject installation = creation(u"_Installation"_s, &m_owner);
        m_target[u"_Installation"_s] =
            create(u"_Installation"_s, installation, m_owner,
                   {{"X-Parse-Installation-Id", installation.value(u"installationId"_s).toString().toUtf8()}});
        m_target[u"FreelanceCategory"_s] =
            masterFind(u"FreelanceCategory"_s, {}).value(0).value(u"objectId"_s).toString();
    }

    void matrix_data()
    {
        // clang-format off
        QTest::addColumn<QString>("className");
        QTest::addColumn<QString>("operation");
        QTest::addColumn<int>("actor");
        QTest::addColumn<bool>("allowed");
        for (const Cell &cell : kMatrix) {
            for (int a = 0; a < 4; ++a) {
                if (cell.actors[a] != '.')
                    QTest::addRow("%s %s by %s", cell.className, cell.operation, kActors[a])
                        << QString::fromLatin1(cell.className) << QString::fromLatin1(cell.operation) << a
                        << (cell.actors[a] == '+');
            }
        }
        // clang-format on
    }
    void matrix()
    {
        QFETCH(QString, className);
        QFETCH(QString, operation);
        QFETCH(int, actor);
        QFETCH(bool, allowed);
        const TestBackend::User *by = this->actor(actor);
        const QString token = by ? by->sessionToken : QString();
        const QString id = m_target.value(className);
        const QString path = classPath(className) + (id.isEmpty() ? QString() : u'/' + id);
        const QJsonObject before = id.isEmpty() ? QJsonObject() : masterGet(className, id);
        const QString newKey = u"added"_s + uniqueTag();

        TestBackend::Reply r;
        bool succeeded = false;
        if (operation == "get"_L1) {
            r = send("GET", path, {}, token, {});
            succeeded = r.status == 200 && r.body.object().value(u"objectId"_s) == id;
        } else if (operation == "find"_L1) {
            r = send("GET",
                     classPath(className) + u'?' +
                         whereQuery(id.isEmpty() ? QJsonObject() : QJsonObject{{u"objectId"_s, id}}),
                     {}, token, {});
            succeeded = r.status == 200 && !r.body.object().value(u"results"_s).toArray().isEmpty();
        } else if (operation == "create"_L1) {
            r = send("POST", classPath(className), creation(className, by), token, {});
            succeeded = r.status == 201;
        } else {
            const QJsonObject body = operation == "column"_L1 ? QJsonObject{{newKey, 1}} : change(className);
            r = send(operation == "delete"_L1 ? "DELETE" : "PUT", path, operation == "delete"_L1 ? QJsonObject() : body,
                     token, {});
            succeeded = r.status == 200;
        }
        QVERIFY2(succeeded == allowed, r.raw.constData());
        if (!allowed && !before.isEmpty() && operation != "get"_L1 && operation != "find"_L1)
            QCOMPARE(masterGet(className, id), before);
        if (operation == "column"_L1) {
            const TestBackend::Reply schema = backend().request("GET", u"/schemas/"_s + className, {}, true);
            QVERIFY(!schema.body.object().value(u"fields"_s).toObject().contains(newKey));
        }
    }

    // No query reveals a key its caller may not read, whatever the operator or form.
    void queriesRevealNoHiddenKey_data()
    {
        // clang-format off
        QTest::addColumn<bool>("asNewsroom");
        QTest::addColumn<QString>("key");
        const QStringList freelancerHidden{u"email"_s, u"username"_s, u"workEmail"_s, u"mobileTelephoneNumber"_s,
                                           u"isAuthorised"_s, u"deviceToken"_s};
        for (const QString &key : freelancerHidden)
            QTest::addRow("%s from another freelancer", qPrintable(key)) << false << key;
        for (const QString &key : {u"email"_s, u"username"_s, u"isAuthorised"_s, u"deviceToken"_s})
            QTest::addRow("%s from a newsroom account", qPrintable(key)) << true << key;
        // clang-format on
    }
    void queriesRevealNoHiddenKey()
    {
        QFETCH(bool, asNewsroom);
        QFETCH(QString, key);
        const QString token = asNewsroom ? m_newsroom.sessionToken : m_other.sessionToken;
        const QJsonObject stored = masterGet(u"_User"_s, m_owner.objectId);
        const QJsonValue value = stored.value(key).isUndefined() ? QJsonValue(u"x"_s) : stored.value(key);
        const QJsonObject constraints[] = {
            {{key, value}},
            {{key, QJsonObject{{u"$regex"_s, u"."_s}}}},
            {{key, QJsonObject{{u"$exists"_s, true}}}},
            {{key, QJsonObject{{u"$in"_s, QJsonArray{value}}}}},
        };
        for (const QJsonObject &where : constraints) {
            for (const QString &extra : {QString(), u"count=1&limit=0"_s, u"keys=objectId"_s}) {
                const TestBackend::Reply r = send("GET", u"/users?"_s + whereQuery(where, extra), {}, token, {});
                QVERIFY2(r.status >= 400 || (!r.raw.contains(m_owner.objectId.toUtf8()) &&
                                             r.body.object().value(u"count"_s).toInt() == 0),
                         r.raw.constData());
            }
            // Through a class the caller may read: a sub-query on users, and the included user.
            const QJsonObject through{{u"user"_s, QJsonObject{{u"$inQuery"_s, QJsonObject{{u"className"_s, u"_User"_s},
                                                                                          {u"where"_s, where}}}}}};
            const TestBackend::Reply sub =
                send("GET", u"/classes/Freelancer?"_s + whereQuery(through, u"include=user"_s), {}, token, {});
            QVERIFY2(sub.status >= 400 || !sub.raw.contains(m_target[u"Freelancer"_s].toUtf8()), sub.raw.constData());
        }
        const TestBackend::Reply included =
            send("GET", u"/classes/Freelancer?include=user&keys=user."_s + key, {}, token, {});
        for (const QJsonValue row : included.body.object().value(u"results"_s).toArray())
            QVERIFY2(!row.toObject().value(u"user"_s).toObject().contains(key), included.raw.constData());
    }

    // What a freelancer reads of the people they share a message with.
    void messagePartnersSeeContactKeysOnly()
    {
        const TestBackend::User editor = newsroomUser();
        const TestBackend::User freelancer = backend().signUpUser({{u"firstName"_s, u"Ben"_s}});
        create(u"Message"_s, {{u"from"_s, userPointer(editor.objectId)}, {u"to"_s, userPointer(freelancer.objectId)}},
               editor);
        const QJsonObject seen =
            send("GET", u"/users/"_s + editor.objectId, {}, freelancer.sessionToken, {}).body.object();
        QStringList keys = seen.keys();
        keys.removeAll(u"ACL"_s);
        keys.sort();
        QCOMPARE(keys, QStringList({u"createdAt"_s, u"firstName"_s, u"mobileCountryCode"_s, u"mobileTelephoneNumber"_s,
                                    u"objectId"_s, u"updatedAt"_s, u"workEmail"_s}));
    }

    // The flags an account holder may move, at sign-up (no stored value) and afterwards.
    void ownerFlagChanges_data()
    {
        // clang-format off
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("stored"); // invalid: at sign-up
        QTest::addColumn<bool>("requested");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("registration authorises itself") << "isAuthorised" << QVariant() << true << true;
        QTest::newRow("sign-up demands a password change") << "doesPasswordRequireToBeChanged" << QVariant() << true << false;
        QTest::newRow("sign-up as newsroom") << "isNewsDeskUser" << QVariant() << true << false;
        QTest::newRow("isAuthorised lowered") << "isAuthorised" << QVariant(true) << false << true;
        QTest::newRow("isAuthorised raised") << "isAuthorised" << QVariant(false) << true << false;
        QTest::newRow("password change cleared") << "doesPasswordRequireToBeChanged" << QVariant(true) << false << true;
        QTest::newRow("deletion requested") << "shouldDeleteAccount" << QVariant(false) << true << true;
        QTest::newRow("deletion withdrawn") << "shouldDeleteAccount" << QVariant(true) << false << false;
        QTest::newRow("newsroom raised") << "isNewsDeskUser" << QVariant(false) << true << false;
        QTest::newRow("newsroom dropped") << "isNewsDeskUser" << QVariant(true) << false << false;
        // clang-format on
    }
    void ownerFlagChanges()
    {
        QFETCH(QString, key);
        QFETCH(QVariant, stored);
        QFETCH(bool, requested);
        QFETCH(bool, accepted);
        TestBackend::Reply r;
        QString id;
        if (!stored.isValid()) {
            const QString email = uniqueTag() + u"@example.test"_s;
            r = backend().request("POST", u"/users"_s,
                                  {{u"username"_s, email}, {u"password"_s, u"Passw0rdAb"_s}, {key, requested}});
            id = r.text(u"objectId"_s);
        } else {
            const TestBackend::User u = backend().signUpUser();
            id = u.objectId;
            QCOMPARE(backend().request("PUT", u"/users/"_s + id, {{key, stored.toBool()}}, true).status, 200);
            r = backend().request("PUT", u"/users/"_s + id, {{key, requested}}, false, u.sessionToken);
        }
        // A refused sign-up is forbidden; a refused change may also find the session already ended.
        QVERIFY2((r.status < 300) == accepted, r.raw.constData());
        if (!stored.isValid() && !accepted)
            QCOMPARE(errorCode(r), kOperationForbidden);
        if (!id.isEmpty())
            QCOMPARE(masterGet(u"_User"_s, id).value(key).toBool(), accepted ? requested : stored.toBool());
    }

    void messageWrites_data()
    {
        // clang-format off
        // Who writes (sender, recipient) and what they change on a message from sender to recipient.
        QTest::addColumn<QString>("writer");
        QTest::addColumn<QString>("newFrom");
        QTest::addColumn<QString>("newTo");
        QTest::addColumn<bool>("changesBody");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("recipient marks it read") << "recipient" << "" << "" << false << true;
        QTest::newRow("recipient replies on the same record") << "recipient" << "recipient" << "sender" << true << true;
        QTest::newRow("sender follows up") << "sender" << "" << "" << true << true;
        QTest::newRow("recipient rewrites the sender's text") << "recipient" << "" << "" << true << false;
        QTest::newRow("recipient sends in the sender's name") << "recipient" << "sender" << "recipient" << true << false;
        QTest::newRow("recipient forwards to an outsider") << "recipient" << "recipient" << "outsider" << true << false;
        QTest::newRow("sender re-addresses to an outsider") << "sender" << "" << "outsider" << true << false;
        // clang-format on
    }
    void messageWrites()
    {
        QFETCH(QString, writer);
        QFETCH(QString, newFrom);
        QFETCH(QString, newTo);
        QFETCH(bool, changesBody);
        QFETCH(bool, accepted);
        const QHash<QString, TestBackend::User> people{{u"sender"_s, newsroomUser()},
                                                       {u"recipient"_s, backend().signUpUser()},
                                                       {u"outsider"_s, backend().signUpUser()}};
        const QString id = create(u"Message"_s,
                                  {{u"from"_s, userPointer(people[u"sender"_s].objectId)},
                                   {u"to"_s, userPointer(people[u"recipient"_s].objectId)},
                                   {u"hasBeenRead"_s, false}},
                                  people[u"sender"_s]);
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
        const QJsonObject stored = masterGet(u"Message"_s, id);
        QCOMPARE(stored.value(u"hasBeenRead"_s).toBool(), accepted);
        // Whatever the parties, only they can read the record afterwards.
        QCOMPARE(stored.value(u"ACL"_s).toObject().size(), 2);
        QVERIFY(!stored.value(u"ACL"_s).toObject().contains(people[u"outsider"_s].objectId));
    }

    void profilePictureReferences_data()
    {
        // clang-format off
        QTest::addColumn<QString>("form");
        QTest::addColumn<int>("code");
        QTest::newRow("name and url of an upload") << "uploaded" << 0;
        QTest::newRow("name alone") << "name" << 0;
        QTest::newRow("no name") << "empty" << 111;
        QTest::newRow("someone else's server") << "foreign" << 130;
        // clang-format on
    }
    void profilePictureReferences()
    {
        QFETCH(QString, form);
        QFETCH(int, code);
        const TestBackend::User u = backend().signUpUser();
        const QByteArray jpeg = QByteArray::fromHex("ffd8ffe0") + "jpeg";
        const TestBackend::Reply uploaded = upload(u"photo.jpg"_s, jpeg, u.sessionToken);
        QCOMPARE(uploaded.status, 201);
        QJsonObject file{{u"__type"_s, u"File"_s}};
        if (form != "empty"_L1)
            file.insert(u"name"_s, uploaded.body.object().value(u"name"_s));
        if (form == "uploaded"_L1)
            file.insert(u"url"_s, uploaded.body.object().value(u"url"_s));
        if (form == "foreign"_L1)
            file.insert(u"url"_s, u"http://files.elsewhere.example/photo.jpg"_s);
        const TestBackend::Reply r =
            backend().request("PUT", u"/users/"_s + u.objectId, {{u"profilePicture"_s, file}}, false, u.sessionToken);
        QCOMPARE(errorCode(r), code);
        const QJsonObject stored = masterGet(u"_User"_s, u.objectId).value(u"profilePicture"_s).toObject();
        QCOMPARE(stored.value(u"name"_s).toString(), code == 0 ? uploaded.text(u"name"_s) : QString());
        if (code == 0)
            QCOMPARE(fetch(QUrl(stored.value(u"url"_s).toString())).raw, jpeg);
    }
};

QTEST_GUILESS_MAIN(ServerPermissionsTest)
#include "tst_server_permissions.moc"
