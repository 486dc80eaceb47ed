// The country record, the shipped dialling-code list and how a damaged list is loaded.
#include "CountryCode.h"
#include "DialCodes.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

namespace {
QJsonValue json(const char *text)
{
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray("[") + text + "]");
    Q_ASSERT(document.isArray());
    return document.array().at(0);
}
} // namespace

class TestDialCodes : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_dir;

    QString write(const QString &name, const QByteArray &content)
    {
        const QString path = m_dir.filePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write a test file");
        return path;
    }

private Q_SLOTS:
    void decoding_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("decodes");
        QTest::addColumn<QString>("error");
        QTest::newRow("all three keys") << R"({"name":"Chad","dial_code":"+235","code":"TD"})" << true << QString();
        QTest::newRow("empty texts are values") << R"({"name":"None","dial_code":"","code":""})" << true << QString();
        QTest::newRow("extra keys are ignored")
            << R"({"name":"Chad","dial_code":"+235","code":"TD","flag":"x"})" << true << QString();
        QTest::newRow("no name") << R"({"dial_code":"+235","code":"TD"})" << false << "\"name\" is missing";
        QTest::newRow("no dial_code") << R"({"name":"Chad","code":"TD"})" << false << "\"dial_code\" is missing";
        QTest::newRow("dialCode is not dial_code")
            << R"({"name":"Chad","dialCode":"+235","code":"TD"})" << false << "\"dial_code\" is missing";
        QTest::newRow("no code") << R"({"name":"Chad","dial_code":"+235"})" << false << "\"code\" is missing";
        QTest::newRow("number for text") << R"({"name":"Chad","dial_code":235,"code":"TD"})" << false
                                         << "\"dial_code\" does not hold text";
        QTest::newRow("null for text") << R"({"name":null,"dial_code":"+235","code":"TD"})" << false
                                       << "\"name\" does not hold text";
        QTest::newRow("an array") << R"(["Chad","+235","TD"])" << false << "not a JSON object";
        QTest::newRow("a string") << R"("Chad")" << false << "not a JSON object";
    }

    void decoding()
    {
        QFETCH(QString, text);
        QFETCH(bool, decodes);
        QFETCH(QString, error);
        QString reason;
        const std::optional<CountryCode> country = CountryCode::fromJson(json(text.toUtf8().constData()), &reason);
        QCOMPARE(country.has_value(), decodes);
        if (decodes) {
            QCOMPARE(CountryCode::fromJson(country->toJson()), country);
            QVERIFY(reason.isEmpty());
        } else {
            QVERIFY2(reason.contains(error), qPrintable(reason));
        }
    }

    void encodingUsesTheRecordKeys()
    {
        const QJsonObject object =
            CountryCode{QStringLiteral("Chad"), QStringLiteral("+235"), QStringLiteral("TD")}.toJson();
        QCOMPARE(object.keys(), (QStringList{"code", "dial_code", "name"}));
        QCOMPARE(object.value("dial_code").toString(), QStringLiteral("+235"));
    }

    void pickerRows_data()
    {
        QTest::addColumn<CountryCode>("country");
        QTest::addColumn<QString>("row");
        QTest::newRow("country") << CountryCode{"United Kingdom", "+44", "GB"} << "United Kingdom:  +44 : GB ";
        QTest::newRow("placeholder") << CountryCode::placeholder() << "None:   :  ";
    }

    void pickerRows()
    {
        QFETCH(CountryCode, country);
        QFETCH(QString, row);
        QCOMPARE(country.pickerRow(), row);
        QCOMPARE(DialCodes::pickerRows({country}), QStringList{row});
    }

    void placeholderComesFirstAndIsNoCountry()
    {
        const QList<CountryCode> loaded{{"Chad", "+235", "TD"}, {"Chile", "+56", "CL"}};
        const QList<CountryCode> offered = DialCodes::withPlaceholder(loaded);
        QCOMPARE(offered.size(), 3);
        QCOMPARE(offered.first(), CountryCode::placeholder());
        QCOMPARE(offered.first().name, QStringLiteral("None"));
        QVERIFY(offered.first().dial_code.isEmpty());
        QVERIFY(offered.first().code.isEmpty());
        QCOMPARE(DialCodes::countryNames(offered), (QStringList{"Chad", "Chile"}));
    }

    void shippedListIsWhole()
    {
        const QList<CountryCode> countries = DialCodes::load();
        QVERIFY2(countries.size() > 240, qPrintable(QString::number(countries.size())));
        static const QRegularExpression dialCode(QStringLiteral("^\\+[0-9]{1,4}$"));
        static const QRegularExpression code(QStringLiteral("^[A-Z]{2}$"));
        QSet<QString> codes;
        for (const CountryCode &country : countries) {
            QVERIFY2(!country.name.isEmpty(), qPrintable(country.code));
            QVERIFY2(dialCode.match(country.dial_code).hasMatch(), qPrintable(country.name));
            QVERIFY2(code.match(country.code).hasMatch(), qPrintable(country.name));
            QVERIFY2(!codes.contains(country.code), qPrintable(country.code));
            codes.insert(country.code);
        }
        const auto find = [&](const QString &iso) {
            return *std::find_if(countries.begin(), countries.end(),
                                 [&](const CountryCode &c) { return c.code == iso; });
        };
        QVERIFY(codes.contains("GB") && codes.contains("US") && codes.contains("XK"));
        QCOMPARE(find("GB").dial_code, QStringLiteral("+44"));
        QCOMPARE(find("US").dial_code, QStringLiteral("+1"));
        QCOMPARE(find("XK").dial_code, QStringLiteral("+383"));
        // Ordered by name, as a reader sorts: case and accents do not count.
        const auto sortKey = [](const QString &name) {
            QString key;
            for (const QChar c : name.normalized(QString::NormalizationForm_D))
                if (c.category() != QChar::Mark_NonSpacing)
                    key.append(c.toCaseFolded());
            return key;
        };
        const QStringList names = DialCodes::countryNames(countries);
        for (qsizetype i = 1; i < names.size(); ++i)
            QVERIFY2(sortKey(names.at(i - 1)) <= sortKey(names.at(i)), qPrintable(names.at(i)));
    }

    void damagedLists_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QString>("logged");
        QTest::newRow("broken JSON") << QByteArray(R"([{"name":"Chad","dial_code":"+235","code":"TD"},)")
                                     << QStringList() << "is not valid JSON";
        QTest::newRow("an object, not a list") << QByteArray(R"({"name":"Chad","dial_code":"+235","code":"TD"})")
                                               << QStringList() << "is not a JSON array";
        QTest::newRow("one bad entry costs only itself")
            << QByteArray(R"([{"name":"Chad","dial_code":"+235","code":"TD"},
                             {"name":"Chile","code":"CL"},
                             {"name":"China","dial_code":"+86","code":"CN"}])")
            << QStringList{"Chad", "China"} << "entry 1 is left out: the key \"dial_code\" is missing";
        QTest::newRow("empty file") << QByteArray() << QStringList() << "is not valid JSON";
    }

    void damagedLists()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, names);
        QFETCH(QString, logged);
        const QString path = write(QStringLiteral("list.json"), content);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QRegularExpression::escape(logged)));
        QCOMPARE(DialCodes::countryNames(DialCodes::load(path)), names);
    }

    void missingListIsLoggedAndEmpty()
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("cannot be read")));
        QVERIFY(DialCodes::load(m_dir.filePath(QStringLiteral("absent.json"))).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestDialCodes)
#include "tst_dialcodes.moc"
