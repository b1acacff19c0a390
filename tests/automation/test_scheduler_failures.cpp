#include "tests/automation/scheduler_world.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// A clock that fails when it is told to.
class FailingClock final : public Clock
{
public:
    explicit FailingClock(Clock &clock) : m_clock(clock) {}

    bool failTimers = false;
    mutable int answers = -1; // until it fails; never for a negative number

    QDateTime now() const override
    {
        if (answers == 0)
            throw Failure(u"broken"_s);
        if (answers > 0)
            --answers;
        return m_clock.now();
    }
    std::unique_ptr<ClockTimer> createTimer(int interval, std::function<void()> onTick) override
    {
        if (failTimers)
            throw Failure(u"broken"_s);
        return m_clock.createTimer(interval, std::move(onTick));
    }

private:
    Clock &m_clock;
};

class BrokenClock : public SchedulerTest
{
protected:
    BrokenClock()
        : clock(world.clock),
          app(world.app.AppPath, world.folder.filePath(u"system"_s),
              Doors{clock, world.desktop, world.settings, world.http, &world.smtp}, world.app.locale),
          otherReports(app),
          other(app, view, otherReports)
    {
        app.EngineCatalogue = &world.engines;
        addProject(u"Shop"_s, {u"Finder"_s});
    }

    FailingClock clock;
    ApplicationContext app;
    ReportSet otherReports;
    Scheduler other;
};

TEST_F(BrokenClock, endsTheMakingOfASession)
{
    clock.failTimers = true;
    other.scan();
    EXPECT_THAT(world.takeLog().toStdString(), testing::EndsWith("frmMain_AutoBid error:  broken"));
}

TEST_F(BrokenClock, endsTheStartOfAnEngine)
{
    bool left = false;
    for (int answers = 0; answers < 20 && !left; ++answers) {
        clock.answers = answers;
        other.scan();
        left = world.takeLog().contains(u"Scheduler_Error: broken"_s);
    }
    EXPECT_TRUE(left);
}

} // namespace

} // namespace sondrel
