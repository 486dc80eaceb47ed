#include "DateHelper.h"

#include <QTest>
#include <QTimeZone>

#include <ctime>

// The start of a day in the local zone, with the zone switched per row through TZ.
class TestDates : public QObject {
    Q_OBJECT

private:
    QByteArray m_savedTz;

    static void useZone(const QByteArray &zone)
    {
        if (zone.isNull())
            qunsetenv("TZ");
        else
            qputenv("TZ", zone);
        tzset();
    }

private Q_SLOTS:
    void initTestCase() { m_savedTz = qgetenv("TZ"); }
    void cleanup() { useZone(m_savedTz.isEmpty() ? QByteArray() : m_savedTz); }

    void startOfDayAcrossDaylightSaving_data()
    {
        QTest::addColumn<QByteArray>("zone");
        QTest::addColumn<QDate>("day");
        QTest::addColumn<QDateTime>("expectedUtc");
        QTest::addColumn<QTime>("expectedLocalTime");

        // Clocks jumped from 00:00 to 01:00: the day starts at 01:00.
        QTest::newRow("Sao Paulo, midnight skipped")
            << QByteArray("America/Sao_Paulo") << QDate(2018, 11, 4)
            << QDateTime(QDate(2018, 11, 4), QTime(3, 0), Qt::UTC) << QTime(1, 0);
        QTest::newRow("Beirut, midnight skipped")
            << QByteArray("Asia/Beirut") << QDate(2019, 3, 31)
            << QDateTime(QDate(2019, 3, 30), QTime(22, 0), Qt::UTC) << QTime(1, 0);
        // Clocks went back from 00:00 to 23:00 the evening before: midnight comes once, late.
        QTest::newRow("Sao Paulo, the hour before midnight repeated")
            << QByteArray("America/Sao_Paulo") << QDate(2019, 2, 17)
            << QDateTime(QDate(2019, 2, 17), QTime(3, 0), Qt::UTC) << QTime(0, 0);
        // London changes at 01:00/02:00: midnight exists on both days, in different offsets.
        QTest::newRow("London, spring forward")
            << QByteArray("Europe/London") << QDate(2019, 3, 31)
            << QDateTime(QDate(2019, 3, 31), QTime(0, 0), Qt::UTC) << QTime(0, 0);
        QTest::newRow("London, the day after spring forward")
            << QByteArray("Europe/London") << QDate(2019, 4, 1)
            << QDateTime(QDate(2019, 3, 31), QTime(23, 0), Qt::UTC) << QTime(0, 0);
    }

    void startOfDayAcrossDaylightSaving()
    {
        QFETCH(QByteArray, zone);
        QFETCH(QDate, day);
        QFETCH(QDateTime, expectedUtc);
        QFETCH(QTime, expectedLocalTime);

        useZone(zone);
        const QDateTime start = DateHelper::startOfDay(day);
        QVERIFY(start.isValid());
        QCOMPARE(start.toUTC(), expectedUtc);
        QCOMPARE(start.date(), day);
        QCOMPARE(start.time(), expectedLocalTime);
        // Nothing of the day comes before its start.
        QVERIFY(start.addSecs(-1).date() < day);
    }

    void startOfTodayIsTodaysFirstInstant()
    {
        // Today is the local date: at +14 it is often a day ahead of UTC.
        useZone(QByteArrayLiteral("Pacific/Kiritimati"));
        const QDateTime now = QDateTime::currentDateTime();
        const QDateTime start = DateHelper::startOfToday();
        if (now.date() != QDate::currentDate())
            QSKIP("the date changed while the test ran");
        QCOMPARE(start.date(), now.date());
        QVERIFY(start <= now);
        QVERIFY(start.secsTo(now) < 25 * 3600);
        QVERIFY(start.addSecs(-1).date() < now.date());
    }
};

QTEST_GUILESS_MAIN(TestDates)
#include "tst_dates.moc"
