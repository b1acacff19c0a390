// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/clock.h"

#include <memory>
#include <vector>

namespace sondrel {

/// A clock that stands still until it is moved; its timers tick as it moves.
class ManualClock final : public Clock
{
public:
    explicit ManualClock(const QDateTime &start);

    QDateTime now() const override { return m_now; }
    std::unique_ptr<ClockTimer> createTimer(int interval, std::function<void()> onTick) override;

    /// Sets the clock without ticking any timer, as a user does who corrects it.
    void set(const QDateTime &when) { m_now = when; }
    /// Moves on, ticking every timer at its moment, in order.
    void advance(qint64 milliseconds);
    /// How many timers there are, on or off.
    int timers() const;

    /// What a timer of this clock shares with it; made by the clock alone.
    struct State;

private:
    QDateTime m_now;
    std::vector<std::weak_ptr<State>> m_timers;
    std::shared_ptr<qint64> m_elapsed; // ms since the start; timers may outlive the clock
};

} // namespace sondrel
