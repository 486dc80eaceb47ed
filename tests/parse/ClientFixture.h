#pragma once

#include "PFTypes.h"
#include "ParseClientConfiguration.h"

#include <QString>

class PFSecureStorage;
class PFError;

// Sets up the backend client for a test: against the local test backend (or another
// server), with the test's own data directory, quick retries.
class ClientFixture {
public:
    [[nodiscard]] static ParseClientConfiguration
    configuration(const QString &dataDirectory, PFSecureStorage *secureStorage = nullptr, const QString &server = {});
    // (Re)starts the client, as a program start would.
    static void start(const ParseClientConfiguration &configuration);
    static void stop();

    // Blocking forms of the background calls, for test set-up and checks.
    static bool save(const PFObjectPtr &object, int *errorCode = nullptr);
    static QList<PFObjectPtr> find(const class PFQuery &query, int *errorCode = nullptr);
    // Signs up a new user (first name "Ana", password "Passw0rdX") and makes it the current user.
    static PFUserPtr signUp(const QString &username = {});
    static PFUserPtr logIn(const QString &username, const QString &password, int *errorCode = nullptr);
};
