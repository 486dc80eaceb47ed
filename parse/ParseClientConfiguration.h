#pragma once

#include <QString>
#include <QUrl>
#include <QUrlQuery>
#include <functional>

class PFSecureStorage;
class QNetworkAccessManager;

// How the backend client reaches its server and where it keeps its own files. Built once
// with configurationWithBlock and handed to Parse::initializeWithConfiguration.
class ParseClientConfiguration {
public:
    [[nodiscard]] static ParseClientConfiguration
    configurationWithBlock(const std::function<void(ParseClientConfiguration &configuration)> &block);

    bool localDatastoreEnabled = false;
    QString applicationId;
    QString clientKey;
    QString server; // an origin ("https://api.example.org") or an origin with a path ("http://127.0.0.1:1337/parse")

    // Where the current user's record, the installation id and the eventually queue are kept.
    // Empty: the application's data location.
    QString dataDirectory;
    // The one place the session token is kept. Without it a session lasts until the program ends.
    PFSecureStorage *secureStorage = nullptr;
    // The network access to use; null makes the client create its own.
    QNetworkAccessManager *networkAccessManager = nullptr;

    // How often a request failed by the network or a 5xx answer is sent again, and the first pause.
    int networkRetryAttempts = 4;
    int retryInitialDelayMs = 500;
    // How long a request may stay silent before it counts as a network failure.
    int requestTimeoutMs = 30000;
    // Pause before the eventually queue tries again after the server was unreachable.
    int eventuallyRetryIntervalMs = 10000;

    // The URL of a REST path below the server, keeping any path the server URL has.
    [[nodiscard]] QUrl endpoint(const QString &path, const QUrlQuery &query = {}) const;
    // The data directory actually used.
    [[nodiscard]] QString effectiveDataDirectory() const;
};
