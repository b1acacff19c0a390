#include "tests/support/smtp_server.h"

#include <stdexcept>

namespace sondrel {

SmtpServer::SmtpServer()
{
    if (!m_server.listen(QHostAddress::AnyIPv4))
        throw std::runtime_error("cannot listen");
    QObject::connect(&m_server, &QTcpServer::newConnection, this, &SmtpServer::accept);
}

void SmtpServer::accept()
{
    QTcpSocket *socket = m_server.nextPendingConnection();
    ++connections;
    ++open;
    m_inData = false;
    m_inProxyRequest = isProxy;
    QObject::connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(socket); });
    QObject::connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
        --open;
        socket->deleteLater();
    });
    if (!isProxy)
        socket->write(greeting);
}

void SmtpServer::drop()
{
    for (QTcpSocket *socket : m_server.findChildren<QTcpSocket *>())
        socket->abort();
}

void SmtpServer::read(QTcpSocket *socket)
{
    const QPointer<QTcpSocket> alive(socket);
    while (alive && socket->canReadLine()) {
        const QByteArray line = socket->readLine();
        if (!m_inData) {
            readCommand(socket, line.trimmed());
            continue;
        }
        data.append(line);
        if (dropsAfter >= 0 && data.size() > dropsAfter) {
            socket->abort();
            return;
        }
        if (line == ".\r\n") {
            data.chop(3);
            m_inData = false;
            readCommand(socket, ".");
        }
    }
}

void SmtpServer::readCommand(QTcpSocket *socket, const QByteArray &line)
{
    if (m_inProxyRequest) {
        if (!line.isEmpty()) {
            commands.append(line);
            return;
        }
        m_inProxyRequest = false;
        socket->write("HTTP/1.1 200 OK\r\n\r\n" + greeting);
        return;
    }
    commands.append(line);
    std::optional<QByteArray> said;
    if (answer)
        said = answer(line);
    const QByteArray text = said ? *said : usualAnswer(line);
    if (line == "DATA" && text.startsWith("354")) {
        m_inData = true;
        data.clear();
    }
    socket->write(text);
    if (text.startsWith("221") || text.startsWith("421"))
        socket->disconnectFromHost();
}

QByteArray SmtpServer::usualAnswer(const QByteArray &command)
{
    if (command.startsWith("EHLO"))
        return "250-test\r\n250 SIZE\r\n";
    if (command == "DATA")
        return "354 go on\r\n";
    if (command == "QUIT")
        return "221 bye\r\n";
    return "250 OK\r\n";
}

} // namespace sondrel
