#include "project/clsMain.h"
#include "tests/support/bad_files.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

const auto File = u"project.dat"_s;

QStringList loaded(clsMain &store)
{
    QStringList projects;
    EXPECT_TRUE(store.loadAccount(projects));
    return projects;
}

} // namespace

TEST(ClsMain, skipsGapsAndRenumbersOnSaving)
{
    World world;
    world.write(File, "[Accounts]\r\n1=One\r\n3=Three\r\nLast=3\r\n");
    clsMain store(world.app);
    const QStringList projects = loaded(store);
    EXPECT_EQ(projects, (QStringList{u"One"_s, u"Three"_s}));
    store.SaveAccount(projects);
    EXPECT_EQ(world.read(File), "[Accounts]\r\n1=One\r\n3=Three\r\nLast=2\r\n2=Three\r\n");
}

TEST(ClsMain, keepsTheOrderOfItsKeys)
{
    World world;
    clsMain store(world.app);
    store.SaveAccount({u"One"_s, u"Two"_s});
    EXPECT_EQ(world.read(File), "[Accounts]\r\n1=One\r\n2=Two\r\nLast=2\r\n");
    store.SaveAccount({u"Two"_s});
    EXPECT_EQ(world.read(File), "[Accounts]\r\n1=Two\r\n2=Two\r\nLast=1\r\n");
    EXPECT_EQ(loaded(store), QStringList{u"Two"_s});
}

TEST(ClsMain, writesTheCountOfAnEmptyList)
{
    World world;
    clsMain(world.app).SaveAccount({});
    EXPECT_EQ(world.read(File), "[Accounts]\r\nLast=0\r\n");
}

TEST(ClsMain, losesBlanksInFrontOfNames)
{
    World world;
    clsMain store(world.app);
    store.SaveAccount({u"  Garden "_s});
    EXPECT_EQ(loaded(store), QStringList{u"Garden"_s});
}

TEST(ClsMain, appendsToWhatTheListHolds)
{
    World world;
    world.write(File, "[Accounts]\r\n1=One\r\nLast=1 or so\r\n");
    QStringList projects{u"Zero"_s};
    EXPECT_TRUE(clsMain(world.app).loadAccount(projects));
    EXPECT_EQ(projects, (QStringList{u"Zero"_s, u"One"_s}));
}

TEST(ClsMain, takesAMissingFileForAnEmptyList)
{
    World world;
    clsMain store(world.app);
    EXPECT_EQ(loaded(store), QStringList());
    EXPECT_FALSE(world.has(File));
    EXPECT_EQ(world.takeLog(), QString());
}

TEST(ClsMain, loadsAnyCountAtOnce)
{
    World world;
    world.write(File, "[Accounts]\r\n1=One\r\nLast=9e99\r\n");
    clsMain store(world.app);
    EXPECT_EQ(loaded(store), QStringList{u"One"_s});
}

TEST(ClsMain, loadsNothingFromRandomBytesAndKeepsThem)
{
    World world;
    const QByteArray bytes = randomBytes(5000);
    world.write(File, bytes);
    clsMain store(world.app);
    EXPECT_EQ(loaded(store), QStringList());
    store.SaveAccount({u"One"_s});
    EXPECT_TRUE(world.read(File).startsWith(bytes));
    EXPECT_EQ(loaded(store), QStringList{u"One"_s});
}

TEST(ClsMain, logsAFolderInTheFilesPlace)
{
    World world;
    putFolder(world, File);
    QStringList projects;
    EXPECT_FALSE(clsMain(world.app).loadAccount(projects));
    EXPECT_TRUE(world.takeLog().startsWith("clsMain_loadAccount_Error: Cannot read"_L1));
    clsMain(world.app).SaveAccount({u"One"_s});
    EXPECT_TRUE(world.takeLog().contains("SaveAccount_Error: Cannot read"_L1));
}

TEST(ClsMain, savesNothingOverAListItCouldNotRead)
{
    World world;
    putUnreadable(world, File);
    clsMain store(world.app);
    QStringList projects;
    EXPECT_FALSE(store.loadAccount(projects));
    world.takeLog();
    const QByteArray before = "[Accounts]\r\n1=One\r\nLast=1\r\n";
    ASSERT_TRUE(QFile::remove(world.path(File)));
    world.write(File, before);
    store.SaveAccount({u"Two"_s});
    EXPECT_EQ(world.read(File), before);
    EXPECT_TRUE(world.takeLog().contains("SaveAccount_Error: "_L1));
}
