#include "core/places.h"

#include "tests/support/ordinary_user.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class ProgramPlaces : public testing::Test
{
protected:
    QTemporaryDir folder;
    DesktopFolders folders{made(u"program"_s), made(u"data"_s), made(u"config"_s)};

    QString made(const QString &name) const
    {
        QDir(folder.path()).mkpath(name);
        return folder.filePath(name);
    }

    static void write(const QString &path, const QByteArray &bytes)
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    static QByteArray read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

/// The same with a program that is installed, and runs.
class InstalledProgram : public ProgramPlaces
{
protected:
    World world; // for its doors
    QString appPath = folder.filePath(u"data/marovia-sondrel"_s);
    QString system = appPath + u"/system"_s;

    void start()
    {
        write(folders.program + u"/installed"_s, "");
        const Places places = placesIn(folders);
        ApplicationContext app(places.appPath, places.systemDirectory,
                               Doors{world.clock, world.desktop, world.settings, world.http},
                               world.app.locale);
        fillPlaces(app, folders.program);
        removeLeftovers(app);
    }
};

} // namespace

TEST_F(ProgramPlaces, areThoseOfTheProgramWhereItMayWrite)
{
    const Places places = placesIn(folders);
    EXPECT_EQ(places.appPath, folders.program);
    EXPECT_EQ(places.systemDirectory, folder.filePath(u"data/marovia-sondrel/system"_s));
    EXPECT_EQ(places.settingsFile, folder.filePath(u"config/Kestrune/marovia-sondrel-v4.ini"_s));
}

TEST_F(ProgramPlaces, areThoseOfTheUserWhenTheProgramIsInstalled)
{
    write(folders.program + u"/installed"_s, "");
    EXPECT_EQ(placesIn(folders).appPath, folder.filePath(u"data/marovia-sondrel"_s));
}

TEST_F(ProgramPlaces, areThoseOfTheUserWhereTheProgramMustNotWrite)
{
    ASSERT_EQ(::chmod(QFile::encodeName(folders.program).constData(), 0555), 0);
    EXPECT_TRUE(asOrdinaryUser(folder.path(), [&] {
        return placesIn(folders).appPath == folder.filePath(u"data/marovia-sondrel"_s);
    }));
    ASSERT_EQ(::chmod(QFile::encodeName(folders.program).constData(), 0755), 0);
}

TEST_F(ProgramPlaces, leaveThingsAsTheyAreWhileTheyAreChosen)
{
    placesIn(folders);
    EXPECT_TRUE(QDir(folders.program).isEmpty());
    EXPECT_TRUE(QDir(folders.userData).isEmpty());
    EXPECT_TRUE(QDir(folders.userConfig).isEmpty());
}

TEST_F(ProgramPlaces, haveNoSystemDirectoryWithoutAUsersFolder)
{
    folders.userData.clear();
    EXPECT_EQ(placesIn(folders).systemDirectory, u""_s);
}

TEST_F(ProgramPlaces, followTheDesktop)
{
    qputenv("XDG_DATA_HOME", "/tmp/of-a-user/data");
    qputenv("XDG_CONFIG_HOME", "/tmp/of-a-user/config");
    const DesktopFolders desktop = desktopFolders();
    EXPECT_EQ(desktop.userData, u"/tmp/of-a-user/data"_s);
    EXPECT_EQ(desktop.userConfig, u"/tmp/of-a-user/config"_s);
    EXPECT_EQ(desktop.program, QCoreApplication::applicationDirPath());
}

TEST_F(InstalledProgram, findsItsDataFilesInTheUsersFolder)
{
    write(folders.program + u"/menutemplate.html"_s, "menu");
    write(folders.program + u"/Report.XLT"_s, "template");
    write(folders.program + u"/qlteng4.dat"_s, "[Markets]");
    write(folders.program + u"/marovia-sondrel"_s, "\177ELF");
    start();
    EXPECT_EQ(read(appPath + u"/menutemplate.html"_s), "menu");
    EXPECT_EQ(read(appPath + u"/report.xlt"_s), "template");
    EXPECT_EQ(read(system + u"/qlteng4.dat"_s), "[Markets]");
    EXPECT_EQ(QDir(appPath).entryList(QDir::Files), (QStringList{u"menutemplate.html"_s, u"report.xlt"_s}));
}

TEST_F(InstalledProgram, keepsTheUsersFiles)
{
    write(folders.program + u"/menutemplate.html"_s, "new");
    write(folders.program + u"/qlteng4.dat"_s, "new");
    write(appPath + u"/MenuTemplate.html"_s, "mine");
    write(system + u"/QLTENG4.DAT"_s, "mine");
    start();
    EXPECT_EQ(read(appPath + u"/MenuTemplate.html"_s), "mine");
    EXPECT_EQ(read(system + u"/QLTENG4.DAT"_s), "mine");
    EXPECT_FALSE(QFile::exists(appPath + u"/menutemplate.html"_s));
    EXPECT_FALSE(QFile::exists(system + u"/qlteng4.dat"_s));
}

TEST_F(InstalledProgram, bringsItsNewHelp)
{
    write(folders.program + u"/qlt40.chm"_s, "new");
    write(appPath + u"/QLT40.chm"_s, "old");
    start();
    EXPECT_EQ(read(appPath + u"/QLT40.chm"_s), "new");
    EXPECT_FALSE(QFile::exists(appPath + u"/qlt40.chm"_s));
}

TEST_F(InstalledProgram, startsWithTheOldHelpWhereTheNewOneCannotBeWritten)
{
    write(folders.program + u"/qlt40.chm"_s, "new");
    write(appPath + u"/qlt40.chm"_s, "old");
    QDir().mkpath(system);
    ASSERT_EQ(::chmod(QFile::encodeName(appPath).constData(), 0555), 0);
    EXPECT_TRUE(asOrdinaryUser(folder.path(), [&] {
        start();
        return true;
    }));
    ASSERT_EQ(::chmod(QFile::encodeName(appPath).constData(), 0755), 0);
    EXPECT_EQ(read(appPath + u"/qlt40.chm"_s), "old");
}

TEST_F(InstalledProgram, findsItsDataFilesBehindLinks)
{
    write(folder.filePath(u"common/menutemplate.html"_s), "menu");
    write(folder.filePath(u"common/qlteng4.dat"_s), "[Markets]");
    for (const QString &name : {u"menutemplate.html"_s, u"qlteng4.dat"_s})
        ASSERT_TRUE(QFile::link(u"../common/"_s + name, folders.program + u'/' + name));
    start();
    EXPECT_EQ(read(appPath + u"/menutemplate.html"_s), "menu");
    EXPECT_FALSE(QFileInfo(appPath + u"/menutemplate.html"_s).isSymLink());
    EXPECT_EQ(read(system + u"/qlteng4.dat"_s), "[Markets]");
}

TEST_F(InstalledProgram, keepsAFolderInTheFilesPlace)
{
    write(folders.program + u"/qlteng4.dat"_s, "new");
    QDir().mkpath(system + u"/qlteng4.dat"_s);
    start();
    EXPECT_TRUE(QFileInfo(system + u"/qlteng4.dat"_s).isDir());
}

TEST_F(InstalledProgram, bringsTheEngineDataBackWhenItIsGone)
{
    write(folders.program + u"/qlteng4.dat"_s, "[Markets]");
    start();
    ASSERT_TRUE(QFile::remove(system + u"/qlteng4.dat"_s));
    start();
    EXPECT_EQ(read(system + u"/qlteng4.dat"_s), "[Markets]");
}

TEST_F(InstalledProgram, makesItsFoldersWithoutDataFilesToo)
{
    start();
    EXPECT_TRUE(QFileInfo(system).isDir());
}

TEST_F(InstalledProgram, tellsWhenAFileIsInAFoldersPlace)
{
    write(appPath, "");
    EXPECT_THROW(start(), Failure);
    EXPECT_TRUE(QFileInfo(appPath).isFile());
}

TEST_F(ProgramPlaces, putTheEngineDataOfAProgramInItsOwnFolderInTheSystemDirectory)
{
    World world;
    write(folders.program + u"/qlteng4.dat"_s, "[Markets]");
    write(folders.program + u"/menutemplate.html"_s, "menu");
    const Places places = placesIn(folders);
    ApplicationContext app(places.appPath, places.systemDirectory,
                           Doors{world.clock, world.desktop, world.settings, world.http}, world.app.locale);
    fillPlaces(app, folders.program);
    EXPECT_EQ(read(places.systemDirectory + u"/qlteng4.dat"_s), "[Markets]");
    EXPECT_EQ(read(folders.program + u"/menutemplate.html"_s), "menu");
}

TEST_F(InstalledProgram, removesWhatWasLeftWhenItWasKilled)
{
    const QStringList places{appPath, system, appPath + u"/Projects/Shop"_s, appPath + u"/Results/Finder"_s};
    for (const QString &place : places) {
        write(place + u"/.sondrel-1.tmp"_s, "half");
        write(place + u"/.sondrel-2.tmp"_s, "half");
        write(place + u"/notes.tmp"_s, "the user's");
    }
    start();
    for (const QString &place : places)
        EXPECT_EQ(QDir(place).entryList({u"*.tmp"_s}, QDir::Files | QDir::Hidden),
                  QStringList{u"notes.tmp"_s});
}

TEST_F(InstalledProgram, leavesWhatLiesBehindALinkAlone)
{
    write(folder.filePath(u"elsewhere/.sondrel-1.tmp"_s), "half");
    QDir().mkpath(appPath);
    ASSERT_TRUE(QFile::link(folder.filePath(u"elsewhere"_s), appPath + u"/Projects"_s));
    start();
    EXPECT_EQ(read(folder.filePath(u"elsewhere/.sondrel-1.tmp"_s)), "half");
}

TEST(SystemDirectoryPath, endsInOneSeparator)
{
    EXPECT_EQ(GetSystemDirectoryPath(u"/data/system"_s), u"/data/system\\"_s);
    EXPECT_EQ(GetSystemDirectoryPath(u"/data/system\\"_s), u"/data/system\\"_s);
    EXPECT_EQ(GetSystemDirectoryPath(u"/data/system  "_s), u"/data/system\\"_s);
    EXPECT_EQ(GetSystemDirectoryPath(QString(u"/data"_s + QChar(0) + u"rest"_s)), u"/data\\"_s);
    EXPECT_EQ(GetSystemDirectoryPath(u""_s), u""_s);
    EXPECT_EQ(GetSystemDirectoryPath(u"  "_s), u""_s);
}
