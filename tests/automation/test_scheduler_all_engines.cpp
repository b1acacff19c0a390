#include "tests/automation/scheduler_world.h"

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;
using testing::ElementsAre;

namespace {

class AllEngines : public SchedulerTest
{
protected:
    AllEngines()
    {
        view.account = addProject(u"Shop"_s, {u"Finder"_s, u"Poster"_s});
        view.nodes = QStringList{u"RootGlobal"_s, u"EngineFinder"_s, u"RootAsia"_s, u"EnginePoster"_s};
        view.show(u"Finder"_s);
        QObject::connect(view.session.get(), &LookupSession::Completed,
                         [this] { scheduler.onShownSessionCompleted(); });
    }
};

TEST_F(AllEngines, areLookedUpInTheOrderOfTheTree)
{
    reports.ReportsFresh = true;
    scheduler.startAllEngines();
    EXPECT_TRUE(world.app.LookupRequested);
    EXPECT_FALSE(reports.ReportsFresh);
    EXPECT_THAT(view.opened, ElementsAre(2));
    pass(1500);
    EXPECT_THAT(view.opened, ElementsAre(2, 4));
    EXPECT_TRUE(scheduler.AllEngineMode());
    pass(1500);
    EXPECT_FALSE(scheduler.AllEngineMode());
    EXPECT_TRUE(world.has(u"Projects/Shop/Finder.dat"_s));
    EXPECT_TRUE(world.has(u"Projects/Shop/Poster.dat"_s));
    EXPECT_TRUE(world.has(u"reports/Shop/menu.html"_s));
    EXPECT_TRUE(reports.ReportsFresh);
    EXPECT_EQ(world.desktop.beeps, 1);
    EXPECT_EQ(nextLookup(u"Shop"_s), world.clock.today()) << "the date stays";
}

TEST_F(AllEngines, mailTheReportsAtTheEnd)
{
    view.account->SentReport = true;
    view.account->ReportTo = u"client@site.example"_s;
    scheduler.startAllEngines();
    pass(4000);
    EXPECT_EQ(world.smtp.conversations.size(), 1U);
}

TEST_F(AllEngines, endWithACancelledRun)
{
    world.http.autoAnswer = nullptr;
    scheduler.startAllEngines();
    pass(1500);
    ASSERT_TRUE(view.session->Online());
    scheduler.requestStop();
    view.session->Disconnect();
    pass(5000);
    EXPECT_FALSE(view.session->Online());
    EXPECT_THAT(view.opened, ElementsAre(2));
    EXPECT_TRUE(scheduler.AllEngineMode());
    EXPECT_TRUE(scheduler.StopRequested());
}

TEST_F(AllEngines, areClearedOfAStopByTheNextFullRun)
{
    scheduler.requestStop();
    view.session->LookupALLKeyword();
    pass(2000);
    EXPECT_FALSE(scheduler.StopRequested());
    EXPECT_TRUE(view.opened.isEmpty());
}

TEST_F(AllEngines, stopBetweenTwoEngines)
{
    scheduler.startAllEngines();
    scheduler.requestStop();
    pass(5000);
    EXPECT_THAT(view.opened, ElementsAre(2));
    EXPECT_FALSE(scheduler.StopRequested());
}

TEST_F(AllEngines, ofATreeWithoutAnyMakeTheReportsAtOnce)
{
    view.nodes.clear();
    scheduler.startAllEngines();
    EXPECT_FALSE(scheduler.AllEngineMode());
    EXPECT_EQ(world.desktop.beeps, 1);
    EXPECT_TRUE(world.has(u"reports/Shop/menu.html"_s));
}

TEST_F(AllEngines, logWhatFails)
{
    view.failNodes = u"broken"_s;
    scheduler.startAllEngines();
    EXPECT_EQ(world.takeLog(), u"frmMain_LookupAllKeywordForAllEngine error: broken"_s);
}

TEST_F(AllEngines, goOnBesideAScheduledRun)
{
    scheduler.scan();
    scheduler.startAllEngines();
    pass(8000);
    EXPECT_FALSE(scheduler.AllEngineMode());
    EXPECT_THAT(finished, ElementsAre(u"Shop"_s));
}

} // namespace
