#pragma once

#include <QRandomGenerator>
#include <QTcpServer>
#include <QUrl>

class QTcpSocket;

// An HTTP relay between the client and the backend that misbehaves as a bad network does:
// it cuts requests before they reach the server, drops replies after the server has applied
// the request, and goes down altogether for a while. One request per connection is relayed
// at a time; the backend is asked to close after each reply.
class FaultProxy : public QTcpServer {
    Q_OBJECT
public:
    struct Faults {
        double cut = 0;       // a request is cut before it reaches the server
        double dropReply = 0; // the server answers, the client never hears it
        double outage = 0;    // chance, every 200 ms, that the network goes down for up to a second
        // A client that goes away (killed) mid-request also cuts the request at the server, as on
        // a direct connection. Off: the server finishes it, as behind a relay that does not pass
        // the client's going away on.
        bool passClientLoss = true;
    };
    struct Counts {
        int relayed = 0;
        int cut = 0;
        int dropped = 0;
        int outages = 0;
    };

    FaultProxy(const QUrl &backend, quint32 seed);
    [[nodiscard]] QString origin() const;
    void setFaults(const Faults &faults) { m_faults = faults; }
    [[nodiscard]] const Counts &counts() const { return m_counts; }

private:
    void serve(QTcpSocket *client);
    void relay(QTcpSocket *client, QByteArray request);
    [[nodiscard]] bool roll(double chance) { return m_random.generateDouble() < chance; }

    QUrl m_backend;
    QRandomGenerator m_random;
    Faults m_faults;
    Counts m_counts;
    bool m_down = false;
};
