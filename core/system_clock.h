// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/clock.h"

namespace sondrel {

/// The machine's own clock, with timers of the Qt event loop.
class SystemClock final : public Clock
{
public:
    QDateTime now() const override;
    std::unique_ptr<ClockTimer> createTimer(int interval, std::function<void()> onTick) override;
};

} // namespace sondrel
