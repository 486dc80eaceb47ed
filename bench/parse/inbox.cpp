// The inbox query (messages to the signed-in user, newest first, sender and recipient
// included) through our client, on a backend holding 100,000 messages across 1,000 users.
// Prints p50 and p95 latency over 200 queries after a warm-up.
//
//   bench_parse_inbox <backend state file>     (bench/parse/run-inbox.sh starts a backend for it)

#include "Message.h"
#include "PFQuery.h"
#include "PFUser.h"
#include "Parse.h"
#include "ParseClientConfiguration.h"
#include "RecordClasses.h"
#include "TestBackend.h"
#include "User.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>

namespace {

constexpr int kUsers = 1000;
constexpr int kMessages = 100000;

// Bulk data goes straight into the database: creating 100,000 rows over REST would take the
// benchmark longer than the measurement.
bool seed(const TestBackend &backend, const QString &me)
{
    const QString sql = QStringLiteral(R"SQL(
INSERT INTO "_User" ("objectId", "createdAt", "updatedAt", "username", "email", "firstName", "lastName",
                     "workEmail", "_rperm", "_wperm")
SELECT 'bu' || lpad(g::text, 8, '0'), now(), now(), 'bench' || g || '@example.test', 'bench' || g || '@example.test',
       'First' || g, 'Last' || g, 'bench' || g || '@newsroom.example', ARRAY['*'], ARRAY['bu' || lpad(g::text, 8, '0')]
FROM generate_series(1, %1) g;
WITH ids AS (SELECT array_agg(id ORDER BY id) AS a FROM
             (SELECT 'bu' || lpad(g::text, 8, '0') AS id FROM generate_series(1, %1) g UNION ALL SELECT '%3') s)
INSERT INTO "Message" ("objectId", "createdAt", "updatedAt", "title", "messageBody", "from", "to", "hasBeenRead",
                       "_rperm", "_wperm")
SELECT 'bm' || lpad(g::text, 8, '0'), now() - g * interval '1 second', now() - g * interval '1 second',
       'Crew needed ' || g, 'Are you free to cover the press conference tomorrow? Reference ' || g,
       ids.a[1 + (g * 7) % %2], ids.a[1 + g % %2], g % 3 = 0,
       ARRAY[ids.a[1 + (g * 7) % %2], ids.a[1 + g % %2]], ARRAY[ids.a[1 + (g * 7) % %2], ids.a[1 + g % %2]]
FROM generate_series(1, %4) g, ids;
ANALYZE "Message";
)SQL")
                            .arg(kUsers - 1)
                            .arg(kUsers)
                            .arg(me)
                            .arg(kMessages);
    const QString dataDir = backend.value(QStringLiteral("VANTREL_DATA_DIR"));
    QProcess psql;
    psql.start(QStringLiteral("runuser"),
               {QStringLiteral("-u"), QStringLiteral("postgres"), QStringLiteral("--"), QStringLiteral("psql"),
                QStringLiteral("-X"), QStringLiteral("-q"), QStringLiteral("-v"), QStringLiteral("ON_ERROR_STOP=1"),
                QStringLiteral("-h"), dataDir + QStringLiteral("/pg"), QStringLiteral("-p"),
                backend.value(QStringLiteral("VANTREL_PG_PORT")), QStringLiteral("-U"), QStringLiteral("postgres"),
                QStringLiteral("-d"), QStringLiteral("vantrel")});
    psql.write(sql.toUtf8());
    psql.closeWriteChannel();
    psql.waitForFinished(600000);
    if (psql.exitCode() != 0)
        std::fprintf(stderr, "seeding failed: %s\n", psql.readAllStandardError().constData());
    return psql.exitCode() == 0;
}

template <typename Start> void wait(Start start)
{
    QEventLoop loop;
    start([&] { loop.quit(); });
    loop.exec();
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (argc > 1)
        qputenv("VANTREL_TEST_BACKEND_STATE", argv[1]);
    const TestBackend &backend = TestBackend::instance();
    if (!backend.isAvailable()) {
        std::fprintf(stderr, "%s\n", qPrintable(backend.error()));
        return 1;
    }
    const TestBackend::User me = backend.signUpUser();
    QElapsedTimer seeding;
    seeding.start();
    if (me.objectId.isEmpty() || !seed(backend, me.objectId))
        return 1;
    std::printf("seeded %d messages across %d users in %.1f s\n", kMessages, kUsers, seeding.elapsed() / 1000.0);

    QTemporaryDir data;
    registerRecordClasses();
    Parse::initializeWithConfiguration(ParseClientConfiguration::configurationWithBlock([&](auto &c) {
        c.applicationId = backend.applicationId();
        c.clientKey = backend.clientKey();
        c.server = backend.serverUrl().toString();
        c.dataDirectory = data.path();
    }));
    bool signedIn = false;
    wait([&](auto done) {
        PFUser::logInWithUsernameInBackground(me.username, me.password, [&, done](const PFUserPtr &u, const PFError *) {
            signedIn = bool(u);
            done();
        });
    });
    if (!signedIn)
        return 1;

    auto inbox = [&] {
        PFQuery query = Message::query();
        query.whereKey(QStringLiteral("to"), std::static_pointer_cast<PFObject>(PFUser::currentUser()));
        query.includeKey(QStringLiteral("from")).includeKey(QStringLiteral("to"));
        qsizetype rows = -1;
        QElapsedTimer timer;
        timer.start();
        wait([&](auto done) {
            query.findObjectsInBackgroundWithBlock([&, done](const QList<PFObjectPtr> &objects, const PFError *error) {
                rows = error ? -1 : objects.size();
                done();
            });
        });
        return std::make_pair(double(timer.nsecsElapsed()) / 1e6, rows);
    };
    for (int i = 0; i < 10; ++i)
        inbox();
    std::vector<double> times;
    qsizetype rows = 0;
    for (int i = 0; i < 200; ++i) {
        const auto [ms, n] = inbox();
        if (n < 0) {
            std::fprintf(stderr, "query %d failed\n", i);
            return 1;
        }
        rows = n;
        times.push_back(ms);
    }
    std::sort(times.begin(), times.end());
    std::printf("inbox query, %lld rows per page (server default limit), 200 runs:\n", static_cast<long long>(rows));
    std::printf("  p50 %.1f ms, p95 %.1f ms (target p95 < 20 ms on loopback), max %.1f ms\n", times[100],
                times[189], times.back());
    return 0;
}
