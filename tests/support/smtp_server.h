// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QByteArrayList>
#include <QObject>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>

#include <functional>
#include <optional>

namespace sondrel {

/// A small mail server on all addresses of this machine, on the event loop of the test. It takes what it gets
/// unless the test tells otherwise.
class SmtpServer : public QObject
{
    Q_OBJECT

public:
    SmtpServer();

    quint16 port() const { return m_server.serverPort(); }

    /// Empty for a server that does not greet.
    QByteArray greeting = "220 test ESMTP\r\n";
    /// What is said to a command, or to the end of a message, which comes as "."; nothing for the usual
    /// answer, an empty text for none.
    std::function<std::optional<QByteArray>(const QByteArray &command)> answer;
    /// Acts as a proxy too: greets once it has been asked to connect.
    bool isProxy = false;
    /// Drops the connection when that many bytes of a message have come.
    qint64 dropsAfter = -1;

    QByteArrayList commands; // without their line ends, of all connections
    QByteArray data;         // of the last message, as it came on the wire
    int connections = 0;
    int open = 0;

    /// Drops every connection.
    void drop();

private:
    void accept();
    void read(QTcpSocket *socket);
    void readCommand(QTcpSocket *socket, const QByteArray &line);
    QByteArray usualAnswer(const QByteArray &command);

    QTcpServer m_server;
    bool m_inData = false;
    bool m_inProxyRequest = false;
};

} // namespace sondrel
