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
        QTest::newRow("plus, percent, dash, underscore") << "a+b%c-d_e@mail-host.example.org" << true;
        QTest::newRow("one letter after the last dot") << "jo@example.c" << false;
        QTest::newRow("two letters after the last dot") << "jo@example.co" << true;
        QTest::newRow("sixty-four letters") << ("jo@example." + QString(64, 'a')) << true;
        QTest::newRow("sixty-five letters") << ("jo@example." + QString(65, 'a')) << false;
        QTest::newRow("a digit after the last dot") << "jo@example.c0m" << false;
        QTest::newRow("no dot after the at sign") << "jo@localhost" << false;
        QTest::newRow("two at signs") << "jo@ex@example.com" << false;
        QTest::newRow("empty") << QString() << false;
        QTest::newRow("trailing blank") << "jo@example.com " << false;
        QTest::newRow("address inside other text") << "mail jo@example.com now" << false;
        QTest::newRow("trailing line break") << "jo@example.com\n" << false;
        QTest::newRow("accented letter") << "zoé@example.com" << false;
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
