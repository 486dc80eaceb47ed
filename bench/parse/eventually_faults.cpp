// The fault run of the offline queue: `bench_parse_eventually_faults [--runs N] [--seed S]
// [--require-zero]` against the backend named by VANTREL_TEST_BACKEND_STATE (started by
// `server/backend start --throwaway --state-file FILE`), inside a session with a keyring
// (scripts/session-env.sh). Prints the lost and duplicated records and changes; with
// --require-zero it fails when any were lost or duplicated (the short run CTest does).
#include "EventuallyFaultRun.h"
#include "FaultProxy.h"
#include "TestBackend.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QJsonDocument>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>

using namespace EventuallyFaultRun;

namespace {

// Starts the worker on the run's directory; with killAfterMs >= 0 it is killed then, if still running.
// Answers whether it finished by itself with success.
bool startWorker(const QString &directory, int killAfterMs, bool *killed)
{
    QProcess worker;
    worker.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    worker.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--worker"), directory});
    QEventLoop loop;
    QObject::connect(&worker, &QProcess::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(killAfterMs >= 0 ? killAfterMs : 180000, &loop, &QEventLoop::quit);
    if (worker.state() != QProcess::NotRunning)
        loop.exec();
    if (worker.state() != QProcess::NotRunning) {
        worker.kill(); // SIGKILL: the program ends wherever it is
        worker.waitForFinished(5000);
        *killed = true;
        return false;
    }
    *killed = false;
    return worker.exitStatus() == QProcess::NormalExit && worker.exitCode() == 0;
}

Tally runOnce(FaultProxy &proxy, quint32 seed, bool passClientLoss)
{
    QRandomGenerator random(seed);
    const QString runTag = QStringLiteral("r%1").arg(seed);
    const QList<Save> plan = makePlan(seed, runTag);
    const TestBackend::User user = TestBackend::instance().signUpUser();
    QTemporaryDir directory;
    QJsonObject order = toJson(plan);
    order.insert(QStringLiteral("server"), proxy.origin());
    order.insert(QStringLiteral("username"), user.username);
    order.insert(QStringLiteral("password"), user.password);
    order.insert(QStringLiteral("runTag"), runTag);
    order.insert(QStringLiteral("seed"), int(seed));
    QFile file(directory.filePath(QStringLiteral("run.json")));
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(order).toJson()) < 0)
        return {};
    file.close();

    proxy.setFaults({random.generateDouble() * 0.3, random.generateDouble() * 0.3, random.generateDouble() * 0.2,
                     passClientLoss});
    Tally tally;
    const int kills = int(random.bounded(4));
    for (int i = 0; i < kills; ++i) {
        bool killed = false;
        startWorker(directory.path(), 20 + int(random.bounded(400)), &killed);
        tally.kills += killed;
    }
    bool killed = false;
    const bool finished = startWorker(directory.path(), -1, &killed);
    proxy.setFaults({});
    tally += verify(user.objectId, runTag, plan);
    tally.failedWorkers += !finished;
    return tally;
}

void print(const Tally &t, const FaultProxy::Counts &network, qint64 ms)
{
    std::printf("runs %d, saves %d, worker kills %d, last starts that failed %d, %.1f s\n", t.runs, t.saves, t.kills,
                t.failedWorkers, ms / 1000.0);
    std::printf("network: %d requests relayed, %d cut, %d replies dropped after the server applied them, %d outages\n",
                network.relayed, network.cut, network.dropped, network.outages);
    std::printf("records: %d expected, %d lost, %d duplicated\n", t.records, t.lostRecords, t.duplicatedRecords);
    std::printf("changes: %d expected, %d lost, %d stale (an older value: a later save lost or an earlier one "
                "applied again)\n",
                t.changes, t.lostChanges, t.staleChanges);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], "--worker") == 0)
        return runWorker(QString::fromLocal8Bit(argv[2]));

    QCommandLineParser parser;
    parser.addOption({QStringLiteral("runs"), QStringLiteral("Number of runs."), QStringLiteral("n"), QStringLiteral("1000")});
    parser.addOption({QStringLiteral("seed"), QStringLiteral("First run's seed."), QStringLiteral("s"), QStringLiteral("1")});
    parser.addOption({QStringLiteral("require-zero"), QStringLiteral("Fail when anything was lost or duplicated.")});
    parser.addOption({QStringLiteral("server-finishes-requests"),
                      QStringLiteral("A killed worker's request that reached the server is finished there (the "
                                     "server's replay of answers whose client went away is not counted).")});
    parser.addHelpOption();
    parser.process(app);
    if (!TestBackend::instance().isAvailable()) {
        std::fprintf(stderr, "no backend: %s\n", qPrintable(TestBackend::instance().error()));
        return 2;
    }
    FaultProxy proxy(TestBackend::instance().serverUrl(), parser.value(QStringLiteral("seed")).toUInt());
    const int runs = parser.value(QStringLiteral("runs")).toInt();
    const quint32 first = parser.value(QStringLiteral("seed")).toUInt();
    Tally total;
    QElapsedTimer clock;
    clock.start();
    for (int run = 0; run < runs; ++run) {
        const Tally tally =
            runOnce(proxy, first + quint32(run), !parser.isSet(QStringLiteral("server-finishes-requests")));
        if (tally.lostRecords || tally.duplicatedRecords || tally.lostChanges || tally.staleChanges ||
            tally.failedWorkers)
            std::printf("run with seed %u: %d/%d records lost/duplicated, %d/%d changes lost/stale, last start %s\n",
                        first + run, tally.lostRecords, tally.duplicatedRecords, tally.lostChanges,
                        tally.staleChanges, tally.failedWorkers ? "failed" : "finished");
        total += tally;
        if ((run + 1) % 50 == 0 && run + 1 < runs)
            print(total, proxy.counts(), clock.elapsed());
    }
    print(total, proxy.counts(), clock.elapsed());
    const bool clean = !total.lostRecords && !total.duplicatedRecords && !total.lostChanges &&
                       !total.staleChanges && !total.failedWorkers;
    return parser.isSet(QStringLiteral("require-zero")) && !clean ? 1 : 0;
}
