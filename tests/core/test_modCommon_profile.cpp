#include "core/modCommon.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <QDir>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class ProfileStrings : public testing::Test
{
protected:
    World world;
    const QString file = world.app.appFile({u"a.ini"_s});
};

} // namespace

TEST_F(ProfileStrings, makesFileAndSection)
{
    EXPECT_EQ(WriteProfileString(world.app, file, u"Shop"_s, u"LastLookUp"_s, u"caf\u00e9"_s), u"1"_s);
    EXPECT_EQ(ReadProfileString(world.app, file, u"SHOP"_s, u"lastlookup"_s), u"caf\u00e9"_s);
}

TEST_F(ProfileStrings, areEmptyWhenFileSectionOrKeyIsMissing)
{
    EXPECT_EQ(ReadProfileString(world.app, file, u"a"_s, u"k"_s), u""_s);
    world.write(u"a.ini"_s, "[a]\r\nk=v\r\n");
    EXPECT_EQ(ReadProfileString(world.app, file, u"b"_s, u"k"_s), u""_s);
    EXPECT_EQ(ReadProfileString(world.app, file, u"a"_s, u"l"_s), u""_s);
}

TEST_F(ProfileStrings, cutLongValues)
{
    WriteProfileString(world.app, file, u"a"_s, u"k"_s, QString(700, u'x'));
    EXPECT_EQ(ReadProfileString(world.app, file, u"a"_s, u"k"_s), QString(559, u'x'));
}

TEST_F(ProfileStrings, makeNoFolder)
{
    EXPECT_EQ(
        WriteProfileString(world.app, world.app.appFile({u"sub"_s, u"a.ini"_s}), u"a"_s, u"k"_s, u"v"_s),
        u"0"_s);
    EXPECT_FALSE(world.has(u"sub"_s));
}

TEST_F(ProfileStrings, areEmptyWhenAFolderStandsInTheFilesPlace)
{
    ASSERT_TRUE(QDir().mkpath(world.path(u"a.ini"_s)));
    EXPECT_EQ(ReadProfileString(world.app, file, u"a"_s, u"k"_s), u""_s);
    EXPECT_EQ(WriteProfileString(world.app, file, u"a"_s, u"k"_s, u"v"_s), u"0"_s);
    EXPECT_EQ(world.takeLog(), u""_s);
}
