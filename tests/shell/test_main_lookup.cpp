// The main window while keywords are looked up.
#include "engines/frmEngineBuilder.h"
#include "shell/status_panels.h"
#include "tests/shell/main_window_test.h"
#include "tests/support/bad_files.h"

#include <QLabel>
#include <QProgressBar>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

const QByteArray Page = "<html><ol><li><b>Else</b> <a href=\"http://else.example/\">go</a></li>"
                        "<li><b>Shop</b> <a href=\"http://www.site.example/shop\">go</a></li></ol></html>";

class MainLookup : public MainWindowTest
{
protected:
    MainLookup()
    {
        writeShop();
        writeProject(u"Other"_s, {u"Alpha"_s}, {u"hats"_s});
    }

    void SetUp() override
    {
        open();
        window->CurrentAccount()->LinksNum = 1; // the first page is enough
    }

    void start(Command command = Command::LookupAll)
    {
        window->give(command);
        ASSERT_TRUE(child().Online());
    }

    void answer(std::size_t request)
    {
        world.http.answer(request, Page);
        settle();
    }

    void settle()
    {
        for (int rest = 5; rest > 0; --rest) {
            world.clock.advance(1000);
            QApplication::processEvents();
        }
    }

    QString panel(const QString &name) { return control<QLabel>(*window, name).text(); }
    QProgressBar &bar() { return control<QProgressBar>(*window, u"pbrSearch"_s); }
};

TEST_F(MainLookup, tellsHowFarItIs)
{
    start();
    EXPECT_TRUE(bar().isVisible());
    EXPECT_EQ(bar().maximum(), 4) << "a step for each keyword and one for the start";
    EXPECT_EQ(panel(u"panelProgressText"_s), u"0 of 3"_s);
    EXPECT_EQ(panel(u"panelDescription"_s),
              u"Please wait while retrieving search results from the internet ..."_s);
    answer(0);
    EXPECT_EQ(panel(u"panelProgressText"_s), u"1 of 3"_s);
}

TEST_F(MainLookup, showsItsResultsWhenItIsDone)
{
    start();
    for (std::size_t request = 0; request < 3; ++request)
        answer(request);
    ASSERT_FALSE(child().Online());
    EXPECT_EQ(panel(u"panelDescription"_s), u"Look up completed"_s);
    EXPECT_FALSE(bar().isVisible());
    EXPECT_EQ(child().model().cell(0, GridField::Positions), u"2"_s);
    EXPECT_EQ(grid().currentIndex().row(), 0) << "the first keyword of the run";
    EXPECT_EQ(listings().model()->rowCount(), 2);
    EXPECT_TRUE(enabled(Command::LookupAll));
    EXPECT_FALSE(enabled(Command::Stop));
}

TEST_F(MainLookup, takesTheSelectedKeywords)
{
    grid().setFocus();
    grid().selectRow(1);
    QTest::keyClick(&grid(), Qt::Key_F5);
    ASSERT_TRUE(child().Online());
    ASSERT_EQ(world.http.requests.size(), 1U);
    EXPECT_EQ(world.http.requests[0].url, u"http://zeta.example/find?q=boots"_s);
    answer(0);
    EXPECT_FALSE(child().Online());
    EXPECT_EQ(grid().currentIndex().row(), 1);
}

TEST_F(MainLookup, leavesTheRowChosenWhileShiftIsHeldForItsShortcut)
{
    grid().setFocus();
    grid().selectRow(1);
    QTest::keyPress(window->windowHandle(), Qt::Key_F5, Qt::ShiftModifier);
    EXPECT_TRUE(child().Online());
    EXPECT_TRUE(grid().selectionModel()->isRowSelected(1));
    EXPECT_EQ(grid().selectionModel()->selectedRows().size(), 1);
    EXPECT_TRUE(enabled(Command::CopyKeywords));
    QTest::keyRelease(window->windowHandle(), Qt::Key_F5, Qt::NoModifier);
}

TEST_F(MainLookup, asksForASelection)
{
    grid().clearSelection();
    window->give(Command::LookupSelected);
    const MessageBox box{
        u"Keyword Look Up"_s,
        u"Please select(or highlight) the keywords you want to look up in the keyword list"_s,
        MessageIcon::Information, MessageButtons::Ok};
    EXPECT_EQ(world.desktop.boxes, std::vector<MessageBox>{box});
    EXPECT_FALSE(child().Online());
}

TEST_F(MainLookup, stopsByTheEscapeKey)
{
    start();
    QTest::keyClick(&grid(), Qt::Key_Escape);
    EXPECT_FALSE(enabled(Command::Stop)) << "once is enough";
    settle();
    EXPECT_FALSE(child().Online());
    EXPECT_EQ(panel(u"panelFirst"_s), u"stop"_s);
    EXPECT_FALSE(bar().isVisible());
    EXPECT_TRUE(enabled(Command::LookupAll));
}

TEST_F(MainLookup, forgetsTheLastStopWhenItBegins)
{
    start();
    window->give(Command::Stop);
    settle();
    start();
    EXPECT_EQ(panel(u"panelFirst"_s), QString());
}

TEST_F(MainLookup, keepsItsEngineChosen)
{
    start();
    clickNode(u"China"_s, u"Gamma"_s);
    QApplication::processEvents();
    EXPECT_EQ(tree().currentItem()->text(0), u"Zeta"_s);
    EXPECT_EQ(window->CurrentEngine(), u"Zeta"_s);
    EXPECT_EQ(child().EngineName(), u"Zeta"_s);
    EXPECT_TRUE(child().Online());
}

TEST_F(MainLookup, keepsItsEngineChosenAfterTheEngineBuilder)
{
    start();
    whenModal<frmEngineBuilder>([](frmEngineBuilder &builder) { builder.reject(); });
    window->give(Command::EngineBuilder);
    clickNode(u"China"_s, u"Gamma"_s);
    QApplication::processEvents();
    EXPECT_EQ(tree().currentItem()->text(0), u"Zeta"_s);
}

TEST_F(MainLookup, givesWayToTheEnginesThatAreLeftAfterwards)
{
    start();
    whenModal<frmEngineBuilder>([this](frmEngineBuilder &builder) {
        world.writeEngineData("[Markets]\r\n1=China\r\n[China]\r\n1=Gamma\r\n"
                              "[Gamma]\r\nEngineURL=http://gamma.example/find\r\n");
        builder.reject();
    });
    window->give(Command::EngineBuilder);
    window->give(Command::Stop);
    settle();
    ASSERT_FALSE(child().Online());
    clickNode(u"China"_s, u"Gamma"_s);
    EXPECT_EQ(child().EngineName(), u"Gamma"_s);
}

TEST_F(MainLookup, givesItsCommandsBackWhenItsEndFails)
{
    child().session().writeReport = [] { throw Failure(u"The report cannot be written"_s); };
    start();
    for (std::size_t request = 0; request < 3; ++request)
        answer(request);
    EXPECT_TRUE(world.takeLog().endsWith(u"frmMain_LookUpComplete: The report cannot be written"));
    EXPECT_TRUE(enabled(Command::LookupAll));
    EXPECT_FALSE(enabled(Command::Stop));
}

TEST_F(MainLookup, keepsItsProjectChosen)
{
    start();
    projects().setFocus();
    QTest::keyClick(&projects(), Qt::Key_Down);
    EXPECT_EQ(projects().currentText(), u"Shop"_s);
    EXPECT_EQ(window->CurrentAccount()->Name, u"Shop"_s);
}

TEST_F(MainLookup, leavesTheProjectsAlone)
{
    start();
    for (const Command command : {Command::NewProject, Command::EditProject, Command::DeleteProject})
        window->give(command);
    EXPECT_TRUE(world.desktop.boxes.empty());
    EXPECT_EQ(projects().count(), 2);
    EXPECT_TRUE(child().Online());
}

TEST_F(MainLookup, saysThatListingsAreBeingWritten)
{
    start();
    putUnreadable(world, u"Results/Zeta/socks.dat"_s);
    grid().selectRow(2);
    const MessageBox box{u"Marovia Sondrel V4"_s,
                         u"The program is retrieving data from the internet. Please try again later."_s,
                         MessageIcon::Exclamation, MessageButtons::Ok};
    EXPECT_EQ(world.desktop.boxes, std::vector<MessageBox>{box});
    EXPECT_TRUE(world.takeLog().endsWith(u"Error occured while loading ranking results."));
}

TEST_F(MainLookup, logsWhenEvenThatCannotBeSaid)
{
    start();
    putUnreadable(world, u"Results/Zeta/socks.dat"_s);
    world.desktop.failing = true;
    grid().selectRow(2);
    EXPECT_TRUE(world.takeLog().contains(u"frmSondrel_grdBidsManage_AfterSelChange:  "));
    world.desktop.failing = false;
}

TEST_F(MainLookup, dropsFurtherHitsBeforeAllKeywords)
{
    child().AddKeywordColToGrid({u"boots(2)"_s});
    EXPECT_EQ(grid().model()->rowCount(), 4);
    start();
    EXPECT_EQ(grid().model()->rowCount(), 3);
}

TEST_F(MainLookup, endsWithTheWindow)
{
    start();
    EXPECT_TRUE(window->close());
    EXPECT_EQ(window->child(), nullptr);
    QApplication::processEvents();
    EXPECT_EQ(world.http.pending(), 0);
}

TEST_F(MainLookup, isRememberedAsAskedFor)
{
    EXPECT_FALSE(world.app.LookupRequested);
    start();
    EXPECT_TRUE(world.app.LookupRequested);
}

} // namespace
} // namespace sondrel
