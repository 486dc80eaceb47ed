// The biometric check over a fake fprintd on a private bus: availability, the reader's kind,
// and every outcome of a check turned into its message.
#include "BiometricIDAuth.h"
#include "FprintdBiometrics.h"
#include "PrivateBus.h"

#include <QDBusMessage>
#include <QTest>
#include <QThread>

namespace {

const auto kTemplate = QStringLiteral(VANTREL_SOURCE_DIR "/tests/support/fprintd_template.py");
const auto kFprint = QStringLiteral("net.reactivated.Fprint");

struct Outcome {
    bool answered = false;
    std::optional<QString> message;
    bool onMainThread = false;
    bool answeredInsideCall = false;
};

} // namespace

class TestBiometrics : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<PrivateBus> m_bus;

    bool control(const QString &method, const QVariantList &args = {})
    {
        QDBusMessage call = QDBusMessage::createMethodCall(kFprint, QStringLiteral("/net/reactivated/Fprint/Manager"),
                                                           QStringLiteral("org.freedesktop.DBus.Mock"), method);
        call.setArguments(args);
        return m_bus->connection().call(call).type() == QDBusMessage::ReplyMessage;
    }

    QStringList deviceCalls()
    {
        const QDBusMessage reply = m_bus->connection().call(QDBusMessage::createMethodCall(
            kFprint, QStringLiteral("/net/reactivated/Fprint/Manager"), QStringLiteral("org.freedesktop.DBus.Mock"),
            QStringLiteral("GetCalls")));
        return reply.arguments().value(0).toStringList();
    }

    static Outcome check(BiometricIDAuth &auth)
    {
        Outcome outcome;
        auth.authenticateUser([&](std::optional<QString> message) {
            outcome.answered = true;
            outcome.message = std::move(message);
            outcome.onMainThread = QThread::currentThread() == QCoreApplication::instance()->thread();
        });
        outcome.answeredInsideCall = outcome.answered;
        (void)QTest::qWaitFor([&] { return outcome.answered; }, 10000);
        return outcome;
    }

private Q_SLOTS:
    void init()
    {
        m_bus = std::make_unique<PrivateBus>();
        QVERIFY(m_bus->isRunning());
        QVERIFY(m_bus->startTemplate(kTemplate, kFprint, {QStringLiteral("--session")}));
    }

    void cleanup() { m_bus.reset(); }

    void availabilityFollowsTheReaderAndItsFingers()
    {
        FprintdBiometrics reader(m_bus->connection());
        BiometricIDAuth auth(&reader);
        QVERIFY(auth.canEvaluatePolicy());
        QCOMPARE(auth.biometricType(), BiometricIDAuth::BiometricType::touchID);

        QVERIFY(control(QStringLiteral("SetEnrolledFingers"), {QStringList()}));
        QVERIFY(!auth.canEvaluatePolicy());
        QCOMPARE(auth.biometricType(), BiometricIDAuth::BiometricType::touchID);

        QVERIFY(control(QStringLiteral("RemoveDevice")));
        QVERIFY(!auth.canEvaluatePolicy());
        QCOMPARE(auth.biometricType(), BiometricIDAuth::BiometricType::none);

        // No fprintd at all.
        FprintdBiometrics nowhere(QDBusConnection::connectToBus(QStringLiteral("unix:path=/nonexistent"),
                                                                 QStringLiteral("nowhere")));
        BiometricIDAuth absent(&nowhere);
        QVERIFY(!absent.canEvaluatePolicy());
        QCOMPARE(absent.biometricType(), BiometricIDAuth::BiometricType::none);
    }

    void outcomesBecomeMessages_data()
    {
        QTest::addColumn<QStringList>("results");
        QTest::addColumn<QString>("setUp");
        QTest::addColumn<QString>("message"); // empty: success

        const QStringList match{QStringLiteral("verify-match")};
        QTest::newRow("match") << match << QString() << QString();
        QTest::newRow("retry then match") << QStringList{QStringLiteral("verify-retry-scan"), QStringLiteral("verify-match")}
                                          << QString() << QString();
        QTest::newRow("no match") << QStringList{QStringLiteral("verify-no-match")} << QString()
                                  << QStringLiteral("There was a problem verifying your identity.");
        QTest::newRow("reader unplugged mid-check") << QStringList{QStringLiteral("verify-disconnected")} << QString()
                                                    << QStringLiteral("Face ID/Touch ID is not available.");
        QTest::newRow("reader error") << QStringList{QStringLiteral("verify-unknown-error")} << QString()
                                      << QStringLiteral("Face ID/Touch ID may not be configured");
        QTest::newRow("nothing enrolled") << match << QStringLiteral("SetEnrolledFingers")
                                          << QStringLiteral("Face ID/Touch ID is not set up.");
        QTest::newRow("no reader") << match << QStringLiteral("RemoveDevice")
                                   << QStringLiteral("Face ID/Touch ID is not available.");
    }

    void outcomesBecomeMessages()
    {
        QFETCH(QStringList, results);
        QFETCH(QString, setUp);
        QFETCH(QString, message);
        QVERIFY(control(QStringLiteral("SetVerifyResults"), {results}));
        if (setUp == QLatin1String("SetEnrolledFingers"))
            QVERIFY(control(setUp, {QStringList()}));
        else if (!setUp.isEmpty())
            QVERIFY(control(setUp));

        FprintdBiometrics reader(m_bus->connection());
        BiometricIDAuth auth(&reader);
        QCOMPARE(auth.loginReason(), QStringLiteral("Logging in with Touch ID"));
        const Outcome outcome = check(auth);
        QVERIFY(outcome.answered);
        QVERIFY(!outcome.answeredInsideCall);
        QCOMPARE(outcome.message.value_or(QString()), message);
        QCOMPARE(outcome.message.has_value(), !message.isEmpty());
        if (!outcome.message)
            QVERIFY(outcome.onMainThread);
        QVERIFY(!reader.isEvaluating());
        // A claimed reader is always given back.
        const QStringList calls = deviceCalls();
        QCOMPARE(calls.count(QStringLiteral("Claim")), calls.count(QStringLiteral("Release")));
    }

    void cancellingEndsTheCheck()
    {
        QVERIFY(control(QStringLiteral("SetVerifyResults"),
                        {QStringList{QStringLiteral("verify-retry-scan"), QStringLiteral("verify-retry-scan"),
                                     QStringLiteral("verify-retry-scan"), QStringLiteral("verify-match")}}));
        FprintdBiometrics reader(m_bus->connection());
        BiometricIDAuth auth(&reader);
        Outcome outcome;
        auth.authenticateUser([&](std::optional<QString> message) {
            outcome.answered = true;
            outcome.message = std::move(message);
        });
        QTRY_VERIFY(reader.isEvaluating() && deviceCalls().contains(QStringLiteral("VerifyStart any")));
        reader.cancel();
        QTRY_VERIFY(outcome.answered);
        QCOMPARE(outcome.message.value_or(QString()), QStringLiteral("You pressed cancel."));
        QTRY_COMPARE(deviceCalls().count(QStringLiteral("Release")), 1);
    }

    void fiveFailuresLockTheReader()
    {
        QVERIFY(control(QStringLiteral("SetVerifyResults"), {QStringList{QStringLiteral("verify-no-match")}}));
        FprintdBiometrics reader(m_bus->connection());
        BiometricIDAuth auth(&reader);
        for (int i = 0; i < FprintdBiometrics::kMaxFailedAttempts; ++i)
            QCOMPARE(check(auth).message.value_or(QString()),
                     QStringLiteral("There was a problem verifying your identity."));
        QVERIFY(!auth.canEvaluatePolicy());
        QCOMPARE(check(auth).message.value_or(QString()), QStringLiteral("Face ID/Touch ID is locked."));

        // The lock wears off.
        reader.setLockoutDuration(0);
        QVERIFY(control(QStringLiteral("SetVerifyResults"), {QStringList{QStringLiteral("verify-match")}}));
        QVERIFY(auth.canEvaluatePolicy());
        QVERIFY(!check(auth).message.has_value());
    }

    void codesWithoutAReaderCase_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("message");
        QTest::newRow("password fallback") << int(Biometrics::UserFallback) << QStringLiteral("You pressed password.");
        QTest::newRow("system cancel") << int(Biometrics::SystemCancel)
                                       << QStringLiteral("Face ID/Touch ID may not be configured");
        QTest::newRow("no passcode") << int(Biometrics::PasscodeNotSet)
                                     << QStringLiteral("Face ID/Touch ID may not be configured");
    }

    void codesWithoutAReaderCase()
    {
        QFETCH(int, code);
        QFETCH(QString, message);
        QCOMPARE(BiometricIDAuth::messageForFailure(code), message);
        QCOMPARE(BiometricIDAuth::messageForFailure(std::nullopt), QStringLiteral("Face ID/Touch ID may not be configured"));
    }
};

QTEST_GUILESS_MAIN(TestBiometrics)
#include "tst_biometrics.moc"
