#pragma once

#include "ParseClientConfiguration.h"
#include "ParseCommand.h"
#include "ParseCommandResult.h"

#include <QObject>
#include <QPointer>
#include <functional>

class QNetworkAccessManager;
class QNetworkReply;

// Sends commands to the backend: Parse headers, real HTTP verbs, a request id on every write
// (kept across retries so the server applies a retried write once), jittered back-off retries
// on network failures and 5xx answers, and every failure turned into a PFError.
// Completions always arrive later through the event loop.
class ParseCommandRunner : public QObject {
    Q_OBJECT
public:
    // The result is the completion's to take from (a query takes its rows out without a copy).
    using Completion = std::function<void(ParseCommandResult &result)>;

    ParseCommandRunner(ParseClientConfiguration configuration, QNetworkAccessManager *network,
                       QObject *parent = nullptr);

    // The installation id sent with every request; asked for each time.
    void setInstallationIdProvider(std::function<QString()> provider);

    virtual void runCommand(ParseCommand command, Completion completion);

    // Pause before attempt number `attempt` (1 = the first retry): base * 2^(attempt-1) * [1, 2).
    [[nodiscard]] static int retryDelayMs(int baseMs, int attempt, double jitter);

Q_SIGNALS:
    // The server answered something (any status): it is reachable.
    void serverReached();

private:
    void send(const ParseCommand &command, const Completion &completion, int attempt);
    void finish(QNetworkReply *reply, const ParseCommand &command, const Completion &completion, int attempt);
    [[nodiscard]] static ParseCommandResult interpret(QNetworkReply *reply, const ParseCommand &command);

    ParseClientConfiguration m_configuration;
    QPointer<QNetworkAccessManager> m_network;
    std::function<QString()> m_installationId;
};
