#include "core/system_clock.h"

#include <QTimer>

#include <utility>

namespace sondrel {

namespace {

class SystemTimer final : public ClockTimer
{
public:
    SystemTimer(int interval, std::function<void()> onTick) : m_interval(interval)
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        // The tick may destroy this timer and with it the stored function, so a copy runs.
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [tick = std::move(onTick)] {
            const auto copy = tick;
            copy();
        });
    }

    void setInterval(int milliseconds) override
    {
        m_interval = milliseconds;
        if (m_enabled)
            run();
    }

    int interval() const override { return m_interval; }

    void setEnabled(bool enabled) override
    {
        if (enabled == m_enabled)
            return;
        m_enabled = enabled;
        run();
    }

    bool isEnabled() const override { return m_enabled; }

private:
    void run()
    {
        if (m_enabled && m_interval > 0)
            m_timer.start(m_interval);
        else
            m_timer.stop();
    }

    QTimer m_timer;
    int m_interval;
    bool m_enabled = false;
};

} // namespace

QDateTime SystemClock::now() const
{
    return QDateTime::currentDateTime();
}

std::unique_ptr<ClockTimer> SystemClock::createTimer(int interval, std::function<void()> onTick)
{
    return std::make_unique<SystemTimer>(interval, std::move(onTick));
}

} // namespace sondrel
