// Decoding a query reply of 10,000 Message rows with the sender and recipient included, into
// record objects: the client's one JSON path (PFJsonReader straight into variants) beside the
// way through a QJsonDocument that it replaced, on the same JSON. Prints the median time of
// five runs (after one warm-up) and the memory the first decode took (peak resident size
// growth), for both; each way runs in a process of its own so that the memory figures do not mix.
//
//   bench_parse_decode [rows]

#include "Message.h"
#include "PFDecoder.h"
#include "PFJsonReader.h"
#include "RecordClasses.h"
#include "User.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <algorithm>
#include <cstdio>

namespace {

long statusKb(const char *field)
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray prefix = QByteArray(field) + ':';
    for (const QByteArray &line : file.readAll().split('\n'))
        if (line.startsWith(prefix))
            return line.mid(prefix.size()).trimmed().split(' ').value(0).toLong();
    return 0;
}

QJsonObject userJson(int n)
{
    return {{QStringLiteral("__type"), QStringLiteral("Object")},
            {QStringLiteral("className"), QStringLiteral("_User")},
            {QStringLiteral("objectId"), QStringLiteral("user%1").arg(n, 6, 10, QLatin1Char('0'))},
            {QStringLiteral("firstName"), QStringLiteral("Firstname%1").arg(n)},
            {QStringLiteral("lastName"), QStringLiteral("Lastname%1").arg(n)},
            {QStringLiteral("workEmail"), QStringLiteral("person%1@newsroom.example").arg(n)},
            {QStringLiteral("mobileCountryCode"), QStringLiteral("+44")},
            {QStringLiteral("mobileTelephoneNumber"), QStringLiteral("7700900%1").arg(n % 1000, 3, 10, QLatin1Char('0'))},
            {QStringLiteral("createdAt"), QStringLiteral("2026-01-02T03:04:05.678Z")},
            {QStringLiteral("updatedAt"), QStringLiteral("2026-02-03T04:05:06.789Z")}};
}

QByteArray makeReply(int rows)
{
    QJsonArray results;
    QRandomGenerator random(42);
    for (int i = 0; i < rows; ++i) {
        QJsonObject row{
            {QStringLiteral("objectId"), QStringLiteral("msg%1").arg(i, 7, 10, QLatin1Char('0'))},
            {QStringLiteral("title"), QStringLiteral("Crew needed for the evening bulletin %1").arg(i)},
            {QStringLiteral("messageBody"),
             QStringLiteral("Are you free to cover the press conference at the town hall tomorrow at 10:00? "
                            "We need camera and sound, about three hours. Reference %1.")
                 .arg(i)},
            {QStringLiteral("hasBeenRead"), random.bounded(2) == 1},
            {QStringLiteral("from"), userJson(static_cast<int>(random.bounded(1000)))},
            {QStringLiteral("to"), userJson(static_cast<int>(random.bounded(1000)))},
            {QStringLiteral("createdAt"), QStringLiteral("2026-11-%1T10:00:00.000Z").arg(1 + i % 28, 2, 10, QLatin1Char('0'))},
            {QStringLiteral("updatedAt"), QStringLiteral("2026-11-%1T11:00:00.000Z").arg(1 + i % 28, 2, 10, QLatin1Char('0'))},
        };
        results.append(row);
    }
    return QJsonDocument(QJsonObject{{QStringLiteral("results"), results}}).toJson(QJsonDocument::Compact);
}

// What the query controller does with a page: read the text, decode each row into a record.
QList<PFObjectPtr> decode(const QByteArray &text, bool viaDocument)
{
    PFJsonReader reader;
    QVariant reply = viaDocument ? QVariant(QJsonDocument::fromJson(text).object().toVariantMap()) : reader.read(text);
    QVariantMap page = PFJsonReader::takeMap(reply);
    QVariant results = page.take(QStringLiteral("results"));
    QVariantList rows = PFJsonReader::takeList(results);
    QList<PFObjectPtr> objects;
    objects.reserve(rows.size());
    PFDecoder decoder;
    for (QVariant &row : rows)
        objects.append(decoder.decodeObject(QStringLiteral("Message"), PFJsonReader::takeMap(row)));
    return objects;
}

struct Figures {
    double medianMs = 0;
    double memoryMb = 0;
};

Figures measure(const QByteArray &text, int rows, bool viaDocument)
{
    const long before = statusKb("VmRSS");
    QList<PFObjectPtr> kept = decode(text, viaDocument);
    Figures figures;
    figures.memoryMb = double(statusKb("VmHWM") - before) / 1024.0;
    auto first = std::dynamic_pointer_cast<Message>(kept.value(0));
    if (kept.size() != rows || !first || !first->from() || first->from()->firstName().isEmpty())
        return {};
    std::vector<double> times;
    for (int i = 0; i < 6; ++i) {
        kept.clear();
        QElapsedTimer timer;
        timer.start();
        kept = decode(text, viaDocument);
        if (i > 0)
            times.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    figures.medianMs = times[times.size() / 2];
    return figures;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const bool child = argc > 2 && (qstrcmp(argv[2], "reader") == 0 || qstrcmp(argv[2], "document") == 0);
    const int rows = argc > 1 ? std::atoi(argv[1]) : 10000;
    registerRecordClasses();
    const QByteArray text = makeReply(rows);
    if (child) {
        const Figures figures = measure(text, rows, qstrcmp(argv[2], "document") == 0);
        std::printf("%f %f\n", figures.medianMs, figures.memoryMb);
        return figures.medianMs > 0 ? 0 : 1;
    }
    std::printf("decoding %d Message rows (sender and recipient included), %.1f MB of JSON\n", rows,
                double(text.size()) / 1e6);
    for (const char *way : {"reader", "document"}) {
        QProcess measured;
        measured.start(QCoreApplication::applicationFilePath(), {QString::number(rows), QLatin1String(way)});
        measured.waitForFinished(300000);
        const QList<QByteArray> numbers = measured.readAllStandardOutput().trimmed().split(' ');
        if (measured.exitCode() != 0 || numbers.size() != 2) {
            std::fprintf(stderr, "the %s way produced no typed messages with an included sender\n", way);
            return 1;
        }
        std::printf("  %-40s median %8.1f ms, memory %7.1f MB\n",
                    qstrcmp(way, "reader") == 0 ? "PFJsonReader (every reply):" : "through a QJsonDocument (before):",
                    numbers.at(0).toDouble(), numbers.at(1).toDouble());
    }
    return 0;
}
