#include "tests/lookup/session_test.h"

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;
using testing::ElementsAre;

namespace {

MessageBox box(const QString &title, MessageIcon icon, const QString &text)
{
    return {title, text, icon, MessageButtons::Ok};
}

} // namespace

TEST_F(Session, opensWithKeywordsAndStoredResults)
{
    world.write(
        u"Projects/Demo/Finder.dat"_s,
        "boots;12;7;1;9;+2;http://site.example/;11/08/2026\r\nboots(1);;9;1;;;http://site.example/b;\r\n");
    session->open();
    EXPECT_EQ(session->Keywords->Count(), 4);
    EXPECT_EQ(session->Keywords->Keywords.at(u"boots"_s).CurPos, u"7"_s);
}

TEST_F(Session, refusesWithoutRows)
{
    session->LookUpSelectedKeyword(false, {});
    EXPECT_THAT(
        world.desktop.boxes,
        ElementsAre(box(u"Look Up"_s, MessageIcon::Exclamation,
                        u"There is no keyword in the Keyword list. Please clicking the 'Load Keyword' "
                        "button on the Toolbar to retrieve keywords from your search engine account."_s)));
}

TEST_F(Session, refusesWithoutSelection)
{
    session->LookUpSelectedKeyword(true, {});
    EXPECT_THAT(world.desktop.boxes,
                ElementsAre(box(
                    u"Keyword Look Up"_s, MessageIcon::Information,
                    u"Please select(or highlight) the keywords you want to look up in the keyword list"_s)));
}

TEST_F(Session, refusesWithoutUrls)
{
    world.account->URLs->clear();
    session->LookUpSelectedKeyword(true, rows({u"boots"_s}));
    EXPECT_THAT(world.desktop.boxes, ElementsAre(box(u"Keyword Look Up"_s, MessageIcon::Information,
                                                     u"Please specify a web site URL for your account."_s)));
    EXPECT_TRUE(world.http.requests.empty());
}

TEST_F(Session, looksUpShownSelectedRowsThatAreNoFurtherHits)
{
    std::vector<SelectedRow> selection = rows({u"travel"_s, u"travel(2)"_s, u"tea"_s});
    selection[2].Show = false;
    session->LookUpSelectedKeyword(true, selection);
    EXPECT_EQ(asked(), QStringList{u"http://finder.example/find?q=travel&n=10"_s});
    EXPECT_EQ(session->FirstKeyword(), u"travel"_s);
}

TEST_F(Session, staysSilentWhenNoSelectedRowIsTaken)
{
    session->LookUpSelectedKeyword(true, rows({u"travel(2)"_s}));
    EXPECT_TRUE(world.desktop.boxes.empty());
    EXPECT_TRUE(events.empty());
}

TEST_F(Session, raisesNoCompletedForSelectedKeywords)
{
    session->LookUpSelectedKeyword(true, rows({u"travel"_s}));
    answerAll();
    EXPECT_THAT(events, ElementsAre("state", "rows", "state", "finished"));
}

TEST_F(Session, raisesCompletedForAllKeywords)
{
    session->LookupALLKeyword();
    EXPECT_TRUE(session->Online());
    EXPECT_TRUE(world.app.LookupRequested);
    answerAll();
    EXPECT_FALSE(session->Online());
    EXPECT_THAT(events, ElementsAre("state", "rows", "Completed", "state", "finished"));
}

TEST_F(Session, writesTheReportBetweenRedrawAndCompleted)
{
    session->writeReport = [this] { events.push_back("report"); };
    session->LookupALLKeyword();
    answerAll();
    EXPECT_THAT(events, ElementsAre("state", "rows", "report", "Completed", "state", "finished"));
}

TEST_F(Session, savesResultsBeforeTheRedraw)
{
    bool saved = false;
    QObject::connect(session.get(), &LookupSession::rowsChanged,
                     [&] { saved = world.has(u"Projects/Demo/Finder.dat"_s); });
    session->LookupALLKeyword();
    answerAll();
    EXPECT_TRUE(saved);
    EXPECT_TRUE(
        world.read(u"Projects/Demo/Finder.dat"_s).startsWith("boots;2,340;1;1;;1+;http://site.example/;"));
}

TEST_F(Session, dropsFurtherHitsBeforeAFullRun)
{
    world.write(u"Projects/Demo/Finder.dat"_s, "boots(1);;9;1;;;http://site.example/b;\r\n");
    session->open();
    ASSERT_EQ(session->Keywords->Count(), 4);
    session->LookupALLKeyword();
    EXPECT_EQ(session->Keywords->Count(), 3);
    EXPECT_EQ(world.http.requests.size(), 3U);
}

TEST_F(Session, completesAtOnceWithoutKeywords)
{
    session->Keywords->RemoveAll();
    session->LookupALLKeyword();
    EXPECT_THAT(events, ElementsAre("Completed"));
}

TEST_F(Session, looksUpAllKeywordsOfAProjectWithoutUrls)
{
    world.account->URLs.reset();
    session->LookupALLKeyword();
    answerAll();
    EXPECT_EQ(session->Keywords->Keywords.at(u"boots"_s).Status, u"11/15/2026"_s);
    EXPECT_EQ(session->Keywords->Keywords.at(u"boots"_s).CurPos, QString());
}

TEST_F(Session, onlyRaisesCompletedWhenAskedToRunTwice)
{
    session->LookupALLKeyword();
    events.clear();
    world.takeLog();
    session->LookupALLKeyword();
    EXPECT_THAT(events, ElementsAre("Completed"));
    EXPECT_EQ(world.takeLog(), u"Start ranking at 11/15/2026 10:00:00 AM"_s);
    EXPECT_EQ(world.http.requests.size(), 3U);
    answerAll();
    EXPECT_FALSE(session->Online());
}

TEST_F(Session, completesAtOnceForAnEngineThatIsGone)
{
    session->EngineName = u"Nobody"_s;
    session->open();
    session->LookupALLKeyword();
    EXPECT_FALSE(session->Online());
    EXPECT_THAT(events, testing::Contains("Completed"));
    EXPECT_TRUE(world.takeLog().contains(u"clsranking_SetVariable error:  "_s));
}

TEST_F(Session, connectLogsWhenNothingIsPrepared)
{
    session->connect();
    EXPECT_EQ(world.takeLog(), u"connect_Error: m_oRanking is not setted or m_bInsearch is true"_s);
}

TEST_F(Session, fillsTheProgressBarForTenKeywords)
{
    QStringList ten;
    for (int i = 0; i < 10; ++i)
        ten.append(u"term%1"_s.arg(i));
    world.writeKeywords(ten);
    session->open();
    session->LookupALLKeyword();
    EXPECT_EQ(session->progressValue(), 1);
    answerAll();
    EXPECT_EQ(session->progressMaximum(), 11);
    EXPECT_EQ(session->progressValue(), 11);
}

TEST_F(Session, tellsTheStatusBarHowTheRunGoes)
{
    session->LookUpSelectedKeyword(true, rows({u"boots"_s}));
    answerAll();
    const std::string wait = "description: Please wait while retrieving search results from the internet ...";
    EXPECT_THAT(panels, ElementsAre(wait, wait, "description: Look up completed"));
}

TEST_F(Session, leavesTheStatusBarAloneForTheScheduler)
{
    session->Schedle = true;
    session->LookupALLKeyword();
    answerAll();
    EXPECT_TRUE(panels.empty());
    EXPECT_EQ(session->progressValue(), 0);
    EXPECT_THAT(events, testing::Contains("Completed"));
}

TEST_F(Session, startsASecondAfterItIsTold)
{
    session->startSoon();
    world.clock.advance(999);
    EXPECT_TRUE(world.http.requests.empty());
    world.clock.advance(1);
    EXPECT_EQ(world.http.requests.size(), 3U);
    EXPECT_TRUE(world.takeLog().startsWith(u"Scheduler timer start ...\r\n"_s));
    answerAll();
    world.clock.advance(5000);
    EXPECT_EQ(world.http.requests.size(), 3U) << "the timer is off after its tick";
}

TEST_F(Session, raisesCompletedWhenToldToStartDuringARun)
{
    session->LookupALLKeyword();
    events.clear();
    session->startSoon();
    world.clock.advance(1000);
    EXPECT_THAT(events, ElementsAre("Completed"));
}

TEST_F(Session, mayStartTheNextRunFromInsideCompleted)
{
    int runs = 0;
    QObject::connect(session.get(), &LookupSession::Completed, [&] {
        if (++runs == 1)
            session->LookupALLKeyword();
    });
    session->LookupALLKeyword();
    answerAll(); // the requests of the second run too, as they come
    EXPECT_FALSE(session->Online());
    EXPECT_EQ(runs, 2);
    EXPECT_EQ(world.http.requests.size(), 6U);
    EXPECT_EQ(session->Keywords->Keywords.at(u"boots"_s).Change, u"0"_s);
}

TEST_F(Session, logsAFailingReportAndStaysUsable)
{
    session->writeReport = [] { throw Failure(u"disk full"_s); };
    session->LookupALLKeyword();
    world.takeLog();
    answerAll();
    EXPECT_EQ(world.takeLog(), u"frmMain_LookUpComplete: disk full"_s);
    EXPECT_FALSE(session->Online());
    EXPECT_EQ(events.back(), "finished");
}

namespace {

// A handler of a session's signal that fails, and the line that tells of it.
struct FailingHandler
{
    const char *name;
    QString tag;
    std::function<void(LookupSession &)> attach;
    std::function<void(LookupSession &, World &)> act;
};

[[noreturn]] void failing()
{
    throw Failure(u"no memory"_s);
}

class SessionTags : public testing::TestWithParam<FailingHandler>
{
};

} // namespace

TEST_P(SessionTags, tellOfAFailure)
{
    LookupWorld world;
    world.writeKeywords({u"boots"_s});
    LookupSession session(world.app);
    session.Account = world.account;
    session.EngineName = u"Finder"_s;
    session.open();
    GetParam().attach(session);
    GetParam().act(session, world);
    EXPECT_TRUE(world.takeLog().contains(GetParam().tag + u"no memory"_s));
}

INSTANTIATE_TEST_SUITE_P(
    Handlers, SessionTags,
    testing::Values(FailingHandler{"lookupAll", u"frmSondrel_LookupALLKeyword error:  "_s,
                                   [](LookupSession &session) {
                                       session.Keywords->RemoveAll();
                                       QObject::connect(&session, &LookupSession::Completed, failing);
                                   },
                                   [](LookupSession &session, World &) { session.LookupALLKeyword(); }},
                    FailingHandler{"createRanking", u"CreateRanking_Error: "_s,
                                   [](LookupSession &session) {
                                       QObject::connect(&session, &LookupSession::progressChanged, failing);
                                   },
                                   [](LookupSession &session, World &) { session.LookupALLKeyword(); }},
                    FailingHandler{"connect", u"connect_Error: "_s,
                                   [](LookupSession &session) {
                                       QObject::connect(&session, &LookupSession::stateChanged, failing);
                                   },
                                   [](LookupSession &session, World &) { session.LookupALLKeyword(); }},
                    FailingHandler{"rankingConnect", u"clsRanking_connect_Error: "_s,
                                   [](LookupSession &session) {
                                       QObject::connect(&session, &LookupSession::panelChanged, failing);
                                   },
                                   [](LookupSession &session, World &) { session.LookupALLKeyword(); }},
                    FailingHandler{"rankingCompleted", u"clsRanking_m_frmRanking_Completed error:  "_s,
                                   [](LookupSession &session) {
                                       QObject::connect(&session, &LookupSession::progressChanged,
                                                        [](int value) {
                                                            if (value == 2)
                                                                failing();
                                                        });
                                   },
                                   [](LookupSession &session, World &world) {
                                       session.LookupALLKeyword();
                                       world.http.answer(0, "page");
                                   }},
                    FailingHandler{"cancelled", u"frmSondrel_m_oRanking_Cancelled error: "_s,
                                   [](LookupSession &session) {
                                       QObject::connect(&session, &LookupSession::rowsChanged, failing);
                                   },
                                   [](LookupSession &session, World &world) {
                                       session.LookupALLKeyword();
                                       session.Disconnect();
                                       world.clock.advance(800);
                                   }},
                    FailingHandler{"disconnect", u"frmAuto_Disconnect error :  "_s,
                                   [](LookupSession &session) {
                                       QObject::connect(&session, &LookupSession::stopping, failing);
                                   },
                                   [](LookupSession &session, World &) {
                                       session.LookupALLKeyword();
                                       session.Disconnect();
                                   }},
                    FailingHandler{"schedulerTimer", u"frmSondrel_tmrScheduler timer event error:  "_s,
                                   [](LookupSession &session) {
                                       QObject::connect(&session, &LookupSession::Completed, failing);
                                   },
                                   [](LookupSession &session, World &world) {
                                       session.LookupALLKeyword();
                                       session.startSoon();
                                       world.clock.advance(1000);
                                   }}),
    [](const auto &info) { return std::string(info.param.name); });

TEST_F(Session, logsAFailingRefusal)
{
    world.desktop.failing = true;
    session->LookUpSelectedKeyword(false, {});
    EXPECT_EQ(world.takeLog(), u"frmSondrel_LookUpSelectedKeyword error: The message cannot be shown"_s);
}
