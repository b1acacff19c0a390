#include "mail/curl_smtp_session.h"

#include "core/failure.h"
#include "lookup/curl_on_demand.h"
#include "mail/smtp_worker.h"

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

class CurlSession final : public SmtpSession
{
public:
    explicit CurlSession(CurlSmtpTransport &transport) : m_transport(transport) {}
    ~CurlSession() override { Abort(); }

    int State() const override { return m_state; }
    void Connect() override;
    void Send(std::shared_ptr<OutgoingMessage> message) override;
    void Disconnect() override;
    void Abort() override;

private:
    SmtpTarget target() const;
    void onDone(qint32 task, qint16 error, const QString &text);

    CurlSmtpTransport &m_transport;
    std::shared_ptr<SmtpWorker> m_worker; // while there is a conversation
    int m_state = Idle;
};

SmtpTarget CurlSession::target() const
{
    SmtpTarget target;
    target.server = Server;
    target.port = Port;
    target.login = AuthenticationMode == 1;
    target.user = User;
    target.password = Password;
    target.proxy = ProxyServer;
    target.proxyPort = ProxyPort;
    target.proxyUser = ProxyUser;
    target.proxyPassword = ProxyPassword;
    return target;
}

void CurlSession::Connect()
{
    Abort();
    SmtpWorker::Listener listener;
    listener.place = this;
    listener.debug = [this](const QString &line) { Q_EMIT Debug(line); };
    listener.done = [this](qint32 task, qint16 error, const QString &text) { onDone(task, error, text); };
    m_worker = std::make_shared<SmtpWorker>(target(), m_transport.options(), std::move(listener));
    m_state = Connecting;
    m_transport.run(m_worker);
}

void CurlSession::Send(std::shared_ptr<OutgoingMessage> message)
{
    if (!m_worker || !message)
        throw Failure(u"There is no connection to send a message on"_s);
    m_state = Sending;
    m_worker->send(std::move(message));
}

void CurlSession::Disconnect()
{
    if (!m_worker)
        return;
    m_state = Disconnecting;
    m_worker->leave();
}

void CurlSession::Abort()
{
    if (!m_worker)
        return;
    std::exchange(m_worker, nullptr)->abort();
    m_state = Idle;
}

void CurlSession::onDone(qint32 task, qint16 error, const QString &text)
{
    const bool over = task == DisconnectTask || (task == ConnectTask && error != 0);
    // The listener belongs to the worker and must outlast this call.
    const auto worker = over ? std::exchange(m_worker, nullptr) : m_worker;
    m_state = over ? Idle : Connected;
    Q_EMIT Done(task, error, text); // the handler may have destroyed this
}

} // namespace

CurlSmtpTransport::CurlSmtpTransport(SmtpOptions options) : m_options(std::move(options)) {}

CurlSmtpTransport::~CurlSmtpTransport()
{
    for (Thread &entry : m_threads)
        entry.worker->abort();
    for (Thread &entry : m_threads)
        entry.thread.join();
}

std::unique_ptr<SmtpSession> CurlSmtpTransport::createSession()
{
    needCurl(); // here, since its thread has nobody to tell
    return std::make_unique<CurlSession>(*this);
}

void CurlSmtpTransport::run(const std::shared_ptr<SmtpWorker> &worker)
{
    std::erase_if(m_threads, [](Thread &entry) {
        if (!entry.worker->isOver())
            return false;
        entry.thread.join();
        return true;
    });
    m_threads.push_back({std::thread(), worker});
    try {
        m_threads.back().thread = std::thread([worker] { worker->run(); });
    } catch (const std::exception &) {
        m_threads.pop_back();
        throw Failure(u"No thread could be started"_s);
    }
}

} // namespace sondrel
