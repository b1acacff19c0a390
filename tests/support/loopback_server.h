// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>

#include <functional>
#include <memory>
#include <vector>

namespace sondrel {

/// Lets the event loop run until the condition holds. False when it does not within a minute.
bool waitUntil(const std::function<bool()> &condition);

/// A small HTTP server on 127.0.0.1, on the event loop of the test. It answers with what the test tells, byte
/// by byte, so that it can break every rule.
class LoopbackServer : public QObject
{
    Q_OBJECT

public:
    struct Request
    {
        QByteArray method;
        QByteArray target;
        QByteArray head; // request line and headers, as received
        QByteArray body;

        /// Value of a header, the name in lower case; empty when there is none.
        QByteArray header(const QByteArray &name) const;
    };

    /// The connection that a request came in on. It may close at any time.
    class Peer
    {
    public:
        explicit Peer(QTcpSocket *socket) : m_socket(socket) {}
        void send(const QByteArray &bytes) const;
        /// Goes on sending the bytes for as long as anyone reads them.
        void sendForEver(const QByteArray &bytes) const;
        /// Closes when all has been sent.
        void close() const;
        /// Breaks the connection off.
        void reset() const;
        /// True when a request has come in that the event loop has not yet handed to the server.
        bool hasUnreadBytes() const;

    private:
        QPointer<QTcpSocket> m_socket;
    };

    LoopbackServer();
    /// Serves the connections of another server, which listens already: one with TLS.
    explicit LoopbackServer(std::unique_ptr<QTcpServer> server);

    /// What is done with each request; without it each gets a page "ok".
    std::function<void(const Request &, const Peer &)> handler;
    std::vector<Request> requests;
    int connections = 0; // made so far
    int open = 0;

    /// http://127.0.0.1:PORT and the path.
    QString url(const QString &path) const;
    /// 127.0.0.1:PORT
    QString address() const;
    quint16 port() const { return m_server->serverPort(); }

    /// A complete response. headers are whole lines, each with its line end.
    static QByteArray response(const QByteArray &body, const QByteArray &headers = {},
                               const QByteArray &status = "200 OK");
    static QByteArray redirect(const QByteArray &location, const QByteArray &headers = {});

private:
    void accept();
    void read(QTcpSocket *socket, QByteArray &received);

    std::unique_ptr<QTcpServer> m_server;
};

} // namespace sondrel
