// The country record, the shipped dialling-code list and how a damaged list is loaded.
#include "DialCodes.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

class TestDialCodes : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void decoding_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("error"); // empty: decodes
        QTest::newRow("all three keys") << QByteArray(R"({"name":"Chad","dial_code":"+235","code":"TD"})") << "";
        QTest::newRow("empty texts") << QByteArray(R"({"name":"None","dial_code":"","code":""})") << "";
        QTest::newRow("no name") << QByteArray(R"({"dial_code":"+235","code":"TD"})") << "\"name\" is missing";
        QTest::newRow("dialCode is not dial_code")
            << QByteArray(R"({"name":"Chad","dialCode":"+235","code":"TD"})") << "\"dial_code\" is missing";
        QTest::newRow("no code") << QByteArray(R"({"name":"Chad","dial_code":"+235"})") << "\"code\" is missing";
        QTest::newRow("number for text") << QByteArray(R"({"name":"Chad","dial_code":235,"code":"TD"})")
                                         << "\"dial_code\" does not hold text";
        QTest::newRow("not an object") << QByteArray(R"(["Chad","+235","TD"])") << "not a JSON object";
    }

    void decoding()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, error);
        const QJsonDocument document = QJsonDocument::fromJson("[" + json + "]");
        QString reason;
        const std::optional<CountryCode> country = CountryCode::fromJson(document.array().at(0), &reason);
        QCOMPARE(country.has_value(), error.isEmpty());
        QVERIFY2(reason.contains(error), qPrintable(reason));
        if (country)
            QCOMPARE(CountryCode::fromJson(country->toJson()), country);
    }

    void pickerRowsAndPlaceholder()
    {
        const QList<CountryCode> offered = DialCodes::withPlaceholder({{"United Kingdom", "+44", "GB"}});
        QCOMPARE(DialCodes::pickerRows(offered), (QStringList{"None:   :  ", "United Kingdom:  +44 : GB "}));
        QCOMPARE(offered.first(), (CountryCode{"None", "", ""}));
        QCOMPARE(DialCodes::countryNames(offered), QStringList{"United Kingdom"});
    }

    void shippedListIsWholeAndOrdered()
    {
        const QList<CountryCode> countries = DialCodes::load();
        QVERIFY2(countries.size() > 240, qPrintable(QString::number(countries.size())));
        static const QRegularExpression dialCode(QStringLiteral("^\\+[0-9]{1,4}$"));
        static const QRegularExpression code(QStringLiteral("^[A-Z]{2}$"));
        // As a reader sorts: case and accents do not count.
        const auto sortKey = [](const QString &name) {
            QString key;
            for (const QChar c : name.normalized(QString::NormalizationForm_D))
                if (c.category() != QChar::Mark_NonSpacing)
                    key.append(c.toCaseFolded());
            return key;
        };
        QStringList codes;
        for (qsizetype i = 0; i < countries.size(); ++i) {
            const CountryCode &country = countries.at(i);
            QVERIFY2(dialCode.match(country.dial_code).hasMatch() && code.match(country.code).hasMatch() &&
                         !country.name.isEmpty() && !codes.contains(country.code),
                     qPrintable(country.pickerRow()));
            QVERIFY2(i == 0 || sortKey(countries.at(i - 1).name) <= sortKey(country.name), qPrintable(country.name));
            codes << country.code;
        }
        QCOMPARE(countries.at(codes.indexOf("GB")).dial_code, QStringLiteral("+44"));
        QCOMPARE(countries.at(codes.indexOf("XK")).dial_code, QStringLiteral("+383"));
    }

    void damagedLists_data()
    {
        QTest::addColumn<QByteArray>("content"); // null: no file at all
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QString>("logged");
        QTest::newRow("missing file") << QByteArray() << QStringList() << "cannot be read";
        QTest::newRow("broken JSON") << QByteArray(R"([{"name":"Chad","dial_code":"+235","code":"TD"},)")
                                     << QStringList() << "is not valid JSON";
        QTest::newRow("an object, not a list")
            << QByteArray(R"({"name":"Chad"})") << QStringList() << "is not a JSON array";
        QTest::newRow("one bad entry costs only itself")
            << QByteArray(R"([{"name":"Chad","dial_code":"+235","code":"TD"}, {"name":"Chile","code":"CL"},
                             {"name":"China","dial_code":"+86","code":"CN"}])")
            << QStringList{"Chad", "China"} << "entry 1 is left out: the key \"dial_code\" is missing";
    }

    void damagedLists()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, names);
        QFETCH(QString, logged);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("list.json"));
        QFile file(path);
        if (!content.isNull())
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QRegularExpression::escape(logged)));
        QCOMPARE(DialCodes::countryNames(DialCodes::load(path)), names);
    }
};

QTEST_GUILESS_MAIN(TestDialCodes)
#include "tst_dialcodes.moc"
