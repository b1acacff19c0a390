#include "shell/list_file.h"

#include "tests/support/printing.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

QStringList linesOf(World &world, const QByteArray &bytes)
{
    world.write(u"list.txt"_s, bytes);
    ListFileReader file(world.app, world.app.appFile({u"list.txt"_s}));
    QStringList lines;
    while (const auto line = file.next())
        lines.append(*line);
    return lines;
}

TEST(ListFile, readsEveryKindOfLineEnd)
{
    World world;
    EXPECT_EQ(linesOf(world, "one\r\ntwo\nthree\rfour"),
              QStringList({u"one"_s, u"two"_s, u"three"_s, u"four"_s}));
}

TEST(ListFile, keepsEmptyLinesButAddsNoneAtTheEnd)
{
    World world;
    EXPECT_EQ(linesOf(world, "\r\none\r\n\r\n"), QStringList({QString(), u"one"_s, QString()}));
}

TEST(ListFile, readsTheSystemCodePage)
{
    World world;
    EXPECT_EQ(linesOf(world, "M\xFCller"), QStringList({u"Müller"_s}));
}

TEST(ListFile, tellsHowFarItIs)
{
    World world;
    world.write(u"list.txt"_s, "one\r\ntwo\r\n");
    ListFileReader file(world.app, world.app.appFile({u"list.txt"_s}));
    file.next();
    EXPECT_EQ(file.position(), 5);
    EXPECT_EQ(file.length(), 10);
}

TEST(ListFile, throwsForAMissingFile)
{
    World world;
    EXPECT_THROW(ListFileReader(world.app, world.app.appFile({u"none.txt"_s})), Failure);
}

TEST(ListFile, leavesTheTailOfALongerFile)
{
    World world;
    world.write(u"list.txt"_s, "one\r\ntwo\r\nthree\r\n");
    overwriteListFile(world.app, world.app.appFile({u"list.txt"_s}), "a\r\n");
    EXPECT_EQ(world.read(u"list.txt"_s), "a\r\n\r\ntwo\r\nthree\r\n");
}

TEST(ListFile, makesAMissingFile)
{
    World world;
    overwriteListFile(world.app, world.app.appFile({u"list.txt"_s}), "a\r\n");
    EXPECT_EQ(world.read(u"list.txt"_s), "a\r\n");
}

} // namespace
} // namespace sondrel
