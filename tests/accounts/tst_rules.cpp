// The password strength rule: a whole-text match, never a search inside the text.
#include "PasswordRules.h"

#include <QTest>

class TestRules : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void strength_data()
    {
        QTest::addColumn<QString>("password");
        QTest::addColumn<bool>("strong");
        QTest::newRow("upper, lower, digit, eight") << QStringLiteral("Abcdefg1") << true;
        QTest::newRow("no upper case") << QStringLiteral("abcdefg1") << false;
        QTest::newRow("no lower case") << QStringLiteral("ABCDEFG1") << false;
        QTest::newRow("no digit") << QStringLiteral("Abcdefgh") << false;
        QTest::newRow("too short") << QStringLiteral("Abc1") << false;
        QTest::newRow("seven characters") << QStringLiteral("Abcdef1") << false;
        QTest::newRow("blanks and symbols") << QStringLiteral("My pass 1 €!") << true;
        QTest::newRow("empty") << QString() << false;
        QTest::newRow("accented letters do not count") << QStringLiteral("ÀÉÎõüçñ1x") << false;
        QTest::newRow("a line break splits the text") << QStringLiteral("Abcd\nefg1") << false;
        QTest::newRow("long") << QStringLiteral("Correct Horse Battery Staple 9") << true;
    }

    void strength()
    {
        QFETCH(QString, password);
        QFETCH(bool, strong);
        QCOMPARE(PasswordRules::isStrong(password), strong);
    }
};

QTEST_APPLESS_MAIN(TestRules)
#include "tst_rules.moc"
