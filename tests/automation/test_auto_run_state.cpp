#include "automation/auto_run_state.h"

#include "tests/support/world.h"

#include <QTimeZone>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

struct Due
{
    const char *name;
    QDate nextLookup;
    QString startTime;
    QDateTime now;
    bool due;
};

class DueProject : public testing::TestWithParam<Due>
{
};

TEST_P(DueProject, isDue)
{
    World world;
    clsAccount account(world.app);
    account.SchedulerEnable = true;
    account.NextLookup = GetParam().nextLookup;
    account.StartTime = GetParam().startTime;
    EXPECT_EQ(isDue(account, GetParam().now), GetParam().due);
}

const QDate Day(2026, 11, 15);

INSTANTIATE_TEST_SUITE_P(
    Moments, DueProject,
    testing::Values(
        Due{"Today", Day, u"09:00:00 AM"_s, {Day, QTime(9, 0)}, true},
        Due{"TodayLater", Day, u"02:30:00 PM"_s, {Day, QTime(14, 29, 59)}, false},
        Due{"TodayReached", Day, u"02:30:00 PM"_s, {Day, QTime(14, 30)}, true},
        Due{"Tomorrow", Day.addDays(1), u""_s, {Day, QTime(23, 59)}, false},
        // The start counts for today, whatever day the lookup was due on.
        Due{"LongAgoBeforeStart", Day.addDays(-9), u"10:00"_s, {Day, QTime(9, 59)}, false},
        Due{"LongAgo", Day.addDays(-9), u"10:00"_s, {Day, QTime(10, 0)}, true},
        Due{"OverMidnight", Day, u"11:59:00 PM"_s, {Day.addDays(1), QTime(0, 0)}, false},
        Due{"NoStartTime", Day, u" "_s, {Day, QTime(0, 0)}, true},
        Due{"NeverSet", clsAccount::ZeroDate, u""_s, {Day, QTime(0, 0)}, true},
        Due{"NoDate", QDate(), u""_s, {Day, QTime(0, 0)}, false},
        Due{"LeapDay", QDate(2028, 2, 29), u"08:00"_s, {QDate(2028, 2, 29), QTime(8, 0)}, true},
        Due{"DayBeforeLeapDay", QDate(2028, 2, 29), u"08:00"_s, {QDate(2028, 2, 28), QTime(23, 0)}, false},
        Due{"ClockSetBack", Day, u""_s, {Day.addDays(-1), QTime(12, 0)}, false}),
    [](const auto &row) { return row.param.name; });

TEST(DueProjects, areThoseThatAreSwitchedOn)
{
    World world;
    clsAccount account(world.app);
    account.NextLookup = Day;
    EXPECT_FALSE(isDue(account, QDateTime(Day, QTime(10, 0))));
}

// On such a day there is no such moment, or there are two; what a clock on the wall shows decides.
TEST(DueProjects, startOnTheDaysOnWhichClocksAreMoved)
{
    World world;
    const QTimeZone zone("Europe/Berlin");
    clsAccount account(world.app);
    account.SchedulerEnable = true;
    account.StartTime = u"02:30"_s;
    account.NextLookup = QDate(2026, 3, 29);
    const QDateTime before(QDate(2026, 3, 29), QTime(1, 59, 59), zone);
    EXPECT_FALSE(isDue(account, before));
    EXPECT_TRUE(isDue(account, before.addSecs(1)));
    account.NextLookup = QDate(2026, 10, 25);
    const QDateTime summer = QDateTime(QDate(2026, 10, 25), QTime(0, 0), zone).addSecs(2 * 3600);
    EXPECT_FALSE(isDue(account, summer.addSecs(1799)));
    EXPECT_TRUE(isDue(account, summer.addSecs(1800)));
}

TEST(DueProjects, failOnAStartThatIsNoTime)
{
    World world;
    clsAccount account(world.app);
    account.SchedulerEnable = true;
    account.NextLookup = Day;
    account.StartTime = u"soon"_s;
    EXPECT_THROW(isDue(account, QDateTime(Day, QTime(10, 0))), Failure);
}

class AutoRunText : public testing::Test
{
protected:
    AutoRunText() : account(world.app)
    {
        account.Name = u"Shop"_s;
        account.SchedulerEnable = true;
    }
    void store(QDate nextLookup)
    {
        account.NextLookup = nextLookup;
        account.SaveSettings();
    }

    World world;
    clsAccount account;
};

TEST_F(AutoRunText, isOff)
{
    account.SchedulerEnable = false;
    EXPECT_EQ(autoRunText(world.app, account, true), u"Auto LookUp is off"_s);
}

TEST_F(AutoRunText, tellsOfARunOnTheEngineOnShow)
{
    EXPECT_EQ(autoRunText(world.app, account, true), u"LookUp is running..."_s);
}

TEST_F(AutoRunText, tellsThatTheDayHasCome)
{
    store(world.clock.today());
    EXPECT_EQ(autoRunText(world.app, account, false), u"Auto LookUp is in queue"_s);
}

TEST_F(AutoRunText, readsTheDateAnew)
{
    store(QDate(2026, 12, 3));
    account.NextLookup = QDate(2020, 1, 1);
    EXPECT_EQ(autoRunText(world.app, account, false), u"Next LookUp: 12/03/2026"_s);
}

// A file that has gone, or that says nothing, leaves what was read before.
TEST_F(AutoRunText, keepsTheDateOfAProjectWhoseFileSaysNothing)
{
    account.NextLookup = QDate(2026, 12, 3);
    EXPECT_EQ(autoRunText(world.app, account, false), u"Next LookUp: 12/03/2026"_s);
    world.write(u"Projects/Shop/Shop.dat"_s, "[Schedler]\r\nSchedlerEnable=maybe\r\n");
    EXPECT_EQ(autoRunText(world.app, account, false), u"Next LookUp: 12/03/2026"_s);
}

TEST_F(AutoRunText, isNoneWithoutADate)
{
    account.NextLookup = QDate();
    EXPECT_EQ(autoRunText(world.app, account, false), std::nullopt);
}

} // namespace
