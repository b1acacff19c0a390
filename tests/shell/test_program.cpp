#include "shell/program.h"

#include "shell/frmAbout.h"
#include "shell/frmAccount.h"
#include "shell/frmSplash.h"
#include "tests/doors/recording_tray_icon.h"
#include "tests/shell/main_window_test.h"

#include <QDir>
#include <QLabel>
#include <QSignalSpy>
#include <QToolButton>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

frmSplash *shownSplash()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        auto *splash = qobject_cast<frmSplash *>(widget);
        if (splash && splash->isVisible())
            return splash;
    }
    return nullptr;
}

QStringList projectsShown(const frmMain &window)
{
    QStringList names;
    const auto &list = control<QComboBox>(window, u"cboAccount"_s);
    for (int i = 0; i < list.count(); ++i)
        names.append(list.itemText(i));
    return names;
}

class RunningProgram : public MainWindowTest
{
protected:
    bool start(const QString &problem = {})
    {
        program = std::make_unique<Program>(world.app, tray, problem);
        QObject::connect(program.get(), &Program::ended, [this] { ++ended; });
        return Main(world.app, world.path(u"../program"_s), *program);
    }
    frmMain &main() { return *program->mainWindow(); }
    bool toTray()
    {
        main().showMinimized();
        QApplication::processEvents();
        world.clock.advance(200);
        return main().isHidden();
    }

    RecordingTrayIcon tray;
    std::unique_ptr<Program> program;
    int ended = 0;
};

TEST_F(RunningProgram, comesUp)
{
    writeShop();
    EXPECT_TRUE(start());
    EXPECT_TRUE(main().isVisible());
    EXPECT_EQ(main().child()->AccountName(), u"Shop"_s);
    EXPECT_EQ(tray.calls, QStringList{u"add: Marovia Sondrel V4"_s});
    EXPECT_EQ(shownSplash(), nullptr);
    EXPECT_TRUE(world.desktop.boxes.empty());
    EXPECT_EQ(world.desktop.waiting, 0);
}

TEST_F(RunningProgram, showsTheSplashWindowWhileItComesUp)
{
    writeShop();
    bool splashed = false;
    world.desktop.onPendingEvents = [&] { splashed = splashed || shownSplash(); };
    start();
    EXPECT_TRUE(splashed);
}

TEST_F(RunningProgram, asksForTheFirstProjectBeforeTheMainWindowShows)
{
    bool asked = false;
    whenModal<frmAccount>([&](frmAccount &dialog) {
        asked = true;
        EXPECT_FALSE(main().isVisible());
        EXPECT_EQ(shownSplash(), nullptr);
        EXPECT_EQ(world.desktop.waiting, 0);
        dialog.reject();
    });
    start();
    EXPECT_TRUE(asked);
    EXPECT_TRUE(main().isVisible());
    EXPECT_EQ(world.read(u"project.dat"_s), "[Accounts]\r\nLast=0\r\n");
}

TEST_F(RunningProgram, comesUpWithoutEngineData)
{
    QFile::remove(world.path(u"../system/qlteng4.dat"_s));
    EXPECT_TRUE(start());
    ASSERT_EQ(world.desktop.boxes.size(), 2U);
    EXPECT_EQ(world.desktop.boxes[0].title, u"Error"_s);
    EXPECT_TRUE(world.desktop.boxes[1].text.startsWith(
        u"Error occur while loading the program. Please report this error to the the software vendor at '"_s));
    EXPECT_TRUE(main().isVisible());
    EXPECT_EQ(tray.calls.size(), 1);
    EXPECT_EQ(shownSplash(), nullptr);
    EXPECT_TRUE(world.takeLog().contains(u"\r\nFrmMain_load_Error: "_s));
}

TEST_F(RunningProgram, livesWithASplashWindowThatEndsFirst)
{
    writeShop();
    world.desktop.onPendingEvents = [&] { world.clock.advance(2500); };
    EXPECT_TRUE(start());
    world.desktop.onPendingEvents = nullptr;
    world.clock.advance(10000);
    EXPECT_EQ(shownSplash(), nullptr);
    EXPECT_TRUE(main().isVisible());
}

TEST_F(RunningProgram, showsTheSplashWindowAgainAfterTheEngineUpdate)
{
    writeShop();
    start();
    Q_EMIT main().splashShown();
    EXPECT_NE(shownSplash(), nullptr);
    Q_EMIT main().splashHidden();
    EXPECT_EQ(shownSplash(), nullptr);
    Q_EMIT main().splashUnloaded();
    Q_EMIT main().splashHidden();
    Q_EMIT main().splashUnloaded();
    EXPECT_EQ(shownSplash(), nullptr);
}

TEST_F(RunningProgram, tellsOfDamagedSettings)
{
    writeShop();
    start(u"The settings are damaged."_s);
    const MessageBox told{u"Marovia Sondrel V4"_s, u"The settings are damaged."_s, MessageIcon::Exclamation,
                          MessageButtons::Ok};
    EXPECT_EQ(world.desktop.boxes, std::vector<MessageBox>{told});
    EXPECT_TRUE(world.takeLog().contains(u"\r\nmodStartUp_Main error:  The settings are damaged."_s));
}

TEST_F(RunningProgram, tellsOfADamagedProjectListAndShowsWhatIsLeft)
{
    writeShop();
    world.write(u"project.dat"_s, "[Accounts]\r\n1=Shop\r\n");
    start();
    ASSERT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_TRUE(world.desktop.boxes[0].text.contains(u"project.dat' is damaged: "_s));
    EXPECT_EQ(projectsShown(main()), QStringList{u"Shop"_s});
    EXPECT_EQ(world.read(u"project.dat.damaged"_s), "[Accounts]\r\n1=Shop\r\n");
}

TEST_F(RunningProgram, showsThatAChangeCouldNotBeStored)
{
    writeShop();
    start();
    EXPECT_FALSE(main().findChild<QWidget *>(u"picUnwritten"_s));
    world.app.files.onUnwritten = [this](const QString &problem) { program->tellUnwritten(problem); };
    const QString folder = world.path(u"Projects/Shop"_s);
    QDir(folder).removeRecursively();
    EXPECT_THROW(world.app.files.writeAll(world.app.appFile({u"Projects"_s, u"Shop"_s, u"Shop.dat"_s}), "x"),
                 Failure);
    const auto &bar = control<QWidget>(main(), u"picUnwritten"_s);
    EXPECT_TRUE(bar.isVisible());
    const QString text = control<QLabel>(main(), u"lblUnwritten"_s).text();
    EXPECT_EQ(
        QString(text).remove(QChar(0x200B)),
        u"Cannot write \""_s + folder +
            u"/Shop.dat\": No such file or directory. The change is not stored, and what was stored before "
            u"is as it was. Make room on the disk, or see why nothing can be changed there, and do it again."_s);
    EXPECT_TRUE(world.desktop.boxes.empty());
    QTest::mouseClick(&control<QToolButton>(main(), u"cmdUnwritten"_s), Qt::LeftButton);
    EXPECT_FALSE(bar.isVisible());
}

TEST_F(RunningProgram, isNotMadeWiderByALongName)
{
    writeShop();
    start();
    const int before = main().minimumSizeHint().width();
    program->tellUnwritten(u"Cannot write \"/"_s + QString(2000, u'a') + u"\""_s);
    QApplication::processEvents();
    EXPECT_EQ(main().minimumSizeHint().width(), before);
}

TEST_F(RunningProgram, survivesTheLossOfItsFolders)
{
    writeShop();
    start();
    QDir(world.app.AppPath).removeRecursively();
    QDir(world.path(u"../system"_s)).removeRecursively();
    for (const Command command : {Command::CopyKeywords, Command::PasteKeywords, Command::ShowOptimized,
                                  Command::ShowAll, Command::HelpContents, Command::LookupAll, Command::Stop})
        main().give(command);
    QApplication::processEvents();
    main().close();
    EXPECT_TRUE(program->hasEnded());
}

TEST_F(RunningProgram, comesUpInAFolderThatIsAFile)
{
    writeShop();
    QDir(world.app.AppPath).removeRecursively();
    QFile file(world.app.AppPath);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    whenModal<frmAccount>([&](frmAccount &dialog) { dialog.reject(); });
    start();
    ASSERT_FALSE(world.desktop.boxes.empty());
    EXPECT_TRUE(
        world.desktop.boxes[0].text.startsWith(u"Nothing can be written to the program's folder '"_s));
    EXPECT_TRUE(main().isVisible());
}

TEST_F(RunningProgram, endsWhenItsWindowIsClosed)
{
    writeShop();
    start();
    world.desktop.pendingEventRuns = 0;
    main().close();
    EXPECT_EQ(ended, 1);
    EXPECT_TRUE(program->hasEnded());
    EXPECT_EQ(tray.calls.last(), u"delete"_s);
    EXPECT_EQ(world.desktop.pendingEventRuns, 1);
    EXPECT_EQ(world.desktop.boxes.back().text, u"Are you sure you want to exit?"_s);
}

TEST_F(RunningProgram, goesOnWhenClosingIsRefused)
{
    writeShop();
    start();
    world.desktop.answer = MessageAnswer::No;
    main().close();
    EXPECT_EQ(ended, 0);
    EXPECT_TRUE(main().isVisible());
    EXPECT_EQ(tray.calls.size(), 1);
}

TEST_F(RunningProgram, goesToTheTrayAndComesBack)
{
    writeShop();
    start();
    main().showMaximized();
    EXPECT_TRUE(toTray());
    tray.click(TrayIcon::LeftDoubleClick);
    EXPECT_TRUE(main().isVisible());
    EXPECT_FALSE(main().isMinimized());
    EXPECT_TRUE(main().isMaximized());
    EXPECT_TRUE(toTray());
    Q_EMIT tray.chosen(1);
    EXPECT_TRUE(main().isVisible());
}

TEST_F(RunningProgram, stillMinimisesWithoutATray)
{
    writeShop();
    tray.available = false;
    start();
    EXPECT_FALSE(toTray());
    EXPECT_TRUE(main().isMinimized());
}

TEST_F(RunningProgram, comesBackMinimisedWhenTheTrayGoes)
{
    writeShop();
    start();
    EXPECT_TRUE(toTray());
    tray.available = false;
    world.clock.advance(3000);
    EXPECT_FALSE(main().isHidden());
    EXPECT_TRUE(main().isMinimized());
}

TEST_F(RunningProgram, outlivesADialogOverTheTray)
{
    writeShop();
    start();
    const QSignalSpy lastClosed(qApp, &QGuiApplication::lastWindowClosed);
    EXPECT_TRUE(toTray());
    whenModal<frmAbout>([](frmAbout &dialog) { click(dialog, u"cmdOK"_s); });
    Q_EMIT tray.chosen(2);
    QApplication::processEvents();
    EXPECT_FALSE(QApplication::quitOnLastWindowClosed());
    EXPECT_EQ(ended, 0);
    tray.click(TrayIcon::LeftDoubleClick);
    EXPECT_TRUE(main().isVisible());
}

TEST_F(RunningProgram, raisesItsDialogInsteadOfEndingUnderIt)
{
    writeShop();
    start();
    whenModal<frmAbout>([&](frmAbout &dialog) {
        Q_EMIT tray.chosen(4);
        EXPECT_TRUE(world.desktop.boxes.empty());
        EXPECT_TRUE(dialog.isVisible());
        dialog.reject();
    });
    Q_EMIT tray.chosen(2);
    EXPECT_EQ(ended, 0);
}

TEST_F(RunningProgram, endsFromTheTrayByTheUsualQuestion)
{
    writeShop();
    world.setPreference(u"MainFormPos"_s, u"1,2,300,400"_s);
    start();
    EXPECT_TRUE(toTray());
    world.desktop.answers = {MessageAnswer::No, MessageAnswer::Yes};
    Q_EMIT tray.chosen(4);
    EXPECT_EQ(ended, 0);
    Q_EMIT tray.chosen(4);
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(world.settings.value(world.app.RegPreference, u"MainFormPos"_s), QVariant(u"1,2,300,400"_s))
        << "a minimised window has no place worth keeping";
}

TEST_F(RunningProgram, comesForwardWhenStartedAgain)
{
    writeShop();
    start();
    EXPECT_TRUE(toTray());
    program->raise();
    EXPECT_TRUE(main().isVisible());
    EXPECT_FALSE(main().isMinimized());
}

TEST_F(RunningProgram, keepsItsWindowBackUntilItHasLoaded)
{
    whenModal<frmAccount>([&](frmAccount &dialog) {
        program->raise();
        EXPECT_FALSE(main().isVisible());
        EXPECT_TRUE(dialog.isVisible());
        dialog.reject();
    });
    start();
    program->raise();
    EXPECT_TRUE(main().isVisible());
}

} // namespace
} // namespace sondrel
