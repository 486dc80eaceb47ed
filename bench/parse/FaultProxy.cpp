#include "FaultProxy.h"

#include <QPointer>
#include <QTcpSocket>
#include <QTimer>

FaultProxy::FaultProxy(const QUrl &backend, quint32 seed) : m_backend(backend), m_random(seed)
{
    listen(QHostAddress::LocalHost);
    connect(this, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket *client = nextPendingConnection()) {
            connect(client, &QTcpSocket::readyRead, this, [this, client] { serve(client); });
            connect(client, &QTcpSocket::disconnected, client, &QObject::deleteLater);
        }
    });
    auto *weather = new QTimer(this);
    connect(weather, &QTimer::timeout, this, [this] {
        if (m_down || !roll(m_faults.outage))
            return;
        m_down = true;
        ++m_counts.outages;
        QTimer::singleShot(100 + m_random.bounded(900), this, [this] { m_down = false; });
    });
    weather->start(200);
}

QString FaultProxy::origin() const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(serverPort());
}

void FaultProxy::serve(QTcpSocket *client)
{
    QByteArray buffer = client->property("buffer").toByteArray() + client->readAll();
    const qsizetype headEnd = buffer.indexOf("\r\n\r\n");
    qsizetype length = 0;
    if (headEnd >= 0) {
        for (const QByteArray &line : buffer.left(headEnd).split('\n')) {
            if (line.toLower().startsWith("content-length:"))
                length = line.mid(15).trimmed().toLongLong();
        }
    }
    if (headEnd < 0 || buffer.size() < headEnd + 4 + length) {
        client->setProperty("buffer", buffer);
        return;
    }
    client->setProperty("buffer", buffer.mid(headEnd + 4 + length));
    QByteArray request = buffer.left(headEnd + 4 + length);
    if (m_down || roll(m_faults.cut)) {
        ++m_counts.cut;
        client->abort();
        return;
    }
    relay(client, std::move(request));
}

void FaultProxy::relay(QTcpSocket *client, QByteArray request)
{
    // One exchange per backend connection, so the end of the reply is the end of the stream.
    const qsizetype headEnd = request.indexOf("\r\n\r\n");
    QList<QByteArray> lines = request.left(headEnd).split('\n');
    for (QByteArray &line : lines)
        line = line.trimmed();
    lines.removeIf([](const QByteArray &line) { return line.toLower().startsWith("connection:"); });
    lines.append("Connection: close");
    request = lines.join("\r\n") + "\r\n\r\n" + request.mid(headEnd + 4);

    auto *server = new QTcpSocket(this);
    const QPointer<QTcpSocket> waiting(client);
    if (m_faults.passClientLoss)
        connect(client, &QTcpSocket::disconnected, server, [server] { server->abort(); });
    auto reply = std::make_shared<QByteArray>();
    connect(server, &QTcpSocket::connected, server, [server, request] { server->write(request); });
    connect(server, &QTcpSocket::readyRead, server, [server, reply] { reply->append(server->readAll()); });
    connect(server, &QTcpSocket::disconnected, this, [this, server, waiting, reply] {
        reply->append(server->readAll());
        server->deleteLater();
        QTcpSocket *alive = waiting.data();
        if (!alive || alive->state() != QAbstractSocket::ConnectedState || roll(m_faults.dropReply) || m_down) {
            ++m_counts.dropped; // applied by the server; the client never hears of it
            if (alive)
                alive->abort();
            return;
        }
        ++m_counts.relayed;
        alive->write(*reply);
        alive->disconnectFromHost();
    });
    server->connectToHost(m_backend.host(), quint16(m_backend.port()));
}
