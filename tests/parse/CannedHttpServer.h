#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QTcpServer>

// A loopback HTTP server answering each request with the next canned reply, and keeping what
// it was asked. For exact checks of requests and for replies no real server would send.
class CannedHttpServer : public QTcpServer {
    Q_OBJECT
public:
    struct Request {
        QByteArray method;
        QByteArray target;                    // path and query
        QMap<QByteArray, QByteArray> headers; // lower-case names
        QByteArray body;
    };

    CannedHttpServer();
    [[nodiscard]] QString origin() const;

    // A whole reply with a status line, headers and body.
    void enqueue(int status, const QByteArray &body, const QByteArray &contentType = "application/json");
    // Exactly these bytes, then the connection is closed (e.g. a cut-off reply).
    void enqueueRaw(const QByteArray &bytes);
    [[nodiscard]] const QList<Request> &requests() const { return m_requests; }

private:
    void serve(QTcpSocket *socket);
    QList<QByteArray> m_replies;
    QList<Request> m_requests;
};
