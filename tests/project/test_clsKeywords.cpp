#include "project/clsKeywords.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

clsKeyword named(const QString &keyword)
{
    clsKeyword row;
    row.Keyword = keyword;
    return row;
}

QStringList namesIn(const clsKeywords &keywords)
{
    QStringList names;
    for (const clsKeyword &row : keywords.Keywords)
        names.append(row.Keyword);
    return names;
}

struct Lookup
{
    const char *name;
    QString before; // CurPos
    QString changeBefore;
    QString found; // empty: not found
    clsKeyword after;
};

void PrintTo(const Lookup &row, std::ostream *out)
{
    *out << row.name;
}

class ClsKeywordsLookup : public testing::TestWithParam<Lookup>
{
};

clsKeyword after(const QString &position, const QString &last, const QString &change, const QString &page)
{
    clsKeyword row = named(u"shoes"_s);
    row.CurPos = position;
    row.LastPosition = last;
    row.Change = change;
    row.Page = page;
    row.URL = u"http://site.example/"_s;
    return row;
}

} // namespace

// The calls of a lookup for one term, without those for page and URL.
TEST_P(ClsKeywordsLookup, leavesPositionAndChange)
{
    World world;
    clsKeywords keywords(world.app);
    clsKeyword row = named(u"shoes"_s);
    row.CurPos = GetParam().before;
    row.Change = GetParam().changeBefore;
    row.Page = u"2"_s;
    row.URL = u"http://site.example/"_s;
    keywords.AddKeyword(row, -1);
    EXPECT_TRUE(keywords.UpdateObject(u"Shoes"_s, u"LastPos"_s, u"ignored"_s));
    EXPECT_TRUE(keywords.UpdateObject(u"Shoes"_s, u"CurPos"_s, QString()));
    if (!GetParam().found.isEmpty()) {
        EXPECT_TRUE(keywords.UpdateObject(u"Shoes"_s, u"curpos"_s, GetParam().found));
    }
    EXPECT_EQ(keywords.Keywords.at(1), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(
    Changes, ClsKeywordsLookup,
    testing::Values(Lookup{"first", {}, {}, u"7"_s, after(u"7"_s, {}, u"7+"_s, u"2"_s)},
                    Lookup{"rise", u"7"_s, u"7+"_s, u"4"_s, after(u"4"_s, u"7"_s, u"+3"_s, {})},
                    Lookup{"fall", u"4"_s, u"+3"_s, u"9"_s, after(u"9"_s, u"4"_s, u"-5"_s, {})},
                    Lookup{"same", u"9"_s, u"-5"_s, u"9"_s, after(u"9"_s, u"9"_s, u"0"_s, {})},
                    Lookup{"lost", u"9"_s, u"0"_s, {}, after({}, u"9"_s, u"-9"_s, {})},
                    Lookup{"stillLost", {}, u"-9"_s, {}, after({}, {}, u"-9"_s, u"2"_s)},
                    Lookup{"textsAsNumbers", u"12a"_s, {}, u"2b"_s, after(u"2b"_s, u"12a"_s, u"+10"_s, {})}));

TEST(ClsKeywords, addsAnUnknownTermWithoutItsValue)
{
    World world;
    clsKeywords keywords(world.app);
    EXPECT_FALSE(keywords.UpdateObject(u"new term"_s, u"URL"_s, u"x"_s));
    EXPECT_EQ(keywords.Keywords.at(1), named(u"new term"_s));
}

TEST(ClsKeywords, addsAFurtherHitWithPositionAndDate)
{
    World world;
    clsKeywords keywords(world.app);
    EXPECT_FALSE(keywords.UpdateObject(u"shoes(2)"_s, u"CURPOS"_s, u"12"_s));
    clsKeyword wanted = named(u"shoes(2)"_s);
    wanted.CurPos = u"12"_s;
    wanted.Status = u"11/15/2026"_s;
    EXPECT_EQ(keywords.Keywords.at(1), wanted);
}

TEST(ClsKeywords, setsTheFieldThatIsNamed)
{
    World world;
    clsKeywords keywords(world.app);
    keywords.Add(u"shoes"_s, u"shoes"_s, -1);
    for (const auto &field : {u"Count"_s, u"PAGE"_s, u"url"_s, u"Status"_s, u"Colour"_s, QString()})
        EXPECT_TRUE(keywords.UpdateObject(u"shoes"_s, field, u"v-"_s + field));
    clsKeyword wanted = named(u"shoes"_s);
    wanted.Count = u"v-Count"_s;
    wanted.Page = u"v-PAGE"_s;
    wanted.URL = u"v-url"_s;
    wanted.Status = u"v-Status"_s;
    EXPECT_EQ(keywords.Keywords.at(1), wanted);
}

TEST(ClsKeywords, addsBeforeAPositionAndIgnoresWhatCannotBe)
{
    World world;
    clsKeywords keywords(world.app);
    keywords.Add(u"b"_s, u"b"_s, -1);
    keywords.Add(u"a"_s, u"a"_s, 1);
    keywords.Add(u"B"_s, u"other"_s, -1);
    keywords.Add(u"c"_s, u"c"_s, 7);
    keywords.Add(u"d"_s, u"d"_s, 0);
    keywords.Add(u"e"_s, u"e"_s, -2);
    keywords.AddKeyword(named(u"A"_s), -1);
    keywords.AddKeyword(named(u"z"_s), -1);
    EXPECT_EQ(namesIn(keywords), (QStringList{u"a"_s, u"b"_s, u"z"_s}));
    EXPECT_EQ(keywords.GetKeyword(3), u"z"_s);
    EXPECT_EQ(world.takeLog(), QString());
}

TEST(ClsKeywords, removesRowsByPositionAndKey)
{
    World world;
    clsKeywords keywords(world.app);
    for (const auto &name : {u"a"_s, u"b"_s, u"c"_s})
        keywords.Add(name, name, -1);
    keywords.Remove(1);
    keywords.Remove(u"C"_s);
    EXPECT_EQ(namesIn(keywords), QStringList{u"b"_s});
    EXPECT_THROW(keywords.Remove(u"c"_s), Failure);
    EXPECT_THROW(keywords.Remove(2), Failure);
    keywords.RemoveAll();
    EXPECT_EQ(keywords.Count(), 0);
    EXPECT_THROW(keywords.GetKeyword(1), Failure);
}

TEST(ClsKeywords, findsTermsByTheirTextNotTheirKey)
{
    World world;
    clsKeywords keywords(world.app);
    keywords.Add(u"old key"_s, u"Shoes"_s, -1);
    EXPECT_TRUE(keywords.InKeywordsCollection(u"sHOES"_s, &keywords.Keywords));
    EXPECT_FALSE(keywords.InKeywordsCollection(u"old key"_s, &keywords.Keywords));
    EXPECT_EQ(world.takeLog(), QString());
}

TEST(ClsKeywords, logsASearchInNoCollection)
{
    World world;
    EXPECT_FALSE(clsKeywords(world.app).InKeywordsCollection(u"shoes"_s, nullptr));
    EXPECT_TRUE(world.takeLog().startsWith("clsKeywords_InKeywordsCollection error:  "_L1));
}

TEST(ClsKeywords, namesTheCurrencyOfItsEngine)
{
    World world;
    clsKeywords keywords(world.app);
    const auto sign = [&](const QString &engine) {
        keywords.Engine = engine;
        return keywords.GetCurrencySign();
    };
    EXPECT_EQ(sign(u"Overture(UK)"_s), u"\u00a3"_s);
    EXPECT_EQ(sign(u"espotting"_s), u"\u00a3"_s);
    EXPECT_EQ(sign(u"overture(de)"_s), u"\u20ac"_s);
    EXPECT_EQ(sign(u"Overture"_s), u"$"_s);
}

TEST(ClsKeywords, changesNothingByCleaningBids)
{
    World world;
    clsKeywords keywords(world.app);
    keywords.Add(u"a"_s, u"a"_s, -1);
    keywords.CleanBids(u"a"_s);
    keywords.CleanBids(u"b"_s);
    EXPECT_EQ(keywords.Keywords.at(1), named(u"a"_s));
    EXPECT_EQ(keywords.Count(), 1);
}

TEST(ClsKeywords, namesResultFilesWithoutPunctuation)
{
    EXPECT_EQ(clsKeywords::resultFileName(u"Overture(UK)"_s), u"OvertureUK.dat"_s);
    EXPECT_EQ(clsKeywords::resultFileName(u"Hunt, Inc."_s), u"Hunt Inc.dat"_s);
    EXPECT_EQ(clsKeywords::resultFileName(u"(.,)"_s), u".dat"_s);
}
