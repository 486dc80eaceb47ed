#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QUrl>
#include <QUrlQuery>

// One request to the backend, described as plain data. The runner adds the headers
// (application id, client key, installation id, session token, request id) and sends it.
class ParseCommand {
public:
    QByteArray method = "GET";
    QString path;     // below the server URL, e.g. "/classes/Message"
    QUrl absoluteUrl; // instead of path, for file downloads
    QUrlQuery query;
    QByteArray body;
    QByteArray contentType = "application/json";
    QString sessionToken;
    QString requestId;         // X-Parse-Request-Id of a write; the same for every retry
    bool expectsJson = true;   // false: a successful reply is handed over raw (downloads)
    bool confidential = false; // the body must never be logged

    [[nodiscard]] bool isWrite() const { return method != "GET"; }

    // REST path of a class: the built-in classes have their own roots.
    [[nodiscard]] static QString classPath(const QString &className);

    [[nodiscard]] static ParseCommand json(const QByteArray &method, const QString &path, const QJsonObject &body = {});
    [[nodiscard]] static ParseCommand saveObject(const QString &className, const QString &objectId,
                                                 const QJsonObject &operations);
    [[nodiscard]] static ParseCommand findObjects(const QString &className, const QUrlQuery &parameters);
    [[nodiscard]] static ParseCommand logIn(const QString &username, const QString &password);
    [[nodiscard]] static ParseCommand logOut(const QString &sessionToken);
    [[nodiscard]] static ParseCommand requestPasswordReset(const QString &email);
    [[nodiscard]] static ParseCommand uploadFile(const QString &name, const QByteArray &data,
                                                 const QByteArray &contentType);
    [[nodiscard]] static ParseCommand downloadFile(const QUrl &url);
    [[nodiscard]] static ParseCommand callFunction(const QString &name, const QJsonObject &parameters);
};
