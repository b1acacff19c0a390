#include "tests/doors/manual_clock.h"

#include <gtest/gtest.h>

#include <vector>

using namespace sondrel;

namespace {

class Hands : public testing::Test
{
protected:
    const QDateTime start = QDateTime(QDate(2026, 11, 15), QTime(10, 0));
    ManualClock clock{start};
};

} // namespace

TEST_F(Hands, standStillUntilTheyAreMoved)
{
    EXPECT_EQ(clock.now(), start);
    clock.advance(60'000);
    EXPECT_EQ(clock.now(), start.addSecs(60));
    EXPECT_EQ(clock.today(), QDate(2026, 11, 15));
}

TEST_F(Hands, tickTimersInTheOrderOfTheirMoments)
{
    std::vector<int> ticks;
    const auto slow = clock.createTimer(30, [&] { ticks.push_back(30); });
    const auto fast = clock.createTimer(20, [&] { ticks.push_back(20); });
    slow->setEnabled(true);
    fast->setEnabled(true);
    clock.advance(65);
    EXPECT_EQ(ticks, (std::vector<int>{20, 30, 20, 30, 20}));
}

TEST_F(Hands, showTheMomentOfTheTick)
{
    QDateTime seen;
    const auto timer = clock.createTimer(1000, [&] { seen = clock.now(); });
    timer->setEnabled(true);
    clock.advance(1500);
    EXPECT_EQ(seen, start.addSecs(1));
}

TEST_F(Hands, neverTickATimerThatIsOffOrHasNoInterval)
{
    int ticks = 0;
    const auto off = clock.createTimer(10, [&] { ++ticks; });
    const auto never = clock.createTimer(0, [&] { ++ticks; });
    never->setEnabled(true);
    clock.advance(1000);
    EXPECT_EQ(ticks, 0);
}

TEST_F(Hands, letATimerStopChangeOrGoInItsTick)
{
    int stopped = 0;
    int changed = 0;
    int gone = 0;
    std::unique_ptr<ClockTimer> stopping;
    std::unique_ptr<ClockTimer> changing;
    std::unique_ptr<ClockTimer> going;
    stopping = clock.createTimer(10, [&] {
        ++stopped;
        stopping->setEnabled(false);
    });
    changing = clock.createTimer(10, [&] {
        ++changed;
        changing->setInterval(40);
    });
    going = clock.createTimer(10, [&] {
        ++gone;
        going.reset();
    });
    stopping->setEnabled(true);
    changing->setEnabled(true);
    going->setEnabled(true);
    clock.advance(95);
    EXPECT_EQ(stopped, 1);
    EXPECT_EQ(changed, 3); // at 10, 50 and 90
    EXPECT_EQ(gone, 1);
}

TEST_F(Hands, startTheWaitAnewWhenATimerIsSwitchedOnAgain)
{
    int ticks = 0;
    const auto timer = clock.createTimer(100, [&] { ++ticks; });
    timer->setEnabled(true);
    clock.advance(60);
    timer->setEnabled(false);
    timer->setEnabled(true);
    clock.advance(60);
    EXPECT_EQ(ticks, 0);
    clock.advance(40);
    EXPECT_EQ(ticks, 1);
}

TEST_F(Hands, tickNothingWhenTheTimeIsCorrected)
{
    int ticks = 0;
    const auto timer = clock.createTimer(1000, [&] { ++ticks; });
    timer->setEnabled(true);
    clock.set(start.addDays(1));
    EXPECT_EQ(ticks, 0);
    clock.advance(1000);
    EXPECT_EQ(ticks, 1);
    EXPECT_EQ(clock.now(), start.addDays(1).addSecs(1));
}
