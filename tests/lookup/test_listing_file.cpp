#include "lookup/listing_file.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(ListingFile, givesUrlAndTitleInOrder)
{
    World world;
    world.write(u"Results/Finder/boots.dat"_s, "http://a.example;#A;#1\r\nhttp://b.example;#B;#2\r\n");
    EXPECT_THAT(loadListings(world.app, u"Finder"_s, u"boots"_s),
                ElementsAre(Listing{u"http://a.example"_s, u"A"_s}, Listing{u"http://b.example"_s, u"B"_s}));
}

TEST(ListingFile, passesOverATitleWithTheSeparator)
{
    World world;
    world.write(u"Results/Finder/boots.dat"_s, "http://a.example;#A;#B;#1\r\nhttp://b.example;#B;#2\r\n");
    EXPECT_THAT(loadListings(world.app, u"Finder"_s, u"boots"_s),
                ElementsAre(Listing{u"http://b.example"_s, u"B"_s}));
}

TEST(ListingFile, endsAtAnEmptyLine)
{
    World world;
    world.write(u"Results/Finder/boots.dat"_s, "http://a.example;#A;#1\r\n\r\nhttp://b.example;#B;#2\r\n");
    EXPECT_EQ(loadListings(world.app, u"Finder"_s, u"boots"_s).size(), 1U);
}

TEST(ListingFile, givesAFurtherHitTheListingsOfItsKeyword)
{
    World world;
    world.write(u"Results/Finder/red+boots.dat"_s, "http://a.example;#A;#1\r\n");
    EXPECT_EQ(loadListings(world.app, u"Finder"_s, u"red boots(2)"_s).size(), 1U);
}

TEST(ListingFile, isEmptyWhenMissing)
{
    World world;
    EXPECT_THAT(loadListings(world.app, u"Finder"_s, u"boots"_s), IsEmpty());
    EXPECT_EQ(world.takeLog(), QString());
}

TEST(ListingFile, logsAnEmptyEngineName)
{
    World world;
    EXPECT_THAT(loadListings(world.app, {}, u"boots"_s), IsEmpty());
    EXPECT_EQ(world.takeLog(), u"Invalid Engine selection - engine name is empty."_s);
}

TEST(ListingFile, readsLinesThatEndInLineFeedsAlone)
{
    World world;
    world.write(u"Results/Finder/boots.dat"_s, "http://a.example;#A;#1\nhttp://b.example;#B;#2");
    EXPECT_EQ(loadListings(world.app, u"Finder"_s, u"boots"_s).size(), 2U);
}
