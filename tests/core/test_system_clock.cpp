#include "core/system_clock.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

using namespace sondrel;

namespace {

/// Lets the event loop run until quit, at most for a while.
class Loop
{
public:
    QEventLoop loop;

    bool run()
    {
        QTimer limit;
        QObject::connect(&limit, &QTimer::timeout, &loop, [this] { loop.exit(1); });
        limit.start(20'000);
        return loop.exec() == 0;
    }
};

} // namespace

TEST(SystemClock, tellsTheTimeOfTheMachine)
{
    const SystemClock clock;
    const QDateTime before = QDateTime::currentDateTime();
    const QDateTime told = clock.now();
    EXPECT_GE(told, before);
    EXPECT_LE(told, QDateTime::currentDateTime());
    EXPECT_EQ(told.timeSpec(), Qt::LocalTime);
}

TEST(SystemClock, ticksAgainAndAgain)
{
    SystemClock clock;
    Loop loop;
    int ticks = 0;
    QElapsedTimer elapsed;
    elapsed.start();
    const auto timer = clock.createTimer(10, [&] {
        if (++ticks == 3)
            loop.loop.quit();
    });
    timer->setEnabled(true);
    EXPECT_TRUE(loop.run());
    EXPECT_GE(elapsed.elapsed(), 29);
}

TEST(SystemClock, makesTimersThatAreOff)
{
    SystemClock clock;
    Loop loop;
    bool ticked = false;
    const auto off = clock.createTimer(1, [&] { ticked = true; });
    const auto end = clock.createTimer(20, [&] { loop.loop.quit(); });
    end->setEnabled(true);
    EXPECT_TRUE(loop.run());
    EXPECT_FALSE(ticked);
    EXPECT_FALSE(off->isEnabled());
    EXPECT_TRUE(end->isEnabled());
}

TEST(SystemClock, neverTicksAtAnIntervalOfZero)
{
    SystemClock clock;
    Loop loop;
    bool ticked = false;
    const auto never = clock.createTimer(0, [&] { ticked = true; });
    never->setEnabled(true);
    const auto end = clock.createTimer(20, [&] { loop.loop.quit(); });
    end->setEnabled(true);
    EXPECT_TRUE(loop.run());
    EXPECT_FALSE(ticked);
    EXPECT_TRUE(never->isEnabled());
    never->setInterval(1);
    const auto second = clock.createTimer(20, [&] { loop.loop.quit(); });
    second->setEnabled(true);
    EXPECT_TRUE(loop.run());
    EXPECT_TRUE(ticked);
}

TEST(SystemClock, startsTheWaitAnewWithTheInterval)
{
    SystemClock clock;
    Loop loop;
    const auto timer = clock.createTimer(60'000, [&] { loop.loop.quit(); });
    timer->setEnabled(true);
    timer->setInterval(5);
    EXPECT_EQ(timer->interval(), 5);
    EXPECT_TRUE(loop.run());
}

TEST(SystemClock, letsATimerStopInItsTick)
{
    SystemClock clock;
    Loop loop;
    int ticks = 0;
    std::unique_ptr<ClockTimer> timer;
    timer = clock.createTimer(1, [&] {
        ++ticks;
        timer->setEnabled(false);
    });
    timer->setEnabled(true);
    const auto end = clock.createTimer(30, [&] { loop.loop.quit(); });
    end->setEnabled(true);
    EXPECT_TRUE(loop.run());
    EXPECT_EQ(ticks, 1);
}

TEST(SystemClock, letsATimerGoInItsTick)
{
    SystemClock clock;
    Loop loop;
    std::unique_ptr<ClockTimer> timer;
    const auto kept = std::make_shared<int>(7);
    timer = clock.createTimer(1, [&timer, &loop, kept] {
        timer.reset();
        EXPECT_EQ(*kept, 7); // what the tick holds outlives the timer
        loop.loop.quit();
    });
    timer->setEnabled(true);
    EXPECT_TRUE(loop.run());
    EXPECT_EQ(timer, nullptr);
}
