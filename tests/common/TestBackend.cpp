#include "TestBackend.h"

#include <QEventLoop>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>
#include <QUuid>

const TestBackend &TestBackend::instance()
{
    static const TestBackend backend(
        qEnvironmentVariable("VANTREL_TEST_BACKEND_STATE", QStringLiteral(VANTREL_TEST_BACKEND_STATE)));
    return backend;
}

TestBackend TestBackend::fromStateFile(const QString &path)
{
    return TestBackend(path);
}

TestBackend::TestBackend(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        m_error = QStringLiteral("no state file at %1 (start it with server/backend start --throwaway)").arg(path);
        return;
    }
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        const qsizetype eq = line.indexOf(u'=');
        if (line.startsWith(u'#') || eq <= 0)
            continue;
        QString v = line.mid(eq + 1);
        if (v.size() >= 2 && (v.startsWith(u'\'') || v.startsWith(u'"')) && v.endsWith(v.front()))
            v = v.mid(1, v.size() - 2);
        m_values.insert(line.left(eq), v);
    }
    m_available = !serverUrl().isEmpty() && !applicationId().isEmpty();
    if (!m_available)
        m_error = QStringLiteral("state file %1 lacks VANTREL_SERVER_URL or VANTREL_APP_ID").arg(path);
}

TestBackend::Reply TestBackend::request(const QByteArray &method, const QString &path, const QJsonObject &body,
                                        bool useMasterKey, const QString &sessionToken,
                                        const QList<Header> &headers) const
{
    QUrl url = serverUrl();
    QString base = url.path();
    if (base.endsWith(u'/'))
        base.chop(1);
    const qsizetype query = path.indexOf(u'?');
    url.setPath(base + (query < 0 ? path : path.left(query)));
    if (query >= 0)
        url.setQuery(path.mid(query + 1));
    QNetworkRequest req(url);
    req.setRawHeader("X-Parse-Application-Id", applicationId().toUtf8());
    if (useMasterKey)
        req.setRawHeader("X-Parse-Master-Key", masterKey().toUtf8());
    else
        req.setRawHeader("X-Parse-Client-Key", clientKey().toUtf8());
    if (!sessionToken.isEmpty())
        req.setRawHeader("X-Parse-Session-Token", sessionToken.toUtf8());
    for (const Header &h : headers)
        req.setRawHeader(h.first, h.second);
    req.setHeader(QNetworkRequest::ContentTypeHeader, QByteArrayLiteral("application/json"));
    const QByteArray payload = body.isEmpty() && (method == "GET" || method == "DELETE")
                                   ? QByteArray()
                                   : QJsonDocument(body).toJson(QJsonDocument::Compact);
    return exchange(req, method, payload);
}

TestBackend::Reply TestBackend::exchange(const QNetworkRequest &request, const QByteArray &method,
                                         const QByteArray &payload, QByteArray *contentType)
{
    QNetworkAccessManager nam;
    QNetworkReply *reply = nam.sendCustomRequest(request, method, payload);
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(30000, &loop, &QEventLoop::quit);
    loop.exec();
    Reply r;
    r.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    r.raw = reply->readAll();
    r.body = QJsonDocument::fromJson(r.raw);
    if (contentType)
        *contentType = reply->header(QNetworkRequest::ContentTypeHeader).toByteArray();
    reply->deleteLater();
    return r;
}

TestBackend::User TestBackend::signUpUser(const QJsonObject &extraFields) const
{
    User u;
    const QString tag = QUuid::createUuid().toString(QUuid::Id128).left(12);
    u.username = QStringLiteral("t%1@example.test").arg(tag);
    u.password = QStringLiteral("Passw0rd%1").arg(tag.left(4));
    QJsonObject body{{QStringLiteral("isAuthorised"), true}};
    for (auto it = extraFields.begin(); it != extraFields.end(); ++it)
        body.insert(it.key(), it.value());
    body.insert(QStringLiteral("username"), u.username);
    body.insert(QStringLiteral("email"), u.username);
    body.insert(QStringLiteral("password"), u.password);
    const Reply r = request("POST", QStringLiteral("/users"), body);
    u.objectId = r.body.object().value(QStringLiteral("objectId")).toString();
    u.sessionToken = r.body.object().value(QStringLiteral("sessionToken")).toString();
    return u;
}

QStringList TestBackend::readLines(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}
