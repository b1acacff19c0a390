#include "tests/doors/manual_clock.h"

#include <algorithm>
#include <utility>

namespace sondrel {

struct ManualClock::State
{
    std::shared_ptr<qint64> elapsed;
    int interval = 0;
    bool enabled = false;
    qint64 due = 0;
    std::function<void()> onTick;

    void restart() { due = *elapsed + interval; }
    bool ticks() const { return enabled && interval > 0; }
};

namespace {

class ManualTimer final : public ClockTimer
{
public:
    explicit ManualTimer(std::shared_ptr<ManualClock::State> state) : m_state(std::move(state)) {}

    void setInterval(int milliseconds) override
    {
        m_state->interval = milliseconds;
        m_state->restart();
    }
    int interval() const override { return m_state->interval; }
    void setEnabled(bool enabled) override
    {
        if (enabled && !m_state->enabled)
            m_state->restart();
        m_state->enabled = enabled;
    }
    bool isEnabled() const override { return m_state->enabled; }

private:
    std::shared_ptr<ManualClock::State> m_state;
};

} // namespace

ManualClock::ManualClock(const QDateTime &start) : m_now(start), m_elapsed(std::make_shared<qint64>(0)) {}

std::unique_ptr<ClockTimer> ManualClock::createTimer(int interval, std::function<void()> onTick)
{
    auto state = std::make_shared<State>();
    state->elapsed = m_elapsed;
    state->interval = interval;
    state->onTick = std::move(onTick);
    m_timers.push_back(state);
    return std::make_unique<ManualTimer>(std::move(state));
}

int ManualClock::timers() const
{
    return static_cast<int>(
        std::ranges::count_if(m_timers, [](const auto &timer) { return !timer.expired(); }));
}

void ManualClock::advance(qint64 milliseconds)
{
    const qint64 end = *m_elapsed + milliseconds;
    for (;;) {
        std::erase_if(m_timers, [](const auto &timer) { return timer.expired(); });
        std::shared_ptr<State> next;
        for (const auto &timer : m_timers) {
            const auto state = timer.lock();
            if (state->ticks() && state->due <= end && (!next || state->due < next->due))
                next = state;
        }
        if (!next)
            break;
        m_now = m_now.addMSecs(next->due - *m_elapsed);
        *m_elapsed = next->due;
        next->restart();
        const auto tick = next->onTick;
        next.reset();
        tick();
    }
    m_now = m_now.addMSecs(end - *m_elapsed);
    *m_elapsed = end;
}

} // namespace sondrel
