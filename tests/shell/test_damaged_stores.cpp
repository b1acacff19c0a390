#include "shell/damaged_stores.h"

#include "core/file_settings_store.h"
#include "project/clsMain.h"
#include "tests/support/bad_files.h"
#include "tests/support/ordinary_user.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

const QByteArray Damaged = "[Key]\nname=value\nno line of this form\n";

class Settings : public testing::Test
{
protected:
    QByteArray settings(const QString &ending = {}) const { return world.read(u"settings.ini"_s + ending); }

    World world;
    QString file = world.path(u"settings.ini"_s);
};

class ProjectList : public testing::Test
{
protected:
    QStringList loaded()
    {
        QStringList names;
        clsMain(world.app).loadAccount(names);
        return names;
    }
    QByteArray kept() const { return world.read(u"project.dat.damaged"_s); }

    World world;
};

struct ListCase
{
    const char *name;
    QByteArray bytes;
    QString says; // empty: nothing is wrong
    QStringList projects;
};

} // namespace

TEST_F(Settings, areLeftAloneWhenAllIsWell)
{
    EXPECT_EQ(putAsideDamagedSettings(file), QString());
    world.write(u"settings.ini"_s, "; nothing yet\n[Key]\nname=value\n");
    EXPECT_EQ(putAsideDamagedSettings(file), QString());
    EXPECT_TRUE(world.has(u"settings.ini"_s));
}

TEST_F(Settings, areMovedAsideWhenDamaged)
{
    world.write(u"settings.ini"_s, Damaged);
    const QString told = putAsideDamagedSettings(file);
    EXPECT_TRUE(told.startsWith(u"The settings file '"_s + file + u"' is damaged: "_s)) << qPrintable(told);
    EXPECT_TRUE(told.endsWith(u"\r\n\r\nThe damaged file has been kept as '"_s + file +
                              u".damaged', and the program starts with its usual settings."_s));
    EXPECT_EQ(settings(u".damaged"_s), Damaged);
    EXPECT_FALSE(world.has(u"settings.ini"_s));
    EXPECT_EQ(QFileInfo(file + u".damaged"_s).permissions() & 0x77, QFileDevice::Permissions());
}

TEST_F(Settings, areMovedAsideWhateverTheyHold)
{
    world.write(u"settings.ini"_s, randomBytes(5000));
    EXPECT_FALSE(putAsideDamagedSettings(file).isEmpty());
    EXPECT_EQ(settings(u".damaged"_s), randomBytes(5000));
}

TEST_F(Settings, workAgainAfterwards)
{
    world.write(u"settings.ini"_s, Damaged);
    putAsideDamagedSettings(file);
    FileSettingsStore store(file);
    store.createKey(u"Key"_s);
    store.setValue(u"Key"_s, u"name"_s, u"new"_s);
    EXPECT_EQ(FileSettingsStore(file).value(u"Key"_s, u"name"_s), QVariant(u"new"_s));
}

TEST_F(Settings, areKeptEachTimeTheyAreDamaged)
{
    for (const QString &ending : {u".damaged"_s, u".damaged2"_s, u".damaged3"_s}) {
        const QByteArray bytes = Damaged + ending.toLatin1() + "\n";
        world.write(u"settings.ini"_s, bytes);
        EXPECT_TRUE(putAsideDamagedSettings(file).contains(file + ending + u"'"_s));
        EXPECT_EQ(settings(ending), bytes);
    }
}

TEST_F(Settings, stayWhenTheyCannotBeRead)
{
    putFolder(world, u"settings.ini"_s);
    const QString told = putAsideDamagedSettings(file);
    EXPECT_TRUE(told.startsWith(u"The settings file '"_s + file + u"' cannot be read: "_s))
        << qPrintable(told);
    EXPECT_TRUE(QFileInfo(file).isDir());
}

TEST_F(Settings, stayInAFolderThatCannotBeWritten)
{
    QDir().mkdir(world.path(u"closed"_s));
    world.write(u"closed/settings.ini"_s, Damaged);
    QFile::setPermissions(world.path(u"closed"_s), QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    EXPECT_TRUE(asOrdinaryUser(world.folder.path(), [&] {
        return putAsideDamagedSettings(world.path(u"closed/settings.ini"_s))
            .contains(u"It could not be moved aside ("_s);
    }));
    EXPECT_EQ(world.read(u"closed/settings.ini"_s), Damaged);
}

TEST_F(ProjectList, isRepairedWhereItIsDamaged)
{
    const std::vector<ListCase> cases{
        {"missing", {}, {}, {}},
        {"blank", " \r\n", {}, {}},
        {"good", "[Accounts]\r\n1=Shop\r\nLast=1\r\n", {}, {u"Shop"_s}},
        {"empty list", "[Accounts]\r\nLast=0\r\n", {}, {}},
        {"with a gap", "[Accounts]\r\n1=A\r\n3=C\r\nLast=3\r\n", {}, {u"A"_s, u"C"_s}},
        {"longer before", "[Accounts]\r\n1=A\r\n2=B\r\nLast=1\r\n", {}, {u"A"_s}},
        {"number with words", "[Accounts]\r\n1=A\r\n2=B\r\n3=C\r\nLast=2 of 3\r\n", {}, {u"A"_s, u"B"_s}},
        {"of another editor", "\xEF\xBB\xBF[accounts]\n1=A\nlast=1\n\x1A", {}, {u"A"_s}},
        {"without its section", "1=A\r\nLast=1\r\n", u"its section 'Accounts' is missing"_s, {}},
        {"cut", "[Accounts]\r\n1=A\r\n2=B", u"the number of its projects is missing"_s, {u"A"_s, u"B"_s}},
        {"number unreadable",
         "[Accounts]\r\n1=A\r\nLast=?\r\n",
         u"the number of its projects is missing"_s,
         {u"A"_s}},
        {"zeros", QByteArray(600, '\0'), u"it holds bytes that are no text"_s, {}},
        {"zeros behind",
         "[Accounts]\r\n1=A\r\n2=B\r\nLast=2\r\n" + QByteArray(9, '\0'),
         u"it holds bytes that are no text"_s,
         {u"A"_s, u"B"_s}},
        {"names that are none",
         "[Accounts]\r\n1=../A\r\n2=B\r\n3=b\r\nLast=x\r\n",
         u"the number of its projects is missing"_s,
         {u"B"_s}},
    };
    for (const ListCase &now : cases) {
        SCOPED_TRACE(now.name);
        QFile::remove(world.path(u"project.dat.damaged"_s));
        QFile::remove(world.path(u"project.dat"_s));
        if (!now.bytes.isEmpty())
            world.write(u"project.dat"_s, now.bytes);
        const QString told = repairProjectList(world.app);
        EXPECT_EQ(loaded(), now.projects);
        if (now.says.isEmpty()) {
            EXPECT_EQ(told, QString());
            EXPECT_EQ(world.read(u"project.dat"_s), now.bytes);
            EXPECT_FALSE(world.has(u"project.dat.damaged"_s));
        } else {
            EXPECT_TRUE(told.startsWith(u"The project list '"_s + world.app.AppPath +
                                        u"/project.dat' is damaged: "_s + now.says + u"."_s))
                << qPrintable(told);
            EXPECT_EQ(kept(), now.bytes);
            EXPECT_EQ(repairProjectList(world.app), QString()) << "once is enough";
        }
    }
}

TEST_F(ProjectList, namesTheKeptFile)
{
    world.write(u"project.dat"_s, "[Accounts]\r\n1=A\r\n");
    EXPECT_TRUE(repairProjectList(world.app).endsWith(
        u"The damaged file has been kept as '"_s + world.app.AppPath +
        u"/project.dat.damaged', and the program starts with the projects that can be "
        "read in it. The files of the projects are as they were."_s));
}

TEST_F(ProjectList, survivesRandomBytes)
{
    world.write(u"project.dat"_s, randomBytes(3000));
    EXPECT_TRUE(repairProjectList(world.app).contains(u"' is damaged: "_s));
    EXPECT_EQ(kept(), randomBytes(3000));
    EXPECT_EQ(loaded(), QStringList());
}

TEST_F(ProjectList, staysWhenItCannotBeRead)
{
    putFolder(world, u"project.dat"_s);
    const QString told = repairProjectList(world.app);
    EXPECT_TRUE(
        told.startsWith(u"The project list '"_s + world.app.AppPath + u"/project.dat' cannot be used."_s));
    EXPECT_TRUE(QFileInfo(world.path(u"project.dat"_s)).isDir());
}

TEST_F(ProjectList, staysWhereItsFolderCannotBeWritten)
{
    const QByteArray damaged = "[Accounts]\r\n1=A\r\n";
    world.write(u"project.dat"_s, damaged);
    QFile::setPermissions(world.app.AppPath, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    EXPECT_TRUE(asOrdinaryUser(world.folder.path(), [&] {
        const QString told = repairProjectList(world.app);
        return told.contains(u"' is damaged: "_s) && told.contains(u"project.dat.damaged"_s) &&
               !told.contains(u"has been kept"_s);
    }));
    QFile::setPermissions(world.app.AppPath, QFileDevice::Permissions(0x7700));
    EXPECT_EQ(world.read(u"project.dat"_s), damaged);
}

TEST(ApplicationFolder, isToldWhenItCannotBeWritten)
{
    const World world;
    EXPECT_EQ(unwritableFolder(world.app), QString());
    QFile::setPermissions(world.app.AppPath, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    EXPECT_TRUE(asOrdinaryUser(world.folder.path(), [&] {
        return unwritableFolder(world.app).startsWith(u"Nothing can be written to the program's folder '"_s +
                                                      world.app.AppPath + u"'."_s);
    }));
    QFile::setPermissions(world.app.AppPath, QFileDevice::Permissions(0x7700));
}

TEST(ApplicationFolder, isToldWhenItHasGone)
{
    const World world;
    ASSERT_TRUE(QDir(world.app.AppPath).removeRecursively());
    EXPECT_FALSE(unwritableFolder(world.app).isEmpty());
}
