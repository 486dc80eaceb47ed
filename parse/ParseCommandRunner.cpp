#include "ParseCommandRunner.h"

#include "PFJsonReader.h"
#include "PFLogging.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QRandomGenerator>
#include <QTimer>
#include <QUuid>
#include <cmath>

ParseCommandRunner::ParseCommandRunner(ParseClientConfiguration configuration, QNetworkAccessManager *network,
                                       QObject *parent)
    : QObject(parent), m_configuration(std::move(configuration)), m_network(network)
{
    if (!m_network)
        m_network = new QNetworkAccessManager(this);
}

void ParseCommandRunner::setInstallationIdProvider(std::function<QString()> provider)
{
    m_installationId = std::move(provider);
}

void ParseCommandRunner::runCommand(ParseCommand command, Completion completion)
{
    if (command.isWrite() && command.requestId.isEmpty())
        command.requestId = QUuid::createUuid().toString(QUuid::WithoutBraces);
    send(command, completion, 0);
}

int ParseCommandRunner::retryDelayMs(int baseMs, int attempt, double jitter)
{
    return static_cast<int>(baseMs * std::ldexp(1.0, attempt - 1) * (1.0 + jitter));
}

void ParseCommandRunner::send(const ParseCommand &command, const Completion &completion, int attempt)
{
    if (!m_network) {
        ParseCommandResult result;
        result.error = PFError::connectionFailed(QStringLiteral("no network access"));
        result.transient = true;
        QTimer::singleShot(0, this, [completion, result]() mutable { completion(result); });
        return;
    }
    const QUrl url =
        command.absoluteUrl.isEmpty() ? m_configuration.endpoint(command.path, command.query) : command.absoluteUrl;
    QNetworkRequest request(url);
    request.setTransferTimeout(m_configuration.requestTimeoutMs);
    // Parse headers go only to our own server, never to a file host elsewhere.
    const QUrl server(m_configuration.server);
    if (url.scheme() == server.scheme() && url.host() == server.host() && url.port() == server.port()) {
        request.setRawHeader("X-Parse-Application-Id", m_configuration.applicationId.toUtf8());
        if (!m_configuration.clientKey.isEmpty())
            request.setRawHeader("X-Parse-Client-Key", m_configuration.clientKey.toUtf8());
        if (!command.sessionToken.isEmpty())
            request.setRawHeader("X-Parse-Session-Token", command.sessionToken.toUtf8());
        if (m_installationId) {
            const QString installationId = m_installationId();
            if (!installationId.isEmpty())
                request.setRawHeader("X-Parse-Installation-Id", installationId.toUtf8());
        }
        if (!command.requestId.isEmpty())
            request.setRawHeader("X-Parse-Request-Id", command.requestId.toUtf8());
    }
    if (!command.body.isEmpty() || command.isWrite())
        request.setHeader(QNetworkRequest::ContentTypeHeader, command.contentType);

    // The path and the status only: bodies may hold passwords, and tokens travel in headers.
    qCDebug(lcParseHttp).noquote() << command.method << url.path() << "attempt" << attempt + 1;
    if (!command.confidential && !command.body.isEmpty())
        qCDebug(lcParseHttp).noquote() << "  body" << command.body.left(2000);

    QNetworkReply *reply = m_network->sendCustomRequest(request, command.method, command.body);
    connect(reply, &QNetworkReply::finished, this,
            [this, reply, command, completion, attempt] { finish(reply, command, completion, attempt); });
}

void ParseCommandRunner::finish(QNetworkReply *reply, const ParseCommand &command, const Completion &completion,
                                int attempt)
{
    reply->deleteLater();
    ParseCommandResult result = interpret(reply, command);
    if (result.httpStatus > 0)
        Q_EMIT serverReached();
    qCDebug(lcParseHttp).noquote() << command.method << reply->url().path() << "->" << result.httpStatus
                                   << (result.error ? result.error->localizedDescription() : QString());
    if (result.transient && attempt < m_configuration.networkRetryAttempts) {
        const int delay = retryDelayMs(m_configuration.retryInitialDelayMs, attempt + 1,
                                       QRandomGenerator::global()->generateDouble());
        qCInfo(lcParseHttp).noquote() << command.method << reply->url().path() << "failed"
                                      << "(" + result.error->localizedDescription() + "), retrying in" << delay << "ms";
        QTimer::singleShot(delay, this,
                           [this, command, completion, attempt] { send(command, completion, attempt + 1); });
        return;
    }
    completion(result);
}

ParseCommandResult ParseCommandRunner::interpret(QNetworkReply *reply, const ParseCommand &command)
{
    ParseCommandResult result;
    const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    // Errors below 200 are the network's and the proxy's (refused, cut off, timed out), even
    // when a status line had arrived; higher ones only restate the HTTP status.
    const bool networkFailure = reply->error() != QNetworkReply::NoError && reply->error() < 200;
    if (!status.isValid() || networkFailure) {
        result.error = PFError::connectionFailed(reply->errorString());
        result.transient = true;
        return result;
    }
    result.httpStatus = status.toInt();
    result.replayed = reply->rawHeader("X-Parse-Request-Replayed") == "true";
    const QByteArray body = reply->readAll();
    const bool success = result.httpStatus >= 200 && result.httpStatus < 300;
    result.transient = result.httpStatus >= 500;
    if (success && !command.expectsJson) {
        result.data = body;
        return result;
    }
    PFJsonReader reader;
    QVariant document = reader.read(body);
    if (document.typeId() != QMetaType::QVariantMap) {
        result.error = PFError::unreadableReply(
            result.httpStatus, document.isValid() ? QStringLiteral("not a JSON object") : reader.error());
        return result;
    }
    result.json = PFJsonReader::takeMap(document);
    if (success)
        return result;
    const QVariant code = result.json.value(QStringLiteral("code"));
    const QVariant message = result.json.value(QStringLiteral("error"));
    const bool hasCode = PFJsonReader::isNumber(code);
    const bool hasMessage = message.typeId() == QMetaType::QString;
    if (!hasCode && !hasMessage) {
        result.error = PFError::unreadableReply(result.httpStatus, QStringLiteral("no error code"));
        return result;
    }
    result.error = PFError(hasCode ? code.toInt() : PFError::OtherCause,
                           hasMessage ? message.toString() : QStringLiteral("HTTP %1").arg(result.httpStatus));
    return result;
}

QString ParseCommandResult::string(const QString &key) const
{
    const QVariant value = json.value(key);
    return value.typeId() == QMetaType::QString ? value.toString() : QString();
}
