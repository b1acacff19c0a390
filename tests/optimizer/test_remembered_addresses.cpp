#include "optimizer/remembered_addresses.h"

#include "tests/support/bad_files.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

const QString File = u"dmlist.dat"_s;
const QString Section = u"Optimizer"_s;

QStringList numbered(int count)
{
    QStringList list;
    for (int i = 1; i <= count; ++i)
        list.append(u"site%1.example"_s.arg(i));
    return list;
}

class RememberedAddresses : public testing::Test
{
protected:
    QStringList load(int maximum = MostAddresses)
    {
        QStringList list;
        loadDomains(world.app, list, Section, maximum);
        return list;
    }

    World world;
};

TEST_F(RememberedAddresses, areNoneWithoutAFile)
{
    EXPECT_EQ(load(), QStringList());
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(RememberedAddresses, areReadInTheOrderOfTheirKeys)
{
    world.write(File, "[Optimizer]\r\n2=b\r\n1=a\r\n3=c\r\n");
    EXPECT_EQ(load(), QStringList({u"a"_s, u"b"_s, u"c"_s}));
    EXPECT_EQ(load(2), QStringList({u"a"_s, u"b"_s}));
}

TEST_F(RememberedAddresses, endAtTheFirstEmptyOne)
{
    world.write(File, "[Optimizer]\r\n1=a\r\n2=\r\n3=c\r\n");
    EXPECT_EQ(load(), QStringList(u"a"_s));
}

TEST_F(RememberedAddresses, comeBackAsTheyWereSaved)
{
    saveListToFile(world.app, numbered(3), Section);
    EXPECT_EQ(world.read(File), "[Optimizer]\r\n1=site1.example\r\n2=site2.example\r\n3=site3.example\r\n");
    EXPECT_EQ(load(), numbered(3));
}

TEST_F(RememberedAddresses, keepWhatAShorterListLeaves)
{
    saveListToFile(world.app, numbered(3), Section);
    saveListToFile(world.app, {u"new"_s}, Section);
    EXPECT_EQ(load(), QStringList({u"new"_s, u"site2.example"_s, u"site3.example"_s}));
}

TEST_F(RememberedAddresses, areThirtyAtMost)
{
    saveListToFile(world.app, numbered(31), Section);
    EXPECT_FALSE(world.read(File).contains("31="));
    EXPECT_EQ(load(), numbered(30));
}

TEST_F(RememberedAddresses, tellOfAFileThatCannotBeUsed)
{
    putFolder(world, File);
    EXPECT_EQ(load(), QStringList());
    EXPECT_TRUE(world.takeLog().startsWith(u"frmOptimizer_loadDomains error: "_s));
    saveListToFile(world.app, numbered(1), Section);
    EXPECT_TRUE(world.takeLog().startsWith(u"frmOptimizer_saveListToFile error: "_s));
}

TEST_F(RememberedAddresses, putANewOneFirst)
{
    QStringList list = numbered(2);
    addKeywordToList(list, u"new.example"_s);
    EXPECT_EQ(list, QStringList({u"new.example"_s, u"site1.example"_s, u"site2.example"_s}));
}

TEST_F(RememberedAddresses, leaveAKnownOneWhereItIs)
{
    QStringList list = numbered(2);
    addKeywordToList(list, u"SITE2.example"_s);
    EXPECT_EQ(list, numbered(2));
}

TEST_F(RememberedAddresses, pushTheOldestOut)
{
    QStringList list = numbered(30);
    addKeywordToList(list, u"new.example"_s);
    EXPECT_EQ(list.size(), 30);
    EXPECT_EQ(list.first(), u"new.example"_s);
    EXPECT_EQ(list.last(), u"site29.example"_s);
}

} // namespace
} // namespace sondrel
