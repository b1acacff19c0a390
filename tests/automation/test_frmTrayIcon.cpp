#include "automation/frmTrayIcon.h"

#include "tests/doors/recording_tray_icon.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class FakeProgram final : public TrayedProgram
{
public:
    bool minimised = false;
    bool hidden = false;
    bool dialog = false;
    QStringList calls;

    bool isMinimised() const override { return minimised; }
    bool isHidden() const override { return hidden; }
    bool hasDialog() const override { return dialog; }
    void raiseDialog() override { calls.append(u"raise dialog"_s); }
    void hide() override
    {
        hidden = true;
        calls.append(u"hide"_s);
    }
    void OpenWindow() override
    {
        minimised = hidden = false;
        calls.append(u"open"_s);
    }
    void showMinimised() override
    {
        hidden = false;
        calls.append(u"show minimised"_s);
    }
    void about() override { calls.append(u"about"_s); }
    void unloadMain() override { calls.append(u"unload"_s); }
};

class Tray : public testing::Test
{
protected:
    void minimise()
    {
        program.minimised = true;
        form->mainMinimised();
    }
    void click(TrayIcon::Code code) { tray.click(code); }

    World world;
    RecordingTrayIcon tray;
    FakeProgram program;
    std::unique_ptr<frmTrayIcon> form = std::make_unique<frmTrayIcon>(world.app, tray, program);
};

} // namespace

TEST_F(Tray, showsItsIconWithTheProgramsTitle)
{
    EXPECT_EQ(tray.calls, QStringList{u"add: Marovia Sondrel V4"_s});
    EXPECT_EQ(tray.Icon, u"marovia-sondrel"_s);
}

TEST_F(Tray, hasItsMenu)
{
    const TrayMenu wanted{
        {{1, u"O&pen"_s}, {2, u"&About Marovia Sondrel"_s}, {3, QString()}, {4, u"&Exit"_s}}, 2};
    EXPECT_EQ(tray.menu, wanted);
}

TEST_F(Tray, takesItsIconAwayAtItsEnd)
{
    tray.calls.clear();
    form.reset();
    EXPECT_EQ(tray.calls, QStringList{u"delete"_s});
}

TEST_F(Tray, hidesAMinimisedWindow)
{
    minimise();
    EXPECT_EQ(program.calls, QStringList{u"hide"_s});
    EXPECT_EQ(world.desktop.pendingEventRuns, 1);
}

TEST_F(Tray, hidesTheWindowEveryTimeItIsMinimised)
{
    minimise();
    click(TrayIcon::LeftDoubleClick);
    minimise();
    EXPECT_EQ(program.calls, (QStringList{u"hide"_s, u"open"_s, u"hide"_s}));
}

TEST_F(Tray, leavesAWindowThatHasComeBackAtOnce)
{
    form->mainMinimised();
    EXPECT_TRUE(program.calls.isEmpty());
}

TEST_F(Tray, leavesTheWindowWhereThereIsNoNotificationArea)
{
    tray.available = false;
    minimise();
    EXPECT_TRUE(program.calls.isEmpty());
}

TEST_F(Tray, leavesTheWindowOfAWaitingDialog)
{
    program.dialog = true;
    minimise();
    EXPECT_TRUE(program.calls.isEmpty());
}

TEST_F(Tray, bringsTheWindowBackWhenTheNotificationAreaGoes)
{
    minimise();
    tray.available = false;
    world.clock.advance(3000);
    world.clock.advance(30000);
    EXPECT_EQ(program.calls, (QStringList{u"hide"_s, u"show minimised"_s}));
}

TEST_F(Tray, leavesAHiddenWindowInItsPlace)
{
    minimise();
    world.clock.advance(60000);
    EXPECT_EQ(program.calls, QStringList{u"hide"_s});
}

TEST_F(Tray, opensTheWindowByADoubleClick)
{
    minimise();
    for (const auto code :
         {TrayIcon::LeftDown, TrayIcon::LeftUp, TrayIcon::LeftDoubleClick, TrayIcon::LeftUp})
        click(code);
    EXPECT_EQ(program.calls, (QStringList{u"hide"_s, u"open"_s}));
}

TEST_F(Tray, opensOnlyAMinimisedWindow)
{
    click(TrayIcon::LeftDoubleClick);
    Q_EMIT tray.chosen(1);
    EXPECT_TRUE(program.calls.isEmpty());
}

TEST_F(Tray, doesNothingByOtherClicks)
{
    minimise();
    for (const auto code :
         {TrayIcon::LeftDown, TrayIcon::LeftUp, TrayIcon::RightDown, TrayIcon::RightDoubleClick})
        click(code);
    EXPECT_EQ(program.calls, QStringList{u"hide"_s});
    EXPECT_EQ(tray.calls.size(), 1);
}

TEST_F(Tray, bringsAHiddenWindowBackByAClickWhereThatIsAllThereIs)
{
    tray.doubleClicks = false;
    minimise();
    click(TrayIcon::LeftDown);
    click(TrayIcon::LeftUp);
    EXPECT_EQ(program.calls, (QStringList{u"hide"_s, u"open"_s}));
}

TEST_F(Tray, leavesAVisibleWindowWhenClicked)
{
    tray.doubleClicks = false;
    program.minimised = true;
    click(TrayIcon::LeftDown);
    click(TrayIcon::LeftUp);
    EXPECT_TRUE(program.calls.isEmpty());
}

TEST_F(Tray, showsItsMenuByTheRightButton)
{
    click(TrayIcon::RightDown);
    EXPECT_EQ(tray.calls.size(), 1);
    click(TrayIcon::RightUp);
    EXPECT_EQ(tray.calls.last(), u"menu"_s);
}

TEST_F(Tray, givesTheCommandsOfItsMenu)
{
    minimise();
    for (const int index : {1, 2, 3, 4})
        Q_EMIT tray.chosen(index);
    EXPECT_EQ(program.calls, (QStringList{u"hide"_s, u"open"_s, u"about"_s, u"unload"_s}));
}

TEST_F(Tray, raisesAWaitingDialogInsteadOfACommand)
{
    program.dialog = true;
    for (const int index : {1, 2, 4})
        Q_EMIT tray.chosen(index);
    EXPECT_EQ(program.calls, (QStringList{u"raise dialog"_s, u"raise dialog"_s, u"raise dialog"_s}));
}
