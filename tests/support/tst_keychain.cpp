// The saved password against a real Secret Service (the session's gnome-keyring): add, update
// in place, missing and unreadable items, and a store that cannot be reached.
#include "KeychainPasswordItem.h"
#include "PrivateBus.h"
#include "SecureStore.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>
#include <QUuid>
#include <cstdio>

namespace {

using KeychainError = KeychainPasswordItem::KeychainError;

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

// Run in a child whose session bus does not exist: one read and one save, outcomes printed.
int probeUnreachableStore()
{
    SecureStore store(QStringLiteral("Vantrel Pro session"), 3000);
    KeychainPasswordItem item(store, KeychainPasswordItem::kServiceName, QStringLiteral("nobody@example.test"));
    std::optional<KeychainError> readError;
    const bool read = item.readPassword(&readError).has_value();
    std::optional<KeychainError> saveError;
    const bool saved = item.savePassword(QStringLiteral("Secret1x"), &saveError);
    std::printf("read=%d kind=%d status=%d saved=%d kind=%d status=%d\n", read,
                readError ? int(readError->kind()) : -1, readError ? readError->status() : 0, saved,
                saveError ? int(saveError->kind()) : -1, saveError ? saveError->status() : 0);
    return 0;
}

} // namespace

class TestKeychain : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // Without a running Secret Service every case below would only test the failure path.
        SecureStore store(QStringLiteral("Vantrel Pro probe"));
        QVERIFY2(store.read(QStringLiteral("Vantrel Pro probe"), freshAccount()).status ==
                     SecureStore::Status::NotFound,
                 "no unlocked Secret Service: run inside dbus-run-session with scripts/session-env.sh");
    }

    void savingAddsThenReplacesInPlace()
    {
        SecureStore store(QStringLiteral("unused"));
        const QString account = freshAccount();
        KeychainPasswordItem item(store, KeychainPasswordItem::kServiceName, account);

        std::optional<KeychainError> error;
        QVERIFY(!item.readPassword(&error));
        QVERIFY(error);
        QCOMPARE(error->kind(), KeychainError::Kind::noPassword);

        QVERIFY(item.savePassword(QStringLiteral("Fírst pässword 1")));
        QCOMPARE(item.readPassword().value_or(QString()), QStringLiteral("Fírst pässword 1"));
        QCOMPARE(itemsForAccount(account), 1);

        QVERIFY(item.savePassword(QStringLiteral("Second2x")));
        QCOMPARE(item.readPassword().value_or(QString()), QStringLiteral("Second2x"));
        QCOMPARE(itemsForAccount(account), 1);

        // The item is the app's: the session token's service and other accounts do not see it.
        KeychainPasswordItem other(store, KeychainPasswordItem::kServiceName, freshAccount());
        QVERIFY(!other.readPassword());
        QCOMPARE(store.read(QStringLiteral("Vantrel Pro session"), account).status, SecureStore::Status::NotFound);
        KeychainPasswordItem grouped(store, KeychainPasswordItem::kServiceName, account, QStringLiteral("team"));
        QVERIFY(!grouped.readPassword());

        store.remove(KeychainPasswordItem::kServiceName, account);
    }

    void unreadableDataIsReportedAndNotOverwritten()
    {
        SecureStore store(QStringLiteral("unused"));
        const QString account = freshAccount();
        QVERIFY(store.write(KeychainPasswordItem::kServiceName, account, QByteArray("\xff\xfe\xc3", 3)).ok());
        KeychainPasswordItem item(store, KeychainPasswordItem::kServiceName, account);

        std::optional<KeychainError> error;
        QVERIFY(!item.readPassword(&error));
        QCOMPARE(error->kind(), KeychainError::Kind::unexpectedPasswordData);

        // A save first reads; any failure but a missing item is passed on and nothing is written.
        error.reset();
        QVERIFY(!item.savePassword(QStringLiteral("Replacement1"), &error));
        QCOMPARE(error->kind(), KeychainError::Kind::unexpectedPasswordData);
        QCOMPARE(store.read(KeychainPasswordItem::kServiceName, account).data, QByteArray("\xff\xfe\xc3", 3));
        store.remove(KeychainPasswordItem::kServiceName, account);
    }

    void unreachableStoreIsAnUnhandledErrorWithACode()
    {
        // A session bus of its own where no Secret Service runs.
        PrivateBus bus;
        QVERIFY(bus.isRunning());
        QProcess child;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("VANTREL_KEYCHAIN_PROBE"), QStringLiteral("1"));
        env.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), bus.address());
        env.remove(QStringLiteral("DISPLAY"));
        child.setProcessEnvironment(env);
        child.start(QCoreApplication::applicationFilePath(), {});
        QVERIFY(child.waitForFinished(30000));
        const QString out = QString::fromUtf8(child.readAllStandardOutput()).trimmed();
        const QString expected = QStringLiteral("read=0 kind=%1 status=%2 saved=0 kind=%1 status=%2")
                                     .arg(int(KeychainError::Kind::unhandledError))
                                     .arg(KeychainPasswordItem::kStatusNotAvailable);
        QCOMPARE(out, expected);
    }

    void errorsDescribeThemselves()
    {
        QVERIFY(KeychainError::unhandledError(-25291, QStringLiteral("no bus"))
                    .localizedDescription()
                    .contains(QLatin1String("-25291")));
        QVERIFY(!KeychainError::noPassword().localizedDescription().isEmpty());
        QCOMPARE(KeychainError::noPassword().status(), 0);
    }
};

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (qEnvironmentVariableIsSet("VANTREL_KEYCHAIN_PROBE"))
        return probeUnreachableStore();
    TestKeychain test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_keychain.moc"
