#include "shell/frmSendReport.h"
#include "shell/status_panels.h"
#include "tests/shell/main_window_test.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

const QByteArray Page = "<ol><li><b>T</b> <a href=\"http://www.site.example/\">x</a></li></ol>";

class ScheduledWindow : public MainWindowTest
{
protected:
    ScheduledWindow()
    {
        world.write(u"menutemplate.html"_s, "<a href=enginesummary.html>[AccountName]</a>");
        world.http.autoAnswer = [](const ScriptedHttp::Request &) { return Page; };
    }
    // "Shop" on Zeta and Gamma; due now.
    void openDueShop()
    {
        writeShop();
        clsAccount shop(world.app);
        change(shop, [&] {
            shop.SchedulerEnable = true;
            shop.NextLookup = world.clock.today();
            shop.StartTime = u"09:00:00 AM"_s;
        });
        open();
    }
    template <typename Change>
    void change(clsAccount &shop, Change &&change)
    {
        clsEngine catalogue(world.app);
        catalogue.loadEngineData();
        world.app.EngineCatalogue = &catalogue;
        shop.Name = u"Shop"_s;
        shop.GetSettings();
        change();
        shop.SaveSettings();
        world.app.EngineCatalogue = nullptr;
    }
    void pass(qint64 milliseconds)
    {
        for (qint64 done = 0; done < milliseconds; done += 100) {
            world.clock.advance(100);
            for (int i = 0; i < 10; ++i)
                QCoreApplication::processEvents();
        }
    }
    QString panel() { return window->panels().autoRun(); }
};

TEST_F(ScheduledWindow, runsADueProjectByItself)
{
    openDueShop();
    EXPECT_EQ(panel(), u"Auto LookUp is in queue"_s);
    pass(61000);
    EXPECT_TRUE(window->scheduler().AutoRunning());
    EXPECT_EQ(panel(), u"LookUp is running..."_s);
    pass(10000);
    EXPECT_FALSE(window->scheduler().AutoRunning());
    EXPECT_EQ(panel(), u"Next LookUp: 11/22/2026"_s);
    EXPECT_TRUE(world.has(u"reports/Shop/menu.html"_s));
    EXPECT_EQ(child().Keywords().Keywords.at(1).CurPos, u"1"_s) << "the view is refreshed";
}

TEST_F(ScheduledWindow, tellsOfAProjectWithoutEnginesToo)
{
    writeProject(u"Bare"_s, {});
    openDueShop();
    chooseProject(1);
    ASSERT_EQ(panel(), u"Auto LookUp is in queue"_s);
    chooseProject(0);
    EXPECT_EQ(panel(), u"Auto LookUp is off"_s);
}

TEST_F(ScheduledWindow, doesNotRunWhileTheSchedulerIsSwitchedOff)
{
    world.setPreference(u"SchedlerEnable"_s, u"False"_s);
    openDueShop();
    pass(130000);
    EXPECT_FALSE(window->scheduler().AutoRunning());
    EXPECT_TRUE(world.http.requests.empty());
}

TEST_F(ScheduledWindow, looksUpEveryEngineOfTheProject)
{
    writeShop();
    open();
    window->give(Command::LookupAllEngines);
    pass(5000);
    EXPECT_FALSE(window->scheduler().AllEngineMode());
    EXPECT_TRUE(world.has(u"Projects/Shop/Zeta.dat"_s));
    EXPECT_TRUE(world.has(u"Projects/Shop/Gamma.dat"_s));
    EXPECT_TRUE(world.has(u"reports/Shop/rankingdetail.html"_s));
    EXPECT_EQ(window->CurrentEngine(), u"Gamma"_s);
    EXPECT_EQ(world.desktop.beeps, 1);
}

TEST_F(ScheduledWindow, stopsBetweenTheEngines)
{
    world.http.autoAnswer = nullptr;
    writeShop();
    open();
    window->give(Command::LookupAllEngines);
    pass(1500);
    ASSERT_TRUE(child().Online());
    window->give(Command::Stop);
    pass(5000);
    EXPECT_FALSE(child().Online());
    EXPECT_EQ(window->CurrentEngine(), u"Zeta"_s);
    EXPECT_TRUE(window->scheduler().StopRequested());
}

TEST_F(ScheduledWindow, asksForAProjectFirst)
{
    whenModal<QDialog>([](QDialog &dialog) { dialog.reject(); }); // for a new project
    open();
    window->give(Command::LookupAllEngines);
    ASSERT_FALSE(world.desktop.boxes.empty());
    EXPECT_EQ(world.desktop.boxes.back().text,
              u"Please create a new Account by clicking the 'Project' button on the toolbar before you can "
              "doing ranking look up."_s);
    EXPECT_FALSE(window->scheduler().AllEngineMode());
}

TEST_F(ScheduledWindow, asksBeforeItStopsARunToClose)
{
    world.http.autoAnswer = nullptr;
    openDueShop();
    pass(62000);
    ASSERT_TRUE(window->scheduler().autoSession()->Online());
    world.desktop.answers = {MessageAnswer::Yes, MessageAnswer::No};
    window->close();
    EXPECT_FALSE(window->isClosing());
    EXPECT_TRUE(window->scheduler().autoSession()->Online());
    ASSERT_EQ(world.desktop.boxes.size(), 2U);
    EXPECT_EQ(world.desktop.boxes[1].text,
              u"Auto look up is currently running, do you want to cancel this look "
              "up and close the program?"_s);
    window->close();
    EXPECT_TRUE(window->isClosing());
    EXPECT_FALSE(window->scheduler().autoSession());
}

TEST_F(ScheduledWindow, asksOnceWithoutARun)
{
    writeShop();
    open();
    window->close();
    EXPECT_TRUE(window->isClosing());
    EXPECT_EQ(world.desktop.boxes.size(), 1U);
}

TEST_F(ScheduledWindow, goesOnWorkingWhileAnotherProjectIsLookedUp)
{
    openDueShop();
    pass(61000);
    clickNode(u"China"_s, u"Gamma"_s);
    EXPECT_EQ(window->CurrentEngine(), u"Gamma"_s);
    EXPECT_EQ(panel(), u"Next LookUp: 11/22/2026"_s);
    pass(10000);
    EXPECT_TRUE(world.has(u"Projects/Shop/Gamma.dat"_s));
    EXPECT_EQ(child().EngineName(), u"Gamma"_s);
}

TEST_F(ScheduledWindow, opensTheDialogThatMailsTheReports)
{
    writeShop();
    open();
    EXPECT_TRUE(enabled(Command::SendReport));
    bool shown = false;
    whenModal<frmSendReport>([&](frmSendReport &dialog) {
        shown = true;
        dialog.reject();
    });
    window->give(Command::SendReport);
    EXPECT_TRUE(shown);
}

} // namespace
} // namespace sondrel
