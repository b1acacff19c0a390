#include "engines/engine_update.h"
#include "tests/support/bad_files.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

const auto DataFile = u"../system/qlteng4.dat"_s;

} // namespace

TEST(EngineUpdate, fetchesFromTheVendorsHost)
{
    World world;
    world.app.deployment.EngineDataHost = u"http://data.vendor.example"_s;
    EXPECT_EQ(engineDataAddress(world.app), u"http://data.vendor.example/enginedata/qlteng4.dat"_s);
}

TEST(EngineUpdate, tellsEngineDataFromOtherPages)
{
    const World world;
    EXPECT_TRUE(isEngineData(world.app, "[Markets]\r\n1=Global\r\n"));
    EXPECT_TRUE(isEngineData(world.app, "; head\n[markets]\n"));
    EXPECT_FALSE(isEngineData(world.app, "<html><body>404 Markets not found</body></html>"));
    EXPECT_FALSE(isEngineData(world.app, ""));
}

TEST(EngineUpdate, writesTheBodyAndALineEnd)
{
    World world;
    replaceEngineData(world.app, "[Markets]\n1=\xfc\n");
    EXPECT_EQ(world.read(DataFile), "[Markets]\n1=\xfc\n\r\n");
    EXPECT_FALSE(world.has(DataFile + u".bak"_s));
}

TEST(EngineUpdate, keepsTheOldFileInACopy)
{
    World world;
    world.writeEngineData("[Markets] old");
    replaceEngineData(world.app, "[Markets] new");
    EXPECT_EQ(world.read(DataFile), "[Markets] new\r\n");
    EXPECT_EQ(world.read(DataFile + u".bak"_s), "[Markets] old");
    replaceEngineData(world.app, "[Markets] new"); // the same again
    EXPECT_EQ(world.read(DataFile + u".bak"_s), "[Markets] old");
}

TEST(EngineUpdate, leavesTheOldFileWhereNoCopyCanBeKept)
{
    World world;
    world.writeEngineData("[Markets] old");
    putFolder(world, DataFile + u".bak"_s);
    EXPECT_THROW(replaceEngineData(world.app, "[Markets] new"), Failure);
    EXPECT_EQ(world.read(DataFile), "[Markets] old");
}
