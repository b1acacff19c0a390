#include "tests/support/loopback_server.h"

#include <QEventLoop>
#include <QTimer>

#include <sys/socket.h>

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

bool waitUntil(const std::function<bool()> &condition)
{
    QTimer limit;
    limit.setSingleShot(true);
    limit.start(60000);
    QEventLoop loop;
    while (!condition()) {
        if (!limit.isActive())
            return false;
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

QByteArray LoopbackServer::Request::header(const QByteArray &name) const
{
    for (const QByteArray &line : head.split('\n')) {
        const qsizetype colon = line.indexOf(':');
        if (colon > 0 && line.first(colon).toLower() == name)
            return line.sliced(colon + 1).trimmed();
    }
    return {};
}

void LoopbackServer::Peer::send(const QByteArray &bytes) const
{
    if (m_socket) {
        m_socket->write(bytes);
        m_socket->flush();
    }
}

void LoopbackServer::Peer::sendForEver(const QByteArray &bytes) const
{
    if (!m_socket)
        return;
    QTcpSocket *socket = m_socket;
    QObject::connect(socket, &QTcpSocket::bytesWritten, socket, [socket, bytes] {
        if (socket->bytesToWrite() < bytes.size())
            socket->write(bytes);
    });
    send(bytes);
}

void LoopbackServer::Peer::close() const
{
    if (m_socket)
        m_socket->disconnectFromHost();
}

void LoopbackServer::Peer::reset() const
{
    if (!m_socket)
        return;
    const linger atOnce{1, 0};
    setsockopt(static_cast<int>(m_socket->socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    m_socket->abort();
}

bool LoopbackServer::Peer::hasUnreadBytes() const
{
    char byte = 0;
    return m_socket &&
           recv(static_cast<int>(m_socket->socketDescriptor()), &byte, 1, MSG_PEEK | MSG_DONTWAIT) > 0;
}

LoopbackServer::LoopbackServer() : LoopbackServer(std::make_unique<QTcpServer>()) {}

LoopbackServer::LoopbackServer(std::unique_ptr<QTcpServer> server) : m_server(std::move(server))
{
    if (!m_server->listen(QHostAddress::LocalHost))
        throw std::runtime_error("the loopback server cannot listen");
    connect(m_server.get(), &QTcpServer::pendingConnectionAvailable, this, &LoopbackServer::accept);
}

QString LoopbackServer::address() const
{
    return u"127.0.0.1:%1"_s.arg(port());
}

QString LoopbackServer::url(const QString &path) const
{
    return u"http://"_s + address() + path;
}

QByteArray LoopbackServer::response(const QByteArray &body, const QByteArray &headers,
                                    const QByteArray &status)
{
    return "HTTP/1.1 " + status + "\r\n" + headers + "Content-Length: " + QByteArray::number(body.size()) +
           "\r\n\r\n" + body;
}

QByteArray LoopbackServer::redirect(const QByteArray &location, const QByteArray &headers)
{
    return response("moved", headers + "Location: " + location + "\r\n", "302 Found");
}

void LoopbackServer::accept()
{
    while (QTcpSocket *socket = m_server->nextPendingConnection()) {
        ++connections;
        ++open;
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        const auto received = std::make_shared<QByteArray>();
        connect(socket, &QTcpSocket::readyRead, this, [this, socket, received] { read(socket, *received); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
            --open;
            socket->deleteLater();
        });
        read(socket, *received);
    }
}

void LoopbackServer::read(QTcpSocket *socket, QByteArray &received)
{
    received += socket->readAll();
    for (;;) {
        const qsizetype headEnd = received.indexOf("\r\n\r\n");
        if (headEnd < 0)
            return;
        Request request;
        request.head = received.first(headEnd + 2);
        const qsizetype length = request.header("content-length").toLongLong();
        if (received.size() < headEnd + 4 + length)
            return;
        request.body = received.sliced(headEnd + 4, length);
        received.remove(0, headEnd + 4 + length);
        const QByteArrayList words = request.head.first(request.head.indexOf("\r\n")).split(' ');
        request.method = words.value(0);
        request.target = words.value(1);
        requests.push_back(request);
        if (handler)
            handler(request, Peer(socket));
        else
            Peer(socket).send(response("ok"));
    }
}

} // namespace sondrel
