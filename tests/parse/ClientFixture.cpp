#include "ClientFixture.h"

#include "PFError.h"
#include "PFObject.h"
#include "PFQuery.h"
#include "PFUser.h"
#include "Parse.h"
#include "ParseCore.h"
#include "TestBackend.h"

#include <QTest>
#include <QUuid>

ParseClientConfiguration ClientFixture::configuration(const QString &dataDirectory, PFSecureStorage *secureStorage,
                                                      const QString &server)
{
    return ParseClientConfiguration::configurationWithBlock([&](ParseClientConfiguration &c) {
        c.localDatastoreEnabled = true;
        c.applicationId = TestBackend::instance().applicationId();
        c.server = server.isEmpty() ? TestBackend::instance().serverUrl().toString() : server;
        c.clientKey = TestBackend::instance().clientKey();
        c.dataDirectory = dataDirectory;
        c.secureStorage = secureStorage;
        c.networkRetryAttempts = 1;
        c.retryInitialDelayMs = 50;
        c.eventuallyRetryIntervalMs = 200;
    });
}

namespace {
// A signed-in user's session goes into the secure storage after the call that signed in: a
// program that runs on has it remembered before it quits.
void waitUntilRemembered()
{
    (void)QTest::qWaitFor([] { return !Parse::core() || !Parse::core()->currentUserController().isRemembering(); },
                          30000);
}
} // namespace

void ClientFixture::start(const ParseClientConfiguration &configuration)
{
    waitUntilRemembered();
    Parse::setCore(nullptr);
    Parse::initializeWithConfiguration(configuration);
    // As the app does at start: nothing reads the current user before the store has answered.
    QVERIFY(QTest::qWaitFor([] { return Parse::core()->currentUserController().isLoaded(); }, 30000));
}

void ClientFixture::stop()
{
    Parse::setCore(nullptr);
}

namespace {
template <class Start> bool waitFor(Start start, int *errorCode)
{
    bool done = false;
    int code = 0;
    start([&](const PFError *error) {
        code = error ? error->code() : 0;
        done = true;
    });
    if (!QTest::qWaitFor([&] { return done; }, 30000))
        code = -999;
    waitUntilRemembered();
    if (errorCode)
        *errorCode = code;
    return code == 0;
}
} // namespace

bool ClientFixture::save(const PFObjectPtr &object, int *errorCode)
{
    return waitFor([&](auto finish) { object->saveInBackgroundWithBlock([=](bool, const PFError *e) { finish(e); }); },
                   errorCode);
}

QList<PFObjectPtr> ClientFixture::find(const PFQuery &query, int *errorCode)
{
    QList<PFObjectPtr> found;
    waitFor(
        [&](auto finish) {
            query.findObjectsInBackgroundWithBlock(
                [&found, finish](const QList<PFObjectPtr> &objects, const PFError *e) {
                    found = objects;
                    finish(e);
                });
        },
        errorCode);
    return found;
}

PFUserPtr ClientFixture::logIn(const QString &username, const QString &password, int *errorCode)
{
    PFUserPtr user;
    waitFor(
        [&](auto finish) {
            PFUser::logInWithUsernameInBackground(username, password,
                                                  [&user, finish](const PFUserPtr &u, const PFError *e) {
                                                      user = u;
                                                      finish(e);
                                                  });
        },
        errorCode);
    return user;
}

PFUserPtr ClientFixture::signUp(const QString &username)
{
    const QString name =
        username.isEmpty() ? QStringLiteral("t%1@example.test").arg(QUuid::createUuid().toString(QUuid::Id128).left(12))
                           : username;
    auto user = std::make_shared<PFUser>();
    user->setUsername(name);
    user->setEmail(name);
    user->setPassword(QStringLiteral("Passw0rdX"));
    user->setObject(QStringLiteral("Ana"), QStringLiteral("firstName"));
    user->setObject(true, QStringLiteral("isAuthorised")); // as registration does: the backend refuses others
    int code = 0;
    waitFor([&](auto finish) { user->signUpInBackgroundWithBlock([=](bool, const PFError *e) { finish(e); }); }, &code);
    if (code != 0) {
        qWarning() << "sign-up failed with code" << code;
        return nullptr;
    }
    return user;
}
