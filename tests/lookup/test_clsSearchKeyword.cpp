#include "lookup/clsSearchKeyword.h"
#include "tests/lookup/search_world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class GetResultTest : public SearchWorld, public testing::Test
{
};

// "position/page/change/url", empty rows as they are.
QString shown(const clsKeyword *row)
{
    return row ? u"%1 p%2 %3 %4"_s.arg(row->CurPos, row->Page, row->Change, row->URL) : u"(no row)"_s;
}

} // namespace

TEST_F(GetResultTest, storesTheFirstMatchAndGivesFurtherOnesRowsOfTheirOwn)
{
    track({u"site.example"_s});
    analyse(resultPage(12, {{7, u"http://www.site.example/shop/"_s}, {12, u"http://site.example/b.html"_s}}));
    EXPECT_EQ(shown(row(u"travel"_s)), u"7 p1 7+ http://www.site.example/shop/"_s);
    EXPECT_EQ(shown(row(u"travel(1)"_s)), u"12 p1  http://site.example/b.html"_s);
    EXPECT_EQ(keywords.Count(), 2);
    EXPECT_EQ(search.LinksCount(), 12);
    EXPECT_EQ(search.MatchCount, 2);
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(GetResultTest, keepsTheTopPositionOnlyWhenAskedTo)
{
    track({u"site.example"_s});
    account.TopPosOnly = true;
    analyse(resultPage(12, {{7, u"http://site.example/"_s}, {12, u"http://site.example/b.html"_s}}));
    EXPECT_EQ(shown(row(u"travel"_s)), u"7 p1 7+ http://site.example/"_s);
    EXPECT_EQ(keywords.Count(), 1);
    EXPECT_EQ(search.MatchCount, 2);
}

TEST_F(GetResultTest, fillsAClearedPositionWithoutAChange)
{
    track({u"site.example"_s});
    account.TopPosOnly = true;
    analyse(resultPage(3, {{2, u"http://site.example/"_s}}));
    row(u"travel"_s)->CurPos.clear();
    row(u"travel"_s)->Change.clear();
    analyse(resultPage(3, {{1, u"http://site.example/a"_s}, {3, u"http://site.example/b"_s}}));
    EXPECT_EQ(shown(row(u"travel"_s)), u"4 p1  http://site.example/"_s);
}

TEST_F(GetResultTest, numbersListingsAcrossPages)
{
    track({u"site.example"_s});
    analyse(resultPage(10, {}));
    analyse(resultPage(10, {{3, u"http://site.example/"_s}}));
    EXPECT_EQ(shown(row(u"travel"_s)), u"13 p2 13+ http://site.example/"_s);
    EXPECT_EQ(search.Pages, 2);
    EXPECT_EQ(search.LinksCount(), 20);
}

TEST_F(GetResultTest, countsAListingOfTwoTrackedAddressesTwice)
{
    track({u"rival.example"_s, u"site.example"_s, u""_s, u"site.example/shop"_s});
    analyse(resultPage(2, {{1, u"http://site.example/shop/x"_s}, {2, u"http://rival.example/"_s}}));
    EXPECT_EQ(shown(row(u"travel"_s)), u"1 p1 1+ http://site.example/shop/x"_s);
    EXPECT_EQ(shown(row(u"travel(1)"_s)), u"1 p1  http://site.example/shop/x"_s);
    EXPECT_EQ(shown(row(u"travel(2)"_s)), u"2 p1  http://rival.example/"_s);
    EXPECT_EQ(search.LinksCount(), 2);
}

TEST_F(GetResultTest, givesTheEnginesOwnListingsNoNumber)
{
    track({u"site.example"_s});
    analyse(
        resultPage(3, {{1, u"http://cache.finder.example/site.example/"_s}, {2, u"http://site.example/"_s}}));
    EXPECT_EQ(shown(row(u"travel"_s)), u"1 p1 1+ http://site.example/"_s);
    EXPECT_EQ(search.LinksCount(), 2);
}

TEST_F(GetResultTest, matchesATrackedPathOnlyBelowIt)
{
    track({u"site.example/shop"_s});
    analyse(resultPage(3, {{1, u"http://site.example/"_s}, {2, u"http://site.example/shop/a"_s}}));
    EXPECT_EQ(shown(row(u"travel"_s)), u"2 p1 2+ http://site.example/shop/a"_s);
    EXPECT_EQ(keywords.Count(), 1);
}

TEST_F(GetResultTest, losesAKeywordThatIsNotFound)
{
    track({u"site.example"_s});
    row(u"travel"_s)->CurPos = u"9"_s;
    row(u"travel"_s)->Page = u"1"_s;
    row(u"travel"_s)->URL = u"http://site.example/"_s;
    analyse(resultPage(3, {}));
    EXPECT_EQ(shown(row(u"travel"_s)), u" p -9 http://site.example/"_s);
    EXPECT_EQ(row(u"travel"_s)->LastPosition, u"9"_s);
}

TEST_F(GetResultTest, keepsThePositionOfAnEarlierPageOfTheRun)
{
    track({u"site.example"_s});
    analyse(resultPage(3, {{2, u"http://site.example/"_s}}));
    analyse(resultPage(3, {}));
    EXPECT_EQ(shown(row(u"travel"_s)), u"2 p1 2+ http://site.example/"_s);
}

TEST_F(GetResultTest, storesTheCountAsItIsWritten)
{
    struct Row
    {
        const char *name;
        QString head, count;
    };
    const Row rows[] = {
        {"with commas", u"<p>Results 1 - 10 of 1,240,000</p>"_s, u"1,240,000"_s},
        {"with dots", u"<p>Results 1.240.000</p>"_s, u"1.240.000"_s},
        {"no number", u"<p>Results about 17</p>"_s, u"5"_s},
        {"none", u"<p>Results </p>"_s, u"5"_s},
    };
    for (const Row &row_ : rows) {
        row(u"travel"_s)->Count = u"5"_s;
        restart();
        analyse(row_.head + u"<ol></ol>"_s);
        EXPECT_EQ(row(u"travel"_s)->Count, row_.count) << row_.name;
    }
}

TEST_F(GetResultTest, takesTheCountFromTheFirstPageAlone)
{
    analyse(u"<p>Results 12</p><ol></ol>"_s);
    analyse(u"<p>Results 13</p><ol></ol>"_s);
    EXPECT_EQ(row(u"travel"_s)->Count, u"12"_s);
}

TEST_F(GetResultTest, makesARowThatIsMissing)
{
    track({u"site.example"_s});
    search.Keyword = u"other"_s;
    analyse(resultPage(3, {{2, u"http://site.example/"_s}}));
    EXPECT_EQ(shown(row(u"other"_s)), u"2 p1 2+ http://site.example/"_s);
}

TEST_F(GetResultTest, worksWithoutTrackedAddresses)
{
    search.RankingURL = nullptr;
    analyse(resultPage(3, {}));
    EXPECT_EQ(search.LinksCount(), 3);
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(GetResultTest, takesTheWholePageForTheBlockWhenBothItsStringsAreMissing)
{
    track({u"site.example"_s});
    search.ResultStartString = u"<dl>"_s;
    search.ResultEndString = u"</dl>"_s;
    analyse(resultPage(3, {{2, u"http://site.example/"_s}}));
    EXPECT_EQ(row(u"travel"_s)->CurPos, u"2"_s);
}

TEST_F(GetResultTest, leavesTheNumberOfListingsOnAnEmptyPage)
{
    analyse(resultPage(3, {}));
    analyse(u"nothing more"_s);
    EXPECT_EQ(search.LinksCount(), 3);
    EXPECT_EQ(search.Pages, 2);
}

TEST_F(GetResultTest, setsTheMatchesToNoneWithTheNumberOfListings)
{
    search.MatchCount = 4;
    search.setLinksCount(7);
    EXPECT_EQ(search.LinksCount(), 7);
    EXPECT_EQ(search.MatchCount, 0);
}

TEST_F(GetResultTest, failsWhenThePagesRunOutOfNumbers)
{
    search.Pages = 32'767;
    analyse(resultPage(3, {}));
    EXPECT_EQ(world.takeLog(), u"clsRanking_GetResult: Engine Name = FinderError= Overflow"_s);
    EXPECT_EQ(search.Pages, 32'767);
    EXPECT_FALSE(world.has(u"Reports/Demo/Finder_travel_p32768.html"_s));
}

TEST_F(GetResultTest, failsWhenTheListingsRunOutOfNumbersAndKeepsWhatItHas)
{
    track({u"site.example"_s});
    search.setLinksCount(32'766);
    analyse(resultPage(3, {{1, u"http://site.example/"_s}, {2, u"http://site.example/"_s}}));
    EXPECT_EQ(world.takeLog(), u"clsRanking_GetResult: Engine Name = FinderError= Overflow"_s);
    EXPECT_EQ(search.LinksCount(), 32'767);
    EXPECT_EQ(row(u"travel"_s)->CurPos, u"32767"_s);
    EXPECT_EQ(world.read(u"Results/Finder/travel.dat"_s),
              "http://site.example/;#Title;#1\r\nhttp://site.example/;#Title;#1\r\n");
}

TEST_F(GetResultTest, failsWhenTheMatchesRunOutOfNumbers)
{
    track({u"site.example"_s});
    search.MatchCount = 32'767;
    analyse(resultPage(1, {{1, u"http://site.example/"_s}}));
    EXPECT_EQ(world.takeLog(), u"clsRanking_GetResult: Engine Name = FinderError= Overflow"_s);
    EXPECT_EQ(search.MatchCount, 32'767);
}

TEST_F(GetResultTest, failsWhenTheRowOfTheTopPositionIsGone)
{
    track({u"site.example"_s});
    account.TopPosOnly = true;
    analyse(resultPage(1, {{1, u"http://site.example/"_s}}));
    keywords.RemoveAll();
    analyse(resultPage(1, {{1, u"http://site.example/"_s}}));
    EXPECT_EQ(world.takeLog(), u"clsRanking_GetResult: Engine Name = FinderError= "
                               "No element of the collection has the key: travel"_s);
}

TEST_F(GetResultTest, failsWithoutAProject)
{
    search.Account = nullptr;
    analyse(resultPage(1, {}));
    EXPECT_EQ(world.takeLog(), u"clsRanking_GetResult: Engine Name = FinderError= "
                               "There are no keyword rows or no project"_s);
}

TEST(GetResultWithoutRows, fails)
{
    World world;
    clsSearchKeyword search(world.app);
    search.GetResult({"page", PageText(u"page"_s)});
    EXPECT_EQ(world.takeLog(),
              u"clsRanking_GetResult: Engine Name = Error= There are no keyword rows or no project"_s);
}
