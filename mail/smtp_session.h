// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "mail/message_stream.h"

#include <QByteArrayList>
#include <QObject>
#include <QString>

#include <memory>

namespace sondrel {

/// A message ready to go: its envelope and its bytes.
struct OutgoingMessage
{
    QByteArray sender; // a bare address; empty for none
    QByteArrayList recipients;
    MessageStream content;
};

/// The door to mail: one conversation with one SMTP server. Every task returns at once and ends in Done; one
/// that is aborted does not. All signals come from the event loop. The session may be destroyed from inside
/// a handler.
class SmtpSession : public QObject
{
    Q_OBJECT

public:
    /// Numbers of the tasks in Done.
    enum Task : qint32 { ConnectTask = 1, DisconnectTask = 2, SendTask = 3 };
    /// Values of State; only Idle has no connection.
    enum : int { Idle = 1, Connecting = 2, Connected = 3, Sending = 4, Disconnecting = 5 };

    // What the next connection is made with.
    QString Server;
    qint32 Port = 0;
    /// 1 when the server wants a login.
    int AuthenticationMode = 0;
    int AuthenticationKind = 0;
    QString User;
    QString Password;
    /// Empty for a direct connection.
    QString ProxyServer;
    qint32 ProxyPort = 0;
    QString ProxyUser;
    QString ProxyPassword;

    virtual int State() const = 0;
    virtual void Connect() = 0;
    virtual void Send(std::shared_ptr<OutgoingMessage> message) = 0;
    /// Leaves; its Done has no error, since a message that was accepted has been.
    virtual void Disconnect() = 0;
    /// Ends the task under way and the connection without a further event.
    virtual void Abort() = 0;

Q_SIGNALS:
    /// A line of the conversation, secrets masked.
    void Debug(const QString &text);
    /// A task has ended: error is 0, or the server's reply code, or that of the transport.
    void Done(qint32 task, qint16 error, const QString &text);
};

/// Makes sessions, which live no longer than it.
class SmtpTransport
{
public:
    virtual ~SmtpTransport() = default;
    virtual std::unique_ptr<SmtpSession> createSession() = 0;
};

} // namespace sondrel
