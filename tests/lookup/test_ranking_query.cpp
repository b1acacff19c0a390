#include "core/failure.h"
#include "lookup/ranking_query.h"
#include "tests/support/lookup_world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

struct BracketCase
{
    const char *name;
    QString keyword;
    QString wanted;
};

class RepeatedBrackets : public testing::TestWithParam<BracketCase>
{
};

struct QueryCase
{
    const char *name;
    QString engine;
    QString keyword;
    QString url;
};

class RankingQueryAddress : public testing::TestWithParam<QueryCase>
{
};

} // namespace

TEST_P(RepeatedBrackets, goOnlyWhereTheyRepeat)
{
    EXPECT_EQ(withoutRepeatedBrackets(GetParam().keyword), GetParam().wanted);
}

INSTANTIATE_TEST_SUITE_P(
    Keywords, RepeatedBrackets,
    testing::Values(BracketCase{"innerHoldsOuter", u"hotels (hotels uk)"_s, u"hotels "_s},
                    BracketCase{"outerHoldsInner", u"new york (york)"_s, u"new york "_s},
                    BracketCase{"otherCase", u"Hotels (HOTELS UK)"_s, u"Hotels "_s},
                    BracketCase{"different", u"hotels (paris)"_s, u"hotels (paris)"_s},
                    BracketCase{"everyOccurrence", u"a(a)b(A)c"_s, u"abc"_s},
                    BracketCase{"blanksInside", u"hotels ( hotels )"_s, u"hotels ( hotels )"_s},
                    BracketCase{"nothingInFront", u"(paris)"_s, u""_s},
                    BracketCase{"nothingInside", u"hotels ()"_s, u"hotels "_s},
                    BracketCase{"nothingAtAll", u"()"_s, u"()"_s},
                    BracketCase{"notClosed", u"hotels (hotels"_s, u"hotels (hotels"_s},
                    BracketCase{"closedFirst", u"hotels ) ("_s, u"hotels ) ("_s}),
    [](const auto &info) { return std::string(info.param.name); });

TEST_P(RankingQueryAddress, encodesAsTheEngineNeeds)
{
    LookupWorld world;
    EXPECT_EQ(rankingQuery(world.app, GetParam().engine, GetParam().keyword).URL, GetParam().url);
}

INSTANTIATE_TEST_SUITE_P(
    Engines, RankingQueryAddress,
    testing::Values(QueryCase{"plain", u"Finder"_s, u"caf\u00e9 50%"_s,
                              u"http://finder.example/find?q=caf%C3%A9+50%25&n=10"_s},
                    QueryCase{"slash", u"Finder"_s, u"tcp/ip"_s,
                              u"http://finder.example/find?q=tcp%2Fip&n=10"_s},
                    QueryCase{"linkTwiceOnWebCrawler", u"WebCrawler"_s, u"link:site.example"_s,
                              u"http://wc.example/search?t=link%253Asite.example"_s},
                    QueryCase{"linkOnceElsewhere", u"Finder"_s, u"link:site.example"_s,
                              u"http://finder.example/find?q=link%3Asite.example&n=10"_s},
                    QueryCase{"chineseWithUtf", u"Sousuo(CN)"_s, u"\u4e2d x"_s,
                              u"http://sousuo.example/s?ie=UTF-8&w=%E4%B8%AD+x&p=1"_s},
                    QueryCase{"chineseWithoutUtf", u"Zhao (cn)"_s, u"ab"_s,
                              u"http://zhao.example/s?ie=gb2312&w=%61%62"_s}),
    [](const auto &info) { return std::string(info.param.name); });

TEST(RankingQuery, encodesBlanksOfThePostBody)
{
    LookupWorld world;
    const RankingQuery query = rankingQuery(world.app, u"Poster"_s, u"red shoes"_s);
    EXPECT_EQ(query.PostData, u"q=red+shoes&b=a%20b"_s);
    EXPECT_EQ(query.SubmitMethod, u"post"_s);
}

TEST(RankingQuery, failsForAnUnknownEngine)
{
    LookupWorld world;
    EXPECT_THROW(rankingQuery(world.app, u"Nobody"_s, u"a"_s), Failure);
}
