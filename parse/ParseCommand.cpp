#include "ParseCommand.h"

#include <QJsonDocument>

QString ParseCommand::classPath(const QString &className)
{
    if (className == QLatin1String("_User"))
        return QStringLiteral("/users");
    if (className == QLatin1String("_Installation"))
        return QStringLiteral("/installations");
    return QStringLiteral("/classes/") + className;
}

ParseCommand ParseCommand::json(const QByteArray &method, const QString &path, const QJsonObject &body)
{
    ParseCommand command;
    command.method = method;
    command.path = path;
    if (method != "GET" && method != "DELETE")
        command.body = QJsonDocument(body).toJson(QJsonDocument::Compact);
    return command;
}

ParseCommand ParseCommand::saveObject(const QString &className, const QString &objectId, const QJsonObject &operations)
{
    const QString root = classPath(className);
    ParseCommand command =
        objectId.isEmpty() ? json("POST", root, operations) : json("PUT", root + u'/' + objectId, operations);
    // A user's save may carry a password.
    command.confidential = className == QLatin1String("_User");
    return command;
}

ParseCommand ParseCommand::findObjects(const QString &className, const QUrlQuery &parameters)
{
    ParseCommand command = json("GET", classPath(className));
    command.query = parameters;
    return command;
}

ParseCommand ParseCommand::logIn(const QString &username, const QString &password)
{
    ParseCommand command = json("POST", QStringLiteral("/login"),
                                {{QStringLiteral("username"), username}, {QStringLiteral("password"), password}});
    command.confidential = true;
    return command;
}

ParseCommand ParseCommand::logOut(const QString &sessionToken)
{
    ParseCommand command = json("POST", QStringLiteral("/logout"));
    command.sessionToken = sessionToken;
    return command;
}

ParseCommand ParseCommand::requestPasswordReset(const QString &email)
{
    return json("POST", QStringLiteral("/requestPasswordReset"), {{QStringLiteral("email"), email}});
}

ParseCommand ParseCommand::uploadFile(const QString &name, const QByteArray &data, const QByteArray &contentType)
{
    ParseCommand command;
    command.method = "POST";
    command.path = QStringLiteral("/files/") + QString::fromUtf8(QUrl::toPercentEncoding(name));
    command.body = data;
    command.contentType = contentType;
    command.confidential = true; // file contents are not for the log
    return command;
}

ParseCommand ParseCommand::downloadFile(const QUrl &url)
{
    ParseCommand command;
    command.absoluteUrl = url;
    command.expectsJson = false;
    return command;
}

ParseCommand ParseCommand::callFunction(const QString &name, const QJsonObject &parameters)
{
    ParseCommand command = json("POST", QStringLiteral("/functions/") + name, parameters);
    command.confidential = true; // parameters carry people's addresses and messages
    return command;
}
