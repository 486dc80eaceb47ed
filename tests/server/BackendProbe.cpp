#include "BackendProbe.h"

#include <QHostAddress>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTcpSocket>
#include <QUrlQuery>
#include <QUuid>

namespace BackendProbe {

QJsonObject pointer(const QString &className, const QString &objectId)
{
    return {{QStringLiteral("__type"), QStringLiteral("Pointer")},
            {QStringLiteral("className"), className},
            {QStringLiteral("objectId"), objectId}};
}

QJsonObject userPointer(const QString &objectId)
{
    return pointer(QStringLiteral("_User"), objectId);
}

TestBackend::Reply send(const QByteArray &method, const QString &path, const QJsonObject &body,
                        const QString &sessionToken, const QList<Header> &headers)
{
    return TestBackend::instance().request(method, path, body, false, sessionToken, headers);
}

TestBackend::Reply upload(const QString &name, const QByteArray &bytes, const QString &sessionToken)
{
    const TestBackend &backend = TestBackend::instance();
    QUrl url = backend.serverUrl();
    url.setPath(QStringLiteral("/files/") + name);
    QNetworkRequest request(url);
    request.setRawHeader("X-Parse-Application-Id", backend.applicationId().toUtf8());
    request.setRawHeader("X-Parse-Client-Key", backend.clientKey().toUtf8());
    request.setRawHeader("X-Parse-Session-Token", sessionToken.toUtf8());
    request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArrayLiteral("image/jpeg"));
    return TestBackend::exchange(request, "POST", bytes);
}

TestBackend::Reply rawRequest(const TestBackend &backend, const QByteArray &method, const QByteArray &target,
                              const QByteArray &body, const QString &sessionToken)
{
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, quint16(backend.serverUrl().port()));
    if (!socket.waitForConnected(5000))
        return {};
    socket.write(method + ' ' + target + " HTTP/1.0\r\nHost: 127.0.0.1\r\n" + "X-Parse-Application-Id: " +
                 backend.applicationId().toUtf8() + "\r\nX-Parse-Client-Key: " + backend.clientKey().toUtf8() +
                 "\r\nX-Parse-Session-Token: " + sessionToken.toUtf8() +
                 "\r\nContent-Type: application/json\r\nContent-Length: " + QByteArray::number(body.size()) +
                 "\r\n\r\n" + body);
    QByteArray answer;
    while (socket.waitForReadyRead(30000))
        answer += socket.readAll();
    TestBackend::Reply reply;
    reply.status = answer.mid(9, 3).toInt();
    reply.raw = answer.mid(answer.indexOf("\r\n\r\n") + 4);
    reply.body = QJsonDocument::fromJson(reply.raw);
    return reply;
}

TestBackend::Reply fetch(const QUrl &url, QByteArray *contentType)
{
    return TestBackend::exchange(QNetworkRequest(url), "GET", {}, contentType);
}

QJsonObject masterGet(const QString &className, const QString &objectId)
{
    const QString path = className == QLatin1String("_User")
                             ? QStringLiteral("/users/") + objectId
                             : QStringLiteral("/classes/%1/%2").arg(className, objectId);
    const TestBackend::Reply r = TestBackend::instance().request("GET", path, {}, true);
    return r.status == 200 ? r.body.object() : QJsonObject();
}

QList<QJsonObject> masterFind(const QString &className, const QJsonObject &where)
{
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("where"), QString::fromUtf8(QJsonDocument(where).toJson(QJsonDocument::Compact)));
    query.addQueryItem(QStringLiteral("limit"), QStringLiteral("1000"));
    const QString base =
        className == QLatin1String("_User") ? QStringLiteral("/users") : QStringLiteral("/classes/") + className;
    const TestBackend::Reply r =
        TestBackend::instance().request("GET", base + u'?' + query.toString(QUrl::FullyEncoded), {}, true);
    QList<QJsonObject> results;
    const QJsonArray array = r.body.object().value(QStringLiteral("results")).toArray();
    for (const QJsonValue &v : array)
        results.append(v.toObject());
    return results;
}

int errorCode(const TestBackend::Reply &reply)
{
    return reply.body.object().value(QStringLiteral("code")).toInt();
}

QString uniqueTag()
{
    return QUuid::createUuid().toString(QUuid::Id128).left(12);
}

QString whereQuery(const QJsonObject &where, const QString &extra)
{
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("where"), QString::fromUtf8(QJsonDocument(where).toJson(QJsonDocument::Compact)));
    return query.toString(QUrl::FullyEncoded) + (extra.isEmpty() ? QString() : u'&' + extra);
}

TestBackend::User newsroomUser(const TestBackend &backend)
{
    const TestBackend::User user =
        backend.signUpUser({{QStringLiteral("firstName"), QStringLiteral("Claire")},
                            {QStringLiteral("workEmail"), QStringLiteral("desk%1@news.test").arg(uniqueTag())},
                            {QStringLiteral("mobileCountryCode"), QStringLiteral("+44")},
                            {QStringLiteral("mobileTelephoneNumber"), QStringLiteral("7700900412")}});
    backend.request("PUT", QStringLiteral("/users/") + user.objectId, {{QStringLiteral("isNewsDeskUser"), true}}, true);
    return user;
}

bool healthy(const TestBackend &backend)
{
    return backend.request("GET", QStringLiteral("/health")).status == 200;
}

QString deletionNotice(const QString &firstName, const QString &objectId, const QString &username)
{
    return QStringLiteral("There is a new request from %1  to delete their profile.  Be sure to delete the user and "
                          "freelancer objects. \n\nPlease delete any messages where to & from user == %2\n\nThe "
                          "user's email address they used to register was %3")
        .arg(firstName, objectId, username);
}

} // namespace BackendProbe
