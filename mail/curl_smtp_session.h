// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "mail/smtp_session.h"

#include <memory>
#include <thread>
#include <vector>

namespace sondrel {

class SmtpWorker;

/// How sessions are made; tests are less patient.
struct SmtpOptions
{
    int connectSeconds = 60; // until the server has greeted and taken the login
    int answerSeconds = 300; // for one answer, or without any progress of a message
    int leaveSeconds = 60;   // for the answer to QUIT
    qint32 implicitTlsPort = 465;
    QString caFile; // certificates to trust; empty for the system's
};

/// The real transport: libcurl, each conversation on a thread of its own, since it waits inside for the
/// answers to a message and to QUIT. TLS is used wherever the server offers it, and insisted on for a login
/// anywhere but on this machine. Proxy variables of the environment have no say.
class CurlSmtpTransport final : public SmtpTransport
{
public:
    explicit CurlSmtpTransport(SmtpOptions options = {});
    /// Cuts off what still runs and waits for it.
    ~CurlSmtpTransport() override;

    std::unique_ptr<SmtpSession> createSession() override;

    /// Starts a conversation; the worker ends when it is told to leave or to abort.
    void run(const std::shared_ptr<SmtpWorker> &worker);
    const SmtpOptions &options() const { return m_options; }

private:
    struct Thread
    {
        std::thread thread;
        std::shared_ptr<SmtpWorker> worker;
    };

    const SmtpOptions m_options;
    std::vector<Thread> m_threads;
};

} // namespace sondrel
