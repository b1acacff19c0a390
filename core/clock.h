// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QDateTime>

#include <functional>
#include <memory>

namespace sondrel {

/// A timer of a Clock: ticks every interval while it is enabled, on the interface thread. It may be changed
/// or destroyed from inside its own tick.
class ClockTimer
{
public:
    virtual ~ClockTimer() = default;

    /// Milliseconds between ticks; an interval of 0 never ticks. A running timer starts its wait anew.
    virtual void setInterval(int milliseconds) = 0;
    virtual int interval() const = 0;
    /// Switches the timer on (its first tick comes one interval later) or off.
    virtual void setEnabled(bool enabled) = 0;
    virtual bool isEnabled() const = 0;
};

/// The door to time: the date, the time of day and all timers of the program.
class Clock
{
public:
    virtual ~Clock() = default;

    /// Local date and time.
    virtual QDateTime now() const = 0;
    QDate today() const { return now().date(); }

    /// A new timer, switched off.
    virtual std::unique_ptr<ClockTimer> createTimer(int interval, std::function<void()> onTick) = 0;
};

} // namespace sondrel
