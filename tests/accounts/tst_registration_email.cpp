// The e-mail address rule the registration and contact-details forms share: a whole-text match.
#include "EmailAddressRule.h"

#include <QTest>

class TestRegistrationEmail : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rule_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<bool>("valid");
        QTest::newRow("plain") << QStringLiteral("jo.bloggs@example.com") << true;
        QTest::newRow("plus, percent, dash, underscore") << QStringLiteral("a+b%c-d_e@mail-host.example.org") << true;
        QTest::newRow("one letter after the last dot") << QStringLiteral("jo@example.c") << false;
        QTest::newRow("two letters after the last dot") << QStringLiteral("jo@example.co") << true;
        QTest::newRow("sixty-four letters after the last dot")
            << (QStringLiteral("jo@example.") + QString(64, QLatin1Char('a'))) << true;
        QTest::newRow("sixty-five letters after the last dot")
            << (QStringLiteral("jo@example.") + QString(65, QLatin1Char('a'))) << false;
        QTest::newRow("a digit after the last dot") << QStringLiteral("jo@example.c0m") << false;
        QTest::newRow("upper case") << QStringLiteral("JO@EXAMPLE.COM") << true;
        QTest::newRow("no at sign") << QStringLiteral("jo.example.com") << false;
        QTest::newRow("two at signs") << QStringLiteral("jo@ex@example.com") << false;
        QTest::newRow("nothing before the at sign") << QStringLiteral("@example.com") << false;
        QTest::newRow("no dot after the at sign") << QStringLiteral("jo@localhost") << false;
        QTest::newRow("empty") << QString() << false;
        QTest::newRow("leading blank") << QStringLiteral(" jo@example.com") << false;
        QTest::newRow("trailing blank") << QStringLiteral("jo@example.com ") << false;
        QTest::newRow("blank inside") << QStringLiteral("jo bloggs@example.com") << false;
        QTest::newRow("address inside other text") << QStringLiteral("mail jo@example.com now") << false;
        QTest::newRow("trailing line break") << QStringLiteral("jo@example.com\n") << false;
        QTest::newRow("accented letter") << QStringLiteral("zoé@example.com") << false;
    }

    void rule()
    {
        QFETCH(QString, address);
        QFETCH(bool, valid);
        QCOMPARE(EmailAddressRule::isValid(address), valid);
    }
};

QTEST_APPLESS_MAIN(TestRegistrationEmail)
#include "tst_registration_email.moc"
