#include "CannedHttpServer.h"

#include <QTcpSocket>

CannedHttpServer::CannedHttpServer()
{
    listen(QHostAddress::LocalHost);
    connect(this, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket *socket = nextPendingConnection()) {
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { serve(socket); });
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        }
    });
}

QString CannedHttpServer::origin() const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(serverPort());
}

void CannedHttpServer::enqueue(int status, const QByteArray &body, const QByteArray &contentType)
{
    enqueueRaw("HTTP/1.1 " + QByteArray::number(status) + " Canned\r\nContent-Type: " + contentType +
               "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n" + body);
}

void CannedHttpServer::enqueueRaw(const QByteArray &bytes)
{
    m_replies.append(bytes);
}

void CannedHttpServer::serve(QTcpSocket *socket)
{
    QByteArray buffer = socket->property("buffer").toByteArray() + socket->readAll();
    socket->setProperty("buffer", buffer);
    const qsizetype end = buffer.indexOf("\r\n\r\n");
    if (end < 0)
        return;
    Request request;
    const QList<QByteArray> lines = buffer.left(end).split('\n');
    const QList<QByteArray> first = lines.value(0).trimmed().split(' ');
    request.method = first.value(0);
    request.target = first.value(1);
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const qsizetype colon = lines[i].indexOf(':');
        if (colon > 0)
            request.headers.insert(lines[i].left(colon).trimmed().toLower(), lines[i].mid(colon + 1).trimmed());
    }
    const qsizetype length = request.headers.value("content-length").toLongLong();
    if (buffer.size() < end + 4 + length)
        return;
    request.body = buffer.mid(end + 4, length);
    socket->setProperty("buffer", QByteArray());
    m_requests.append(request);
    const QByteArray reply = m_replies.isEmpty()
                                 ? QByteArray("HTTP/1.1 599 No canned reply\r\nContent-Length: 0\r\n\r\n")
                                 : m_replies.takeFirst();
    socket->write(reply);
    socket->disconnectFromHost();
}
