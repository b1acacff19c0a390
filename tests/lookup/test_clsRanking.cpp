#include "lookup/clsRanking.h"
#include "tests/support/lookup_world.h"

#include <gmock/gmock.h>

#include <memory>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

// A run on the scripted transport: every request waits for the test's answer.
class RankingRun : public testing::Test
{
protected:
    RankingRun() : keywords(world.app)
    {
        keywords.AccountName = u"Demo"_s;
        keywords.Engine = u"Finder"_s;
    }

    void prepare(const QStringList &terms)
    {
        for (const QString &term : terms)
            keywords.Add(term, term, -1);
        ranking = std::make_unique<clsRanking>(world.app);
        ranking->setKeywordsObject(&keywords);
        ranking->setAccount(world.account.get());
        QObject::connect(ranking.get(), &clsRanking::Completed, [this] { ++completed; });
        QObject::connect(ranking.get(), &clsRanking::Progress, [this] { ++progress; });
        QObject::connect(ranking.get(), &clsRanking::Cancelled, [this] { ++cancelled; });
        ranking->SetVariable(terms);
    }

    void start(const QStringList &terms)
    {
        prepare(terms);
        ranking->Connect();
    }

    static QStringList terms(int count)
    {
        QStringList result;
        for (int i = 1; i <= count; ++i)
            result.append(u"term%1"_s.arg(i));
        return result;
    }

    const clsKeyword &row(const QString &keyword) const { return keywords.Keywords.at(keyword); }

    LookupWorld world;
    clsKeywords keywords;
    std::unique_ptr<clsRanking> ranking;
    int completed = 0;
    int progress = 0;
    int cancelled = 0;
};

} // namespace

TEST_F(RankingRun, opensOneConnectionPerKeyword)
{
    start(terms(3));
    EXPECT_EQ(world.http.requests.size(), 3U);
    EXPECT_EQ(world.http.controlsAlive, 3);
}

TEST_F(RankingRun, opensTenConnectionsForTwelveKeywords)
{
    start(terms(12));
    ASSERT_EQ(world.http.requests.size(), 10U);
    world.http.answer(0, LookupWorld::page(LookupWorld::fillers()));
    ASSERT_EQ(world.http.requests.size(), 11U);
    EXPECT_EQ(world.http.requests[10].url, u"http://finder.example/find?q=term11&n=10"_s);
    world.http.answer(5, LookupWorld::page(LookupWorld::fillers()));
    ASSERT_EQ(world.http.requests.size(), 12U);
    EXPECT_EQ(world.http.requests[11].url, u"http://finder.example/find?q=term12&n=10"_s);
}

TEST_F(RankingRun, reportsProgressAtTheStartAndPerKeyword)
{
    start(terms(2));
    EXPECT_EQ(progress, 1);
    world.http.answer(1, LookupWorld::page(LookupWorld::fillers()));
    EXPECT_EQ(progress, 2);
    EXPECT_EQ(completed, 0);
    world.http.answer(0, LookupWorld::page(LookupWorld::fillers()));
    EXPECT_EQ(progress, 3);
    EXPECT_EQ(completed, 1);
}

TEST_F(RankingRun, logsItsStart)
{
    start(terms(1));
    EXPECT_EQ(world.takeLog(), u"Lookup Connect start ... at 11/15/2026 10:00:00 AM"_s);
}

TEST_F(RankingRun, isCompleteAtOnceWithoutKeywords)
{
    start({});
    EXPECT_EQ(completed, 1);
    EXPECT_EQ(progress, 0);
    EXPECT_TRUE(world.http.requests.empty());
}

TEST_F(RankingRun, storesPositionStatusAndCount)
{
    start({u"boots"_s});
    world.http.answer(0, LookupWorld::page({"http://a.example/", "http://www.site.example/shop"}));
    EXPECT_EQ(row(u"boots"_s).CurPos, u"2"_s);
    EXPECT_EQ(row(u"boots"_s).Change, u"2+"_s);
    EXPECT_EQ(row(u"boots"_s).Page, u"1"_s);
    EXPECT_EQ(row(u"boots"_s).URL, u"http://www.site.example/shop"_s);
    EXPECT_EQ(row(u"boots"_s).Count, u"2,340"_s);
    EXPECT_EQ(row(u"boots"_s).Status, u"11/15/2026"_s);
}

TEST_F(RankingRun, readsOnePageWhenItHoldsEnoughLinks)
{
    world.account->LinksNum = 10;
    start({u"boots"_s});
    world.http.answer(0, LookupWorld::page(LookupWorld::fillers(10), "/find?p=2"));
    EXPECT_EQ(world.http.requests.size(), 1U);
    EXPECT_EQ(completed, 1);
}

TEST_F(RankingRun, readsOnUntilTheLinksAreThere)
{
    world.account->LinksNum = 30;
    start({u"boots"_s});
    world.http.answer(0, LookupWorld::page(LookupWorld::fillers(10), "/find?p=2"));
    ASSERT_EQ(world.http.requests.size(), 2U);
    EXPECT_EQ(world.http.requests[1].url, u"http://finder.example/find?p=2"_s);
    world.http.answer(1, LookupWorld::page(LookupWorld::fillers(10), "/find?p=3"));
    world.http.answer(2, LookupWorld::page(LookupWorld::fillers(7), "/find?p=4"));
    ASSERT_EQ(world.http.requests.size(), 4U) << "27 links are fewer than 30, and the third page added some";
    EXPECT_EQ(progress, 1);
    world.http.answer(3, "<html><ol></ol></html>");
    EXPECT_EQ(world.http.requests.size(), 4U) << "a page without listings ends the keyword";
    EXPECT_EQ(completed, 1);
    EXPECT_EQ(row(u"boots"_s).Status, u"11/15/2026"_s);
}

TEST_F(RankingRun, asksForTheFolderWhenThereIsNoNextLink)
{
    world.account->LinksNum = 30;
    start({u"boots"_s});
    world.http.answer(0, LookupWorld::page(LookupWorld::fillers(10)));
    ASSERT_EQ(world.http.requests.size(), 2U);
    EXPECT_EQ(world.http.requests[1].url, u"http://finder.example/"_s);
    world.http.answer(1, "not found");
    EXPECT_EQ(completed, 1);
}

TEST_F(RankingRun, readsOnePageOfAnEngineWithoutNextPageString)
{
    world.account->LinksNum = 30;
    keywords.Engine = u"No Paging"_s;
    start({u"boots"_s});
    world.takeLog();
    world.http.answer(0, LookupWorld::page(LookupWorld::fillers(10), "/find?p=2"));
    EXPECT_EQ(world.http.requests.size(), 1U);
    EXPECT_EQ(completed, 1);
    EXPECT_TRUE(world.takeLog().startsWith(u"getNextURL_Error:"_s));
}

TEST_F(RankingRun, keepsPostBodyFromPageToPage)
{
    world.account->LinksNum = 30;
    keywords.Engine = u"Poster"_s;
    start({u"red boots"_s});
    ASSERT_TRUE(world.http.requests[0].post);
    EXPECT_EQ(world.http.requests[0].postData, "q=red+boots&b=a%20b");
    world.http.answer(0, LookupWorld::page(LookupWorld::fillers(10), "/go?p=2"));
    ASSERT_EQ(world.http.requests.size(), 2U);
    EXPECT_TRUE(world.http.requests[1].post);
    EXPECT_EQ(world.http.requests[1].postData, "q=red+boots&b=a%20b");
}

TEST_F(RankingRun, growsTheAddressOfEspottingByATailPerPage)
{
    world.account->LinksNum = 30;
    keywords.Engine = u"Espotting"_s;
    start({u"red boots"_s});
    EXPECT_TRUE(world.http.requests[0].post);
    world.http.answer(0, LookupWorld::page(LookupWorld::fillers(10)));
    ASSERT_EQ(world.http.requests.size(), 2U);
    EXPECT_FALSE(world.http.requests[1].post);
    const QString first = u"http://espotting.example/sred+boots"_s.replace(u"sred"_s, u"s?k=red"_s);
    const QString second = first + u"?affiliateid=1&keyword=red+boots&page=2"_s;
    EXPECT_EQ(world.http.requests[1].url, second);
    world.http.answer(1, LookupWorld::page(LookupWorld::fillers(10)));
    ASSERT_EQ(world.http.requests.size(), 3U);
    EXPECT_EQ(world.http.requests[2].url, second + u"?affiliateid=1&keyword=red+boots&page=3"_s);
}

TEST_F(RankingRun, setsTheOffsetOfAnzwersByHand)
{
    world.account->LinksNum = 30;
    keywords.Engine = u"Anzwers"_s;
    start({u"boots"_s});
    world.http.answer(0,
                      LookupWorld::page(LookupWorld::fillers(10), "http://anzwers.example/s?b=200&q=boots"));
    ASSERT_EQ(world.http.requests.size(), 2U);
    EXPECT_EQ(world.http.requests[1].url, u"http://anzwers.example/s?b=11&q=boots"_s);
}

TEST_F(RankingRun, marksAnEmptyAnswerFailed)
{
    start({u"boots"_s});
    world.takeLog();
    world.http.answer(0, {});
    EXPECT_EQ(row(u"boots"_s).Status, u"Failed"_s);
    EXPECT_EQ(world.takeLog(), u"Look up 'boots' Fail. ResponseCode=0, Return Data empty."_s);
    EXPECT_EQ(completed, 1);
}

TEST_F(RankingRun, keepsEarlierPagesWhenALaterOneFails)
{
    world.account->LinksNum = 30;
    start({u"boots"_s});
    world.http.answer(0, LookupWorld::page({"http://site.example/"}, "/find?p=2"));
    world.http.answer(1, {});
    EXPECT_EQ(row(u"boots"_s).Status, u"Failed"_s);
    EXPECT_EQ(row(u"boots"_s).CurPos, u"1"_s);
    EXPECT_EQ(completed, 1);
}

TEST_F(RankingRun, marksALostConnectionFailedAtTimeOut)
{
    start({u"boots"_s});
    world.takeLog();
    // The connection has closed without its event.
    world.http.requests[0].control->state = HttpControl::Closed;
    world.clock.advance(30000);
    EXPECT_EQ(row(u"boots"_s).Status, u"Failed"_s);
    EXPECT_EQ(world.takeLog(), u"Look up 'boots' Fail. errorcode=10200Error description=Time out"_s);
    EXPECT_EQ(completed, 1);
}

TEST_F(RankingRun, analysesWhatHadArrivedAtTimeOut)
{
    start({u"boots"_s});
    world.http.requests[0].control->body = LookupWorld::page({"http://site.example/"});
    world.clock.advance(30000);
    EXPECT_EQ(row(u"boots"_s).CurPos, u"1"_s);
    EXPECT_EQ(row(u"boots"_s).Status, u"11/15/2026"_s);
    EXPECT_EQ(completed, 1);
}

TEST_F(RankingRun, trimsTheKeywordForStatusOnly)
{
    start({u" boots"_s});
    world.http.answer(0, {});
    EXPECT_EQ(row(u" boots"_s).Status, QString());
    EXPECT_TRUE(keywords.Keywords.HasKey(u"boots"_s));
}

TEST_F(RankingRun, endsPreparationForAnUnknownEngine)
{
    keywords.Engine = u"Nobody"_s;
    prepare(terms(3));
    EXPECT_TRUE(world.takeLog().startsWith(u"clsranking_SetVariable error:  "_s));
    ranking->Connect();
    EXPECT_EQ(completed, 1);
    EXPECT_TRUE(world.http.requests.empty());
}

TEST_F(RankingRun, tellsOfCancelOnceAllConnectionsAreClosed)
{
    start(terms(3));
    ranking->Disconnect();
    EXPECT_EQ(world.http.pending(), 0);
    EXPECT_EQ(cancelled, 0);
    world.clock.advance(800);
    EXPECT_EQ(cancelled, 1);
    EXPECT_EQ(completed, 0);
}

TEST_F(RankingRun, startsNothingWhenCancelledByItsFirstProgress)
{
    prepare(terms(3));
    QObject::connect(ranking.get(), &clsRanking::Progress, ranking.get(), &clsRanking::Disconnect);
    ranking->Connect();
    EXPECT_TRUE(world.http.requests.empty());
    world.clock.advance(800);
    EXPECT_EQ(cancelled, 1);
}

TEST_F(RankingRun, startsNothingNewWhenCancelledFromInsideACompletion)
{
    prepare(terms(12));
    QObject::connect(ranking.get(), &clsRanking::Progress, [this] {
        if (progress == 2)
            ranking->Disconnect();
    });
    ranking->Connect();
    world.http.answer(0, LookupWorld::page({"http://site.example/"}));
    EXPECT_EQ(world.http.requests.size(), 10U);
    EXPECT_EQ(row(u"term1"_s).CurPos, u"1"_s);
    EXPECT_EQ(world.http.pending(), 0);
    world.clock.advance(800);
    EXPECT_EQ(cancelled, 1);
    EXPECT_EQ(completed, 0);
}

TEST_F(RankingRun, endsCancelledWhenTheLastProgressCancels)
{
    prepare(terms(1));
    QObject::connect(ranking.get(), &clsRanking::Progress, [this] {
        if (progress == 2)
            ranking->Disconnect();
    });
    ranking->Connect();
    world.http.answer(0, LookupWorld::page({"http://site.example/"}));
    world.clock.advance(800);
    EXPECT_EQ(completed, 0);
    EXPECT_EQ(cancelled, 1);
}

TEST_F(RankingRun, mayBeDestroyedByAnyOfItsSignals)
{
    for (int fatal = 1; fatal <= 4; ++fatal) {
        int signal = 0;
        keywords.RemoveAll();
        prepare(terms(2));
        const auto destroy = [&] {
            if (++signal == fatal)
                ranking.reset();
        };
        QObject::connect(ranking.get(), &clsRanking::Progress, destroy);
        QObject::connect(ranking.get(), &clsRanking::Completed, destroy);
        const std::size_t before = world.http.requests.size();
        ranking->Connect();
        for (std::size_t i = before; i < world.http.requests.size(); ++i)
            world.http.answer(i, LookupWorld::page(LookupWorld::fillers()));
        EXPECT_EQ(ranking, nullptr) << fatal;
        EXPECT_EQ(world.http.controlsAlive, 0) << fatal;
    }
}

TEST_F(RankingRun, leavesNoTransferWhenItsPoolIsClosed)
{
    start(terms(3));
    ranking->CloseHTTPForm();
    EXPECT_EQ(world.http.controlsAlive, 0);
    ranking->Disconnect();
    world.clock.advance(10000);
    EXPECT_EQ(cancelled, 0);
}

TEST_F(RankingRun, looksUpKeywordsThatAreNoFileNames)
{
    start({u"tcp/ip"_s, u"a\\b"_s, u".."_s, u"50%"_s});
    for (std::size_t i = 0; i < 4; ++i)
        world.http.answer(i, LookupWorld::page({"http://site.example/"}));
    EXPECT_EQ(completed, 1);
    for (const auto &keyword : {u"tcp/ip"_s, u"a\\b"_s, u".."_s, u"50%"_s})
        EXPECT_EQ(row(keyword).CurPos, u"1"_s) << keyword.toStdString();
    EXPECT_EQ(world.takeLog(), u"Lookup Connect start ... at 11/15/2026 10:00:00 AM"_s);
}
