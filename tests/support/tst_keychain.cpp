// The secure store and the saved password against a real Secret Service: the session's
// gnome-keyring for the ordinary cases; for the failures, keyrings of their own on private
// buses: none at all, one locked with nobody to unlock it, and one locked whose unlock prompt
// (the real one, on a virtual display) the user answers after half a minute.
#include "KeychainPasswordItem.h"
#include "PrivateBus.h"
#include "SecureStore.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QElapsedTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QUuid>
#include <cstdio>

namespace {

using KeychainError = KeychainPasswordItem::KeychainError;
const QString kKeyringPassword = QStringLiteral("keyring-pw");

QString freshAccount()
{
    return QUuid::createUuid().toString(QUuid::Id128).left(16) + QStringLiteral("@example.test");
}

// How many items the Secret Service holds for an account, as another program sees them.
int itemsForAccount(const QString &account)
{
    QProcess tool;
    tool.start(QStringLiteral("secret-tool"), {QStringLiteral("search"), QStringLiteral("--all"),
                                               QStringLiteral("user"), account});
    if (!tool.waitForFinished(10000))
        return -1;
    const QString out = QString::fromUtf8(tool.readAllStandardOutput() + tool.readAllStandardError());
    return static_cast<int>(out.count(QStringLiteral("attribute.user = ")));
}

struct Outcome {
    bool done = false;
    std::optional<QString> password;
    std::optional<KeychainError> error;
};

Outcome readNow(const KeychainPasswordItem &item)
{
    Outcome outcome;
    item.readPasswordInBackground([&](const std::optional<QString> &password, const std::optional<KeychainError> &error) {
        outcome = {true, password, error};
    });
    (void)QTest::qWaitFor([&] { return outcome.done; }, 20000);
    return outcome;
}

Outcome saveNow(const KeychainPasswordItem &item, const QString &password)
{
    Outcome outcome;
    item.savePasswordInBackground(password, [&](const std::optional<KeychainError> &error) {
        outcome = {true, {}, error};
    });
    (void)QTest::qWaitFor([&] { return outcome.done; }, 20000);
    return outcome;
}

QString describe(const Outcome &outcome)
{
    if (!outcome.done)
        return QStringLiteral("no answer");
    if (outcome.error)
        return QStringLiteral("error %1").arg(outcome.error->status());
    return outcome.password ? QStringLiteral("password ") + *outcome.password : QStringLiteral("ok");
}

// Run in a child on a bus of the test's making: one read of an item saved before, one save,
// optionally one read afterwards; the outcomes printed one a line.
int probe()
{
    SecureStore store(QStringLiteral("Vantrel Pro session"));
    KeychainPasswordItem item(store, KeychainPasswordItem::kServiceName, qEnvironmentVariable("VANTREL_PROBE_ACCOUNT"));
    const QString scenario = qEnvironmentVariable("VANTREL_KEYCHAIN_PROBE");
    if (scenario == QLatin1String("prepare")) {
        std::printf("%s\n", qPrintable(describe(saveNow(item, QStringLiteral("Saved before")))));
        return 0;
    }
    // The unlock prompt comes with the save's first step (a read), as at a sign-in.
    if (scenario != QLatin1String("unlock"))
        std::printf("read: %s\n", qPrintable(describe(readNow(item))));
    QElapsedTimer clock;
    clock.start();
    bool reportedSlow = false;
    Outcome saved;
    item.savePasswordInBackground(
        QStringLiteral("Unlocked later 1"), [&](const std::optional<KeychainError> &error) { saved = {true, {}, error}; },
        [&] { reportedSlow = true; });
    (void)QTest::qWaitFor([&] { return saved.done; }, 120000);
    std::printf("save: %s after %lld s%s\n", qPrintable(describe(saved)), clock.elapsed() / 1000,
                reportedSlow ? " (reported slow)" : "");
    std::printf("read again: %s\n", qPrintable(describe(readNow(item))));
    std::fflush(stdout);
    return 0;
}

// A keyring of its own on a private bus, in a throwaway home; locked on request. With a
// display the bus starts the system's unlock prompt on it when a program needs the keyring.
class PrivateKeyring {
    PrivateBus m_bus;

public:
    explicit PrivateKeyring(const QString &display)
    {
        // What the bus starts on demand (the unlock prompt) talks to this bus, on this display.
        qDBusRegisterMetaType<QMap<QString, QString>>();
        QDBusMessage environment = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("UpdateActivationEnvironment"));
        environment << QVariant::fromValue(QMap<QString, QString>{
            {QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_bus.address()}, {QStringLiteral("DISPLAY"), display}});
        m_bus.connection().call(environment);
        m_env = QProcessEnvironment::systemEnvironment();
        m_env.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_bus.address());
        m_env.insert(QStringLiteral("HOME"), m_home.path());
        m_env.insert(QStringLiteral("XDG_DATA_HOME"), m_home.filePath(QStringLiteral("data")));
        m_env.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_home.filePath(QStringLiteral("run")));
        QDir(m_home.path()).mkpath(QStringLiteral("run"));
        QDir(m_home.path()).mkpath(QStringLiteral("data"));
        QFile::setPermissions(m_home.filePath(QStringLiteral("run")), QFileDevice::ReadOwner |
                                                                          QFileDevice::WriteOwner |
                                                                          QFileDevice::ExeOwner);
        QProcess daemon;
        daemon.setProcessEnvironment(m_env);
        daemon.start(QStringLiteral("gnome-keyring-daemon"),
                     {QStringLiteral("--unlock"), QStringLiteral("--components=secrets")});
        daemon.write(kKeyringPassword.toUtf8());
        daemon.closeWriteChannel();
        m_running = daemon.waitForFinished(10000) && daemon.exitCode() == 0;
    }

    [[nodiscard]] bool isRunning() const { return m_running; }

    bool lock()
    {
        QDBusMessage call = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.secrets"), QStringLiteral("/org/freedesktop/secrets"),
            QStringLiteral("org.freedesktop.Secret.Service"), QStringLiteral("Lock"));
        call << QVariant::fromValue(QList<QDBusObjectPath>{
            QDBusObjectPath(QStringLiteral("/org/freedesktop/secrets/collection/login"))});
        return m_bus.connection().call(call).type() == QDBusMessage::ReplyMessage;
    }

    // Starts the probe of `scenario` in a child that uses this keyring.
    void startProbe(QProcess &child, const QString &scenario, const QString &account) const
    {
        QProcessEnvironment env = m_env;
        env.insert(QStringLiteral("VANTREL_KEYCHAIN_PROBE"), scenario);
        env.insert(QStringLiteral("VANTREL_PROBE_ACCOUNT"), account);
        env.remove(QStringLiteral("DISPLAY"));
        child.setProcessEnvironment(env);
        child.start(QCoreApplication::applicationFilePath(), {});
    }

    QString runProbe(const QString &scenario, const QString &account) const
    {
        QProcess child;
        startProbe(child, scenario, account);
        child.waitForFinished(60000);
        return QString::fromUtf8(child.readAllStandardOutput()).trimmed();
    }

private:
    QTemporaryDir m_home;
    QProcessEnvironment m_env;
    bool m_running = false;
};

} // namespace

class TestKeychain : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // Without a running Secret Service the first cases would only test the failure path.
        SecureStore store(QStringLiteral("Vantrel Pro probe"));
        KeychainPasswordItem item(store, QStringLiteral("Vantrel Pro probe"), freshAccount());
        const Outcome outcome = readNow(item);
        QVERIFY2(outcome.error && outcome.error->kind() == KeychainError::Kind::noPassword,
                 "no unlocked Secret Service: run inside dbus-run-session with scripts/session-env.sh");
    }

    void savingAddsThenReplacesInPlace()
    {
        SecureStore store(QStringLiteral("unused"));
        const QString account = freshAccount();
        KeychainPasswordItem item(store, KeychainPasswordItem::kServiceName, account);

        bool answered = false;
        item.readPasswordInBackground([&](auto &&, auto &&) { answered = true; });
        QVERIFY(!answered); // never inside the call
        QTRY_VERIFY(answered);
        Outcome outcome = readNow(item);
        QCOMPARE(outcome.error->kind(), KeychainError::Kind::noPassword);

        QVERIFY(!saveNow(item, QStringLiteral("Fírst pässword 1")).error);
        QCOMPARE(readNow(item).password, std::optional(QStringLiteral("Fírst pässword 1")));
        QVERIFY(!saveNow(item, QStringLiteral("Second2x")).error);
        QCOMPARE(readNow(item).password, std::optional(QStringLiteral("Second2x")));
        QCOMPARE(itemsForAccount(account), 1);

        // The item is the app's: other accounts, another group and the session's service do not see it.
        QVERIFY(!readNow(KeychainPasswordItem(store, KeychainPasswordItem::kServiceName, freshAccount())).password);
        QVERIFY(!readNow(KeychainPasswordItem(store, KeychainPasswordItem::kServiceName, account, QStringLiteral("team")))
                     .password);
        QVERIFY(!readNow(KeychainPasswordItem(store, QStringLiteral("Vantrel Pro session"), account)).password);

        // The old blocking calls the sign-in screens still use give the same answers.
        QCOMPARE(item.readPassword().value_or(QString()), QStringLiteral("Second2x"));
        QVERIFY(item.savePassword(QStringLiteral("Third3x")));
        QCOMPARE(readNow(item).password, std::optional(QStringLiteral("Third3x")));
        store.remove(KeychainPasswordItem::kServiceName, account);
    }

    void unreadableDataIsReportedAndNotOverwritten()
    {
        SecureStore store(QStringLiteral("unused"));
        const QString account = freshAccount();
        bool written = false;
        store.write(KeychainPasswordItem::kServiceName, account, QByteArray("\xff\xfe\xc3", 3),
                    [&](const PFSecureStorage::Result &result) { written = result.ok(); });
        QTRY_VERIFY(written);
        KeychainPasswordItem item(store, KeychainPasswordItem::kServiceName, account);
        QCOMPARE(readNow(item).error->kind(), KeychainError::Kind::unexpectedPasswordData);
        // A save first reads; any failure but a missing item is passed on and nothing is written.
        QCOMPARE(saveNow(item, QStringLiteral("Replacement1")).error->kind(), KeychainError::Kind::unexpectedPasswordData);
        QByteArray stored;
        store.read(KeychainPasswordItem::kServiceName, account,
                   [&](const PFSecureStorage::Result &result) { stored = result.data; });
        QTRY_COMPARE(stored, QByteArray("\xff\xfe\xc3", 3));
        store.remove(KeychainPasswordItem::kServiceName, account);
    }

    void missingAndLockedStoresAreToldApart()
    {
        const QString missing = QString::number(KeychainPasswordItem::kStatusNotAvailable);
        const QString locked = QString::number(KeychainPasswordItem::kStatusInteractionNotAllowed);

        // A session bus where no Secret Service runs, nor can be started.
        PrivateBus bus(PrivateBus::Services::Bare);
        QVERIFY(bus.isRunning());
        QProcess child;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("VANTREL_KEYCHAIN_PROBE"), QStringLiteral("missing"));
        env.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), bus.address());
        env.remove(QStringLiteral("DISPLAY"));
        child.setProcessEnvironment(env);
        child.start(QCoreApplication::applicationFilePath(), {});
        QVERIFY(child.waitForFinished(60000));
        QStringList lines = QString::fromUtf8(child.readAllStandardOutput()).split(u'\n');
        QCOMPARE(lines.value(0), QStringLiteral("read: error ") + missing);
        QVERIFY2(lines.value(1).startsWith(QStringLiteral("save: error ") + missing), qPrintable(lines.value(1)));

        // A keyring that holds the item but is locked, with no display for its unlock prompt:
        // the item is not reported missing, and the program goes on.
        PrivateKeyring keyring({});
        QVERIFY(keyring.isRunning());
        const QString account = freshAccount();
        QCOMPARE(keyring.runProbe(QStringLiteral("prepare"), account), QStringLiteral("ok"));
        QVERIFY(keyring.lock());
        lines = keyring.runProbe(QStringLiteral("locked"), account).split(u'\n');
        QCOMPARE(lines.value(0), QStringLiteral("read: error ") + locked);
        QVERIFY2(lines.value(1).startsWith(QStringLiteral("save: error ") + locked), qPrintable(lines.value(1)));
    }

    void keyringUnlockedAfterHalfAMinuteStillGetsThePassword()
    {
        QProcess xvfb;
        xvfb.start(QStringLiteral("Xvfb"), {QStringLiteral("-displayfd"), QStringLiteral("1"),
                                            QStringLiteral("-nolisten"), QStringLiteral("tcp"),
                                            QStringLiteral("-screen"), QStringLiteral("0"),
                                            QStringLiteral("800x600x24")});
        QVERIFY(xvfb.waitForReadyRead(10000));
        const QString display = u':' + QString::fromUtf8(xvfb.readLine()).trimmed();
        PrivateKeyring keyring(display);
        QVERIFY(keyring.isRunning());
        const QString account = freshAccount();
        QCOMPARE(keyring.runProbe(QStringLiteral("prepare"), account), QStringLiteral("ok"));
        QVERIFY(keyring.lock());

        QProcess child;
        keyring.startProbe(child, QStringLiteral("unlock"), account);
        QVERIFY(child.waitForStarted());
        // The read asks for the unlock prompt; the user answers it after 31 seconds.
        QTest::qWait(31000);
        QCOMPARE(child.state(), QProcess::Running);
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("DISPLAY"), display);
        for (const QStringList &keys : {QStringList{QStringLiteral("type"), kKeyringPassword},
                                        QStringList{QStringLiteral("key"), QStringLiteral("Return")}}) {
            QProcess typist;
            typist.setProcessEnvironment(env);
            typist.start(QStringLiteral("xdotool"), keys);
            QVERIFY(typist.waitForFinished(20000));
        }
        QVERIFY(child.waitForFinished(60000));
        const QStringList lines = QString::fromUtf8(child.readAllStandardOutput()).split(u'\n');
        xvfb.terminate();
        xvfb.waitForFinished(5000);
        QVERIFY2(QRegularExpression(QStringLiteral("^save: ok after 3\\d s \\(reported slow\\)$")).match(lines.value(0)).hasMatch(),
                 qPrintable(lines.value(0)));
        QCOMPARE(lines.value(1), QStringLiteral("read again: password Unlocked later 1"));
    }
};

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (qEnvironmentVariableIsSet("VANTREL_KEYCHAIN_PROBE"))
        return probe();
    TestKeychain test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_keychain.moc"
