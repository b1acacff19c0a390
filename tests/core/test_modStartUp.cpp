#include "core/modStartUp.h"

#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class RecordingWindows final : public StartUpWindows
{
public:
    explicit RecordingWindows(World &world) : m_world(world) {}

    QStringList steps;
    bool failing = false;

    void showSplash() override
    {
        steps.append(
            u"splash, log %1 bytes"_s.arg(m_world.read(u"Error.log"_s).size() > 0 ? u"has"_s : u"lacks"_s));
    }
    void Display() override
    {
        if (failing)
            throw Failure(u"No display"_s);
        steps.append(m_world.desktop.waiting > 0 ? u"display, waiting"_s : u"display"_s);
    }

private:
    World &m_world;
};

class Start : public testing::Test
{
protected:
    World world;
    ApplicationContext &app = world.app;
    RecordingWindows windows{world};
    QString program = world.path(u"../program"_s);

    bool start() { return Main(app, program, windows); }
    QByteArray header() const { return app.toBytes(startHeader(app)); }
};

} // namespace

TEST_F(Start, writesItsHeader)
{
    EXPECT_TRUE(start());
    EXPECT_EQ(app.fromBytes(world.read(u"Error.log"_s)), u"\r\n\r\nMarovia Sondrel V4 - Version: 4.0.00\r\n"
                                                         " Time: 11/15/2026 10:00:00 AM\r\n"
                                                         "------------------------------------\r\n"
                                                         "Path: "_s +
                                                             app.AppPath);
}

TEST_F(Start, namesTheVersionAsTheSettingsKeepIt)
{
    EXPECT_EQ(versionText(), u"4.0.0"_s);
}

TEST_F(Start, goesOnInTheLogOfAPreviousStart)
{
    world.write(u"Error.log"_s, "\r\nold");
    start();
    EXPECT_EQ(world.read(u"Error.log"_s), "\r\nold\r\n" + header());
    EXPECT_TRUE(header().startsWith("\r\n"));
}

TEST_F(Start, keepsALogAtTheLimit)
{
    const QByteArray old(32000, 'x');
    world.write(u"Error.log"_s, old);
    start();
    EXPECT_EQ(world.read(u"Error.log"_s), old + "\r\n" + header());
}

TEST_F(Start, deletesALogBeyondTheLimit)
{
    world.write(u"Error.log"_s, QByteArray(32001, 'x'));
    start();
    EXPECT_EQ(world.read(u"Error.log"_s), "\r\n" + header());
}

TEST_F(Start, deletesALogThatIsSpelledOtherwise)
{
    world.write(u"ERROR.log"_s, QByteArray(32001, 'x'));
    ApplicationContext context(app.AppPath, app.SystemDirectory,
                               Doors{world.clock, world.desktop, world.settings, world.http}, app.locale);
    EXPECT_TRUE(Main(context, program, windows));
    EXPECT_LT(world.read(u"ERROR.log"_s).size() + world.read(u"Error.log"_s).size(), 1000);
}

TEST_F(Start, trimsTheLogOnlyOnce)
{
    start();
    const QByteArray text(33000, 'y');
    app.WriteErrorLog(QString::fromLatin1(text));
    EXPECT_EQ(world.read(u"Error.log"_s), "\r\n" + header() + "\r\n" + text);
}

TEST_F(Start, leavesAFolderInTheLogsPlace)
{
    QDir().mkpath(world.path(u"Error.log"_s));
    EXPECT_TRUE(start());
    EXPECT_TRUE(QDir(world.path(u"Error.log"_s)).isEmpty());
}

TEST_F(Start, showsTheSplashWindowThenLoadsUnderTheHourglass)
{
    int splashed = 0;
    world.desktop.onPendingEvents = [&] { splashed = static_cast<int>(windows.steps.size()); };
    start();
    EXPECT_EQ(windows.steps, (QStringList{u"splash, log has bytes"_s, u"display, waiting"_s}));
    EXPECT_EQ(world.desktop.pendingEventRuns, 1);
    EXPECT_EQ(splashed, 1) << "pending events run behind the splash window";
}

TEST_F(Start, putsTheDataFilesInTheirPlaces)
{
    world.write(u"../program/qlteng4.dat"_s, "[Markets]");
    world.write(u"../program/menutemplate.html"_s, "menu");
    start();
    EXPECT_EQ(world.read(u"../system/qlteng4.dat"_s), "[Markets]");
    EXPECT_EQ(world.read(u"menutemplate.html"_s), "menu");
}

TEST_F(Start, takesItsTitleFromTheDeployment)
{
    world.write(u"../program/deployment.ini"_s, "[Deployment]\nTitle=Position Finder\n");
    start();
    EXPECT_TRUE(world.takeLog().startsWith(u"\r\nPosition Finder - Version: 4.0.00\r\n"_s));
}

TEST_F(Start, goesOnWithBuiltInValuesWhenTheDeploymentCannotBeRead)
{
    QDir().mkpath(program + u"/deployment.ini"_s);
    EXPECT_TRUE(start());
    const QString log = world.takeLog();
    EXPECT_TRUE(log.startsWith(u"\r\nMarovia Sondrel V4 - Version: "_s));
    EXPECT_TRUE(log.contains(u"\r\nmodStartUp_Main error:  Cannot read"_s)) << qPrintable(log);
    EXPECT_EQ(windows.steps.size(), 2);
}

TEST_F(Start, goesOnWhenADataFileCannotBePutInItsPlace)
{
    world.write(u"../program/qlteng4.dat"_s, "[Markets]");
    QDir().rmdir(world.path(u"../system"_s));
    world.write(u"../system"_s, "a file");
    EXPECT_TRUE(start());
    EXPECT_TRUE(world.takeLog().contains(u"\r\nmodStartUp_Main error:  Cannot make the folder"_s));
    EXPECT_EQ(windows.steps.size(), 2);
}

TEST_F(Start, logsWhatKeepsItFromComingUp)
{
    windows.failing = true;
    EXPECT_FALSE(start());
    EXPECT_TRUE(world.takeLog().endsWith(u"\r\nmodStartUp_Main error:  No display"_s));
}
