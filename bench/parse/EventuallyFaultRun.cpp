#include "EventuallyFaultRun.h"

#include "PFObject.h"
#include "PFQuery.h"
#include "PFUser.h"
#include "Parse.h"
#include "ParseCore.h"
#include "SecureStore.h"
#include "TestBackend.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRandomGenerator>
#include <QSaveFile>
#include <QTimer>
#include <functional>

namespace EventuallyFaultRun {

namespace {

const QString kTown = QStringLiteral("myTown");
const QString kTitle = QStringLiteral("title");
const QString kStreamUrl = QStringLiteral("streamURL");

// Runs the event loop until `done` holds or `timeoutMs` passed.
bool waitFor(const std::function<bool()> &done, int timeoutMs)
{
    QEventLoop loop;
    QTimer poll;
    poll.start(10);
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (done())
            loop.quit();
    });
    QTimer::singleShot(timeoutMs, &loop, &QEventLoop::quit);
    if (!done())
        loop.exec();
    return done();
}

void pause(int ms)
{
    waitFor([] { return false; }, ms);
}

QList<QJsonObject> masterFind(const QString &className, const QJsonObject &where)
{
    const QString query = QString::fromUtf8(QUrl::toPercentEncoding(
        QString::fromUtf8(QJsonDocument(where).toJson(QJsonDocument::Compact))));
    const TestBackend::Reply reply = TestBackend::instance().request(
        "GET", QStringLiteral("/classes/%1?limit=1000&where=%2").arg(className, query), {}, true);
    QList<QJsonObject> rows;
    for (const QJsonValue &row : reply.body.object().value(QStringLiteral("results")).toArray())
        rows.append(row.toObject());
    return rows;
}

QJsonObject pointer(const QString &className, const QString &objectId)
{
    return {{QStringLiteral("__type"), QStringLiteral("Pointer")},
            {QStringLiteral("className"), className},
            {QStringLiteral("objectId"), objectId}};
}

// Compares a record's value with the values the run wrote, the last of them expected.
void countChange(Tally &tally, const QString &actual, const QStringList &written)
{
    ++tally.changes;
    if (actual == written.last())
        return;
    if (written.contains(actual))
        ++tally.staleChanges;
    else
        ++tally.lostChanges;
}

// The worker: a client of its own in its data directory, signed in once and then remembered.
class Worker {
public:
    explicit Worker(const QString &directory) : m_directory(directory)
    {
        QFile file(QDir(directory).filePath(QStringLiteral("run.json")));
        if (file.open(QIODevice::ReadOnly))
            m_run = QJsonDocument::fromJson(file.readAll()).object();
        m_plan = planFromJson(m_run);
        m_runTag = m_run.value(QStringLiteral("runTag")).toString();
    }

    int run()
    {
        if (m_plan.isEmpty())
            return 2;
        startClient();
        if (!signIn())
            return 3;
        qsizetype made = madeSoFar();
        // Records made by an earlier start are found again once the queue has sent them.
        if (made > 0 && (!drain() || !findRecords()))
            return 4;
        QRandomGenerator random(m_run.value(QStringLiteral("seed")).toInt() + quint32(made));
        for (; made < m_plan.size(); ++made) {
            writeProgress(QStringLiteral("making"), made);
            make(m_plan.at(made));
            writeProgress(QStringLiteral("made"), made + 1);
            pause(int(random.bounded(40)));
        }
        return drain() ? 0 : 5;
    }

private:
    void startClient()
    {
        m_store = std::make_unique<SecureStore>(QStringLiteral("Vantrel Pro fault run"));
        Parse::initializeWithConfiguration(ParseClientConfiguration::configurationWithBlock([&](auto &c) {
            c.applicationId = TestBackend::instance().applicationId();
            c.clientKey = TestBackend::instance().clientKey();
            c.server = m_run.value(QStringLiteral("server")).toString();
            c.dataDirectory = QDir(m_directory).filePath(QStringLiteral("data"));
            c.secureStorage = m_store.get();
            c.networkRetryAttempts = 2;
            c.retryInitialDelayMs = 20;
            c.requestTimeoutMs = 5000;
            c.eventuallyRetryIntervalMs = 100;
        }));
    }

    bool signIn()
    {
        auto &users = Parse::core()->currentUserController();
        if (!waitFor([&] { return users.isLoaded(); }, 30000))
            return false;
        while (!PFUser::currentUser()) {
            bool answered = false;
            PFUser::logInWithUsernameInBackground(m_run.value(QStringLiteral("username")).toString(),
                                                  m_run.value(QStringLiteral("password")).toString(),
                                                  [&](const PFUserPtr &, const PFError *) { answered = true; });
            if (!waitFor([&] { return answered; }, 30000))
                return false;
        }
        return waitFor([&] { return !users.isRemembering(); }, 30000);
    }

    bool drain()
    {
        return waitFor([] { return Parse::core()->eventuallyQueue().pendingCount() == 0; }, 120000);
    }

    // The run's records as the server has them, found through the faulty network.
    bool findRecords()
    {
        for (int attempt = 0; attempt < 200; ++attempt) {
            const QList<PFObjectPtr> freelancers =
                find(PFQuery(QStringLiteral("Freelancer")).whereKey(QStringLiteral("user"), PFObjectPtr(PFUser::currentUser())));
            if (freelancers.size() != 1)
                continue;
            m_freelancer = freelancers.first();
            const QList<PFObjectPtr> streams =
                find(PFQuery(QStringLiteral("LiveStream")).whereKey(QStringLiteral("freelancer"), m_freelancer));
            if (streams.isEmpty() && expectsStreams())
                continue;
            m_streams.clear();
            for (const PFObjectPtr &stream : streams) {
                for (int i = 0; i < m_plan.size(); ++i) {
                    if (stream->stringForKey(kStreamUrl) == streamUrl(m_runTag, i))
                        m_streams.insert(i, stream);
                }
            }
            return true;
        }
        return false;
    }

    [[nodiscard]] bool expectsStreams() const
    {
        const qsizetype made = madeSoFar();
        for (qsizetype i = 0; i < made; ++i) {
            if (m_plan.at(i).kind == Save::Kind::CreateStream)
                return true;
        }
        return false;
    }

    static QList<PFObjectPtr> find(const PFQuery &query)
    {
        std::optional<QList<PFObjectPtr>> found;
        query.findObjectsInBackgroundWithBlock([&](const QList<PFObjectPtr> &objects, const PFError *error) {
            found = error ? QList<PFObjectPtr>{} : objects;
        });
        waitFor([&] { return found.has_value(); }, 30000);
        return found.value_or(QList<PFObjectPtr>{});
    }

    void make(const Save &save)
    {
        switch (save.kind) {
        case Save::Kind::CreateFreelancer:
            m_freelancer = PFObject::objectWithClassName(QStringLiteral("Freelancer"));
            m_freelancer->setObject(PFObjectPtr(PFUser::currentUser()), QStringLiteral("user"));
            m_freelancer->setObject(save.value, kTown);
            m_freelancer->saveEventually();
            break;
        case Save::Kind::UpdateFreelancer:
            m_freelancer->setObject(save.value, kTown);
            m_freelancer->saveEventually();
            break;
        case Save::Kind::CreateStream: {
            auto stream = PFObject::objectWithClassName(QStringLiteral("LiveStream"));
            stream->setObject(m_freelancer, QStringLiteral("freelancer"));
            stream->setObject(streamUrl(m_runTag, save.stream), kStreamUrl);
            stream->setObject(save.value, kTitle);
            stream->saveEventually();
            m_streams.insert(save.stream, stream);
            break;
        }
        case Save::Kind::UpdateStream:
            if (const PFObjectPtr stream = m_streams.value(save.stream)) { // a lost stream is counted by the harness
                stream->setObject(save.value, kTitle);
                stream->saveEventually();
            }
            break;
        }
    }

    // How many saves earlier starts made. A start killed between making a save and noting it
    // is told by the journal, which holds the save's unique value until it is sent (and it
    // cannot have been sent: no event was handled in between).
    [[nodiscard]] qsizetype madeSoFar() const
    {
        QFile file(QDir(m_directory).filePath(QStringLiteral("progress")));
        if (!file.open(QIODevice::ReadOnly))
            return 0;
        const QList<QByteArray> words = file.readAll().split(' ');
        const qsizetype count = words.value(1).toLongLong();
        if (words.value(0) != "making")
            return count;
        QFile journal(QDir(m_directory).filePath(QStringLiteral("data/eventually.json")));
        const bool inJournal = journal.open(QIODevice::ReadOnly) &&
                               journal.readAll().contains(m_plan.at(count).value.toUtf8());
        return inJournal ? count + 1 : count;
    }

    void writeProgress(const QString &state, qsizetype count) const
    {
        QSaveFile file(QDir(m_directory).filePath(QStringLiteral("progress")));
        if (file.open(QIODevice::WriteOnly)) {
            file.write(state.toUtf8() + ' ' + QByteArray::number(count));
            file.commit();
        }
    }

    QString m_directory;
    QJsonObject m_run;
    QList<Save> m_plan;
    QString m_runTag;
    std::unique_ptr<SecureStore> m_store;
    PFObjectPtr m_freelancer;
    QHash<int, PFObjectPtr> m_streams;
};

} // namespace

Tally &Tally::operator+=(const Tally &other)
{
    runs += other.runs;
    saves += other.saves;
    kills += other.kills;
    records += other.records;
    lostRecords += other.lostRecords;
    duplicatedRecords += other.duplicatedRecords;
    changes += other.changes;
    lostChanges += other.lostChanges;
    staleChanges += other.staleChanges;
    failedWorkers += other.failedWorkers;
    return *this;
}

QString streamUrl(const QString &runTag, int stream)
{
    return QStringLiteral("https://streams.example.test/%1/%2").arg(runTag).arg(stream);
}

QList<Save> makePlan(quint32 seed, const QString &runTag)
{
    QRandomGenerator random(seed);
    const int count = 1 + int(random.bounded(20));
    QList<Save> plan{{Save::Kind::CreateFreelancer, -1, {}}};
    int streams = 0;
    while (plan.size() < count) {
        const quint32 pick = random.bounded(3);
        if (pick == 0 || streams == 0)
            plan.append({Save::Kind::CreateStream, streams++, {}});
        else if (pick == 1)
            plan.append({Save::Kind::UpdateFreelancer, -1, {}});
        else
            plan.append({Save::Kind::UpdateStream, int(random.bounded(streams)), {}});
    }
    for (int i = 0; i < plan.size(); ++i)
        plan[i].value = QStringLiteral("%1-save%2").arg(runTag).arg(i);
    return plan;
}

QJsonObject toJson(const QList<Save> &plan)
{
    QJsonArray saves;
    for (const Save &save : plan)
        saves.append(QJsonObject{{QStringLiteral("kind"), int(save.kind)},
                                 {QStringLiteral("stream"), save.stream},
                                 {QStringLiteral("value"), save.value}});
    return {{QStringLiteral("plan"), saves}};
}

QList<Save> planFromJson(const QJsonObject &json)
{
    QList<Save> plan;
    for (const QJsonValue &save : json.value(QStringLiteral("plan")).toArray()) {
        const QJsonObject s = save.toObject();
        plan.append({Save::Kind(s.value(QStringLiteral("kind")).toInt()), s.value(QStringLiteral("stream")).toInt(),
                     s.value(QStringLiteral("value")).toString()});
    }
    return plan;
}

Tally verify(const QString &userId, const QString &runTag, const QList<Save> &plan)
{
    Tally tally;
    tally.runs = 1;
    tally.saves = int(plan.size());
    QStringList towns;
    QHash<int, QStringList> titles;
    for (const Save &save : plan) {
        if (save.kind == Save::Kind::CreateFreelancer || save.kind == Save::Kind::UpdateFreelancer)
            towns.append(save.value);
        else
            titles[save.stream].append(save.value);
    }
    const QList<QJsonObject> freelancers =
        masterFind(QStringLiteral("Freelancer"), {{QStringLiteral("user"), pointer(QStringLiteral("_User"), userId)}});
    tally.records = 1 + int(titles.size());
    if (freelancers.isEmpty()) {
        tally.lostRecords = tally.records;
        return tally;
    }
    tally.duplicatedRecords += int(freelancers.size()) - 1;
    countChange(tally, freelancers.first().value(kTown).toString(), towns);
    QList<QJsonObject> streams;
    for (const QJsonObject &freelancer : freelancers)
        streams += masterFind(QStringLiteral("LiveStream"),
                              {{QStringLiteral("freelancer"),
                                pointer(QStringLiteral("Freelancer"), freelancer.value(QStringLiteral("objectId")).toString())}});
    for (auto it = titles.cbegin(); it != titles.cend(); ++it) {
        QList<QJsonObject> found;
        for (const QJsonObject &stream : streams) {
            if (stream.value(kStreamUrl).toString() == streamUrl(runTag, it.key()))
                found.append(stream);
        }
        if (found.isEmpty()) {
            ++tally.lostRecords;
            continue;
        }
        tally.duplicatedRecords += int(found.size()) - 1;
        countChange(tally, found.first().value(kTitle).toString(), it.value());
    }
    return tally;
}

int runWorker(const QString &directory)
{
    return Worker(directory).run();
}

} // namespace EventuallyFaultRun
