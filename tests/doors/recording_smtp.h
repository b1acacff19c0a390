// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "mail/smtp_session.h"

#include <QStringList>

#include <vector>

namespace sondrel {

/// Mail that goes nowhere: keeps every conversation and answers as it is told, from the event loop.
class RecordingSmtp final : public SmtpTransport
{
public:
    struct Answer
    {
        qint16 error = 0;
        QString text;
    };
    struct Conversation
    {
        QString server;
        qint32 port = 0;
        int authenticationMode = 0;
        int authenticationKind = 0;
        QString user;
        QString password;
        QString proxyServer;
        qint32 proxyPort = 0;
        QString proxyUser;
        QString proxyPassword;
        QByteArray sender;
        QByteArrayList recipients;
        QByteArray message; // as it went out
        int sends = 0;
        bool left = false;
        bool aborted = false;
    };

    std::vector<Conversation> conversations;
    int sessionsAlive = 0;

    Answer connecting;
    Answer sending;
    /// Number that the end of a sending is told under.
    qint32 sendTask = SmtpSession::SendTask;
    /// While set, that task gets no answer.
    qint32 silentTask = 0;
    /// Lines of the conversation, told while it connects.
    QStringList lines;
    /// When set, making a session, Send, or Abort, throws Failure with this text.
    QString failCreate;
    QString failSend;
    QString failAbort;

    std::unique_ptr<SmtpSession> createSession() override;

private:
    class Session;
};

} // namespace sondrel
