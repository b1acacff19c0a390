#include "tests/doors/scripted_http.h"

#include "core/failure.h"

#include <QMetaObject>

#include <utility>

namespace sondrel {

namespace {

class ScriptedPool final : public HttpPool
{
public:
    explicit ScriptedPool(ScriptedHttp &owner) : m_owner(owner) {}
    std::unique_ptr<HttpControl> createControl() override
    {
        if (!m_owner.failControl.isEmpty())
            throw Failure(m_owner.failControl);
        return std::make_unique<ScriptedHttp::Control>(m_owner);
    }

private:
    ScriptedHttp &m_owner;
};

} // namespace

std::unique_ptr<HttpPool> ScriptedHttp::createPool()
{
    ++pools;
    return std::make_unique<ScriptedPool>(*this);
}

void ScriptedHttp::answer(std::size_t request, const QByteArray &body, int status)
{
    const QPointer<Control> control = requests.at(request).control;
    if (control)
        control->finish(body, status);
}

int ScriptedHttp::pending() const
{
    int count = 0;
    for (std::size_t i = 0; i < requests.size(); ++i) {
        bool last = true; // an older request of the same control is over
        for (std::size_t later = i + 1; later < requests.size(); ++later)
            last = last && requests[later].control != requests[i].control;
        if (last && requests[i].control && requests[i].control->Busy())
            ++count;
    }
    return count;
}

ScriptedHttp::Control::Control(ScriptedHttp &owner) : m_owner(owner)
{
    ++m_owner.controlsAlive;
}

ScriptedHttp::Control::~Control()
{
    --m_owner.controlsAlive;
}

void ScriptedHttp::Control::start(bool post, const QByteArray &postData)
{
    if (!m_owner.failStart.isEmpty())
        throw Failure(m_owner.failStart);
    state = Connecting;
    status = 0;
    body.clear();
    m_owner.requests.push_back(
        {Url, postData, post, UserAgent, ProxyServer, ProxyUsername, ProxyPassword, this});
    if (m_owner.autoAnswer) {
        const Request request = m_owner.requests.back();
        QMetaObject::invokeMethod(
            this,
            [this, request] {
                if (Busy())
                    finish(m_owner.autoAnswer(request), 200);
            },
            Qt::QueuedConnection);
    }
}

void ScriptedHttp::Control::Get()
{
    start(false, {});
}

void ScriptedHttp::Control::Post(const QByteArray &postData)
{
    start(true, postData);
}

void ScriptedHttp::Control::Abort()
{
    if (state == Closed)
        return;
    if (!m_owner.failAbort.isEmpty())
        throw Failure(m_owner.failAbort);
    if (hangsOnAbort)
        state = Closing;
    else
        finish(body, 0);
}

void ScriptedHttp::Control::finish(const QByteArray &received, int code)
{
    body = received;
    status = code;
    state = Closed;
    Q_EMIT stateChanged();
}

} // namespace sondrel
