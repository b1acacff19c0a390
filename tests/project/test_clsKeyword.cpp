#include "project/clsKeyword.h"
#include "tests/support/bad_files.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

const auto Listings = u"Results/Garden/shoes.dat"_s;

clsKeyword ranked(const QString &position)
{
    clsKeyword row;
    row.Keyword = u"shoes"_s;
    row.CurPos = position;
    return row;
}

} // namespace

TEST(ClsKeyword, takesThePositionOfTheFirstMatch)
{
    World world;
    world.write(Listings, "http://a.example/;#A;#1\r\n\r\nbroken;#line\r\nhttp://b.example/;#B;#1\r\n"
                          "http://www.site.example/x;#Site;#2\r\nhttp://WWW.SITE.example/y;#Site;#2\r\n"
                          "http://c.example/;#C;#2\r\nhttp://www.site.example/z;#Site;#3\r\n");
    clsKeyword row = ranked(u"7"_s);
    row.ChangeURL(world.app, u"Site.example"_s, u"Garden"_s);
    EXPECT_EQ(row.URL, u"Site.example"_s);
    EXPECT_EQ(row.CurPos, u"3"_s);
    EXPECT_EQ(row.LastPosition, u"7"_s);
    EXPECT_EQ(row.Change, u"-4"_s);
}

TEST(ClsKeyword, matchesAListingInsideTheURL)
{
    World world;
    world.write(Listings, "site.example;#Site;#1\n");
    clsKeyword row = ranked(QString());
    row.ChangeURL(world.app, u"http://site.example/shop"_s, u"Garden"_s);
    EXPECT_EQ(row.CurPos, u"1"_s);
    EXPECT_EQ(row.LastPosition, QString());
    EXPECT_EQ(row.Change, u"1"_s);
}

TEST(ClsKeyword, keepsThePositionWithoutAMatch)
{
    World world;
    world.write(Listings, "http://a.example/;#A;#1\r\n");
    clsKeyword row = ranked(u"7"_s);
    row.ChangeURL(world.app, u"site.example"_s, u"Garden"_s);
    EXPECT_EQ(row.CurPos, u"7"_s);
    EXPECT_EQ(row.Change, QString());
}

TEST(ClsKeyword, looksForNoListingsWithoutAURL)
{
    World world;
    world.write(Listings, "http://a.example/;#A;#1\r\n");
    clsKeyword row = ranked(u"7"_s);
    row.ChangeURL(world.app, QString(), u"Garden"_s);
    EXPECT_EQ(row.CurPos, u"7"_s);
}

TEST(ClsKeyword, findsNoListingsOfNamesThatAreNone)
{
    World world;
    clsKeyword row = ranked(u"7"_s);
    row.Keyword = u"tcp/ip"_s;
    row.ChangeURL(world.app, u"site.example"_s, u".."_s);
    EXPECT_EQ(row.CurPos, u"7"_s);
    EXPECT_EQ(world.takeLog(), QString());
}

TEST(ClsKeyword, logsListingsThatCannotBeRead)
{
    World world;
    putFolder(world, Listings);
    clsKeyword row = ranked(u"7"_s);
    row.ChangeURL(world.app, u"site.example"_s, u"Garden"_s);
    EXPECT_TRUE(world.takeLog().startsWith("clsKeyword_ChangeURL error: "_L1));
    EXPECT_EQ(row.CurPos, u"7"_s);
}
