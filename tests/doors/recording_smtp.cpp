#include "tests/doors/recording_smtp.h"

#include "core/failure.h"

#include <QTimer>

namespace sondrel {

class RecordingSmtp::Session final : public SmtpSession
{
public:
    explicit Session(RecordingSmtp &owner) : m_owner(owner) { ++m_owner.sessionsAlive; }
    ~Session() override { --m_owner.sessionsAlive; }

    int State() const override { return m_state; }
    void Connect() override;
    void Send(std::shared_ptr<OutgoingMessage> message) override;
    void Disconnect() override;
    void Abort() override;

private:
    Conversation &conversation() { return m_owner.conversations.at(m_number); }
    void begin(int state, qint32 task, const Answer &answer, int stateBehind);

    RecordingSmtp &m_owner;
    std::size_t m_number = 0;
    int m_state = Idle;
    int m_generation = 0; // of the task under way
};

void RecordingSmtp::Session::begin(int state, qint32 task, const Answer &answer, int stateBehind)
{
    m_state = state;
    const int generation = ++m_generation;
    if (m_owner.silentTask == task)
        return;
    QTimer::singleShot(0, this, [this, generation, task, answer, stateBehind] {
        if (generation != m_generation)
            return;
        m_state = stateBehind;
        Q_EMIT Done(task, answer.error, answer.text);
    });
}

void RecordingSmtp::Session::Connect()
{
    m_number = m_owner.conversations.size();
    m_owner.conversations.push_back({Server,
                                     Port,
                                     AuthenticationMode,
                                     AuthenticationKind,
                                     User,
                                     Password,
                                     ProxyServer,
                                     ProxyPort,
                                     ProxyUser,
                                     ProxyPassword,
                                     {},
                                     {},
                                     {}});
    for (const QString &line : std::as_const(m_owner.lines))
        Q_EMIT Debug(line);
    begin(Connecting, ConnectTask, m_owner.connecting, m_owner.connecting.error == 0 ? Connected : Idle);
}

void RecordingSmtp::Session::Send(std::shared_ptr<OutgoingMessage> message)
{
    if (!m_owner.failSend.isEmpty())
        throw Failure(m_owner.failSend);
    conversation().sender = message->sender;
    conversation().recipients = message->recipients;
    conversation().message = message->content.readAll();
    ++conversation().sends;
    begin(Sending, m_owner.sendTask, m_owner.sending, Connected);
}

void RecordingSmtp::Session::Disconnect()
{
    conversation().left = true;
    begin(Disconnecting, DisconnectTask, {}, Idle);
}

void RecordingSmtp::Session::Abort()
{
    if (!m_owner.failAbort.isEmpty())
        throw Failure(m_owner.failAbort);
    conversation().aborted = true;
    ++m_generation;
    m_state = Idle;
}

std::unique_ptr<SmtpSession> RecordingSmtp::createSession()
{
    if (!failCreate.isEmpty())
        throw Failure(failCreate);
    return std::make_unique<Session>(*this);
}

} // namespace sondrel
