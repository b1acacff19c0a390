#include "shell/status_panels.h"
#include "tests/doors/recording_spreadsheet.h"
#include "tests/shell/main_window_test.h"

#include <QHeaderView>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>

#include <gmock/gmock.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

const QByteArray Page = "<html><ol><li><b>Shop</b> <a href=\"http://www.site.example/shop\">go</a></li>"
                        "<li><b>Else</b> <a href=\"http://else.example/\">go</a></li></ol></html>";

class MainWindowReports : public MainWindowTest
{
protected:
    MainWindowReports()
    {
        world.write(u"menutemplate.html"_s, "[AccountName] by [CompanyName]");
        world.setPreference(u"CompanyName"_s, u"Acme"_s);
        writeShop();
        open();
        world.desktop.onPendingEvents = [this] {
            shownPanel = window->panels().first();
            progressShown = control<QProgressBar>(*window, u"pbrSearch"_s).isVisible();
        };
    }

    // As a person does: opens the menu and clicks its item.
    void choose(const QString &menuName, Command command)
    {
        auto &menu = control<QMenu>(*window, menuName);
        menu.popup(window->menuBar()->mapToGlobal(QPoint(0, window->menuBar()->height())));
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&menu));
        // A menu that has only just come up may not take the first click.
        for (int tries = 100; tries > 0 && menu.isVisible(); --tries) {
            QTest::mouseClick(&menu, Qt::LeftButton, {},
                              menu.actionGeometry(window->action(command)).center());
            QTest::qWait(10);
        }
        ASSERT_FALSE(menu.isVisible());
    }
    void chooseHtml() { choose(u"mnuReport"_s, Command::HtmlReport); }

    // Looks all keywords up, each with the same answer.
    void lookUp(const QByteArray &answer)
    {
        world.http.autoAnswer = [answer](const ScriptedHttp::Request &) { return answer; };
        choose(u"mnuLookUp"_s, Command::LookupAll);
        for (int rest = 10; rest > 0 && child().Online(); --rest) {
            world.clock.advance(1000);
            QTest::qWait(1);
        }
        ASSERT_FALSE(child().Online());
    }

    QString openedName() const
    {
        return world.desktop.opened.empty() ? QString() : world.desktop.opened.back().first.section(u'/', -1);
    }

    QString shownPanel;
    bool progressShown = false;
};

TEST_F(MainWindowReports, leaveTheEnginesPartsAfterALookup)
{
    lookUp(Page);
    EXPECT_THAT(world.read(u"reports/Shop/Zeta.html"_s).toStdString(),
                testing::HasSubstr("<font face=arial size=2>http://www.site.example/shop</font>"));
    EXPECT_THAT(world.read(u"reports/Shop/Zetaku.html"_s).toStdString(),
                testing::HasSubstr("1=www.site.example<br>"));
    EXPECT_EQ(window->panels().first(), QString());
}

TEST_F(MainWindowReports, tellWhenTheEnginesPartsCannotBeWritten)
{
    world.write(u"reports/Shop/Zeta.html/note.txt"_s, "a folder stands where the file belongs");
    lookUp(Page);
    EXPECT_EQ(window->panels().first(), u"Error occur while create ranking report"_s);
    EXPECT_THAT(world.takeLog().toStdString(), testing::HasSubstr("CreateReport_Error: "));
    EXPECT_EQ(world.desktop.waiting, 0);
}

TEST_F(MainWindowReports, writeTheSetAndOpenItsIndex)
{
    lookUp(Page);
    chooseHtml();
    EXPECT_EQ(openedName(), u"menu.html"_s);
    EXPECT_EQ(world.read(u"reports/Shop/menu.html"_s), "Shop by Acme\r\n");
    for (const QString &name :
         {u"EngineSummary.html"_s, u"EngineSummary.dat"_s, u"keywordurl.html"_s, u"keywordsummary.html"_s,
          u"rankingdetail.html"_s, u"ZetaDetails.html"_s, u"GammaDetails.html"_s})
        EXPECT_TRUE(world.has(u"reports/Shop/"_s + name)) << qPrintable(name);
    EXPECT_THAT(world.takeLog().toStdString(), testing::Not(testing::HasSubstr("rror")));
    EXPECT_TRUE(world.desktop.boxes.empty());
}

TEST_F(MainWindowReports, showThatTheyAreUnderWay)
{
    chooseHtml();
    EXPECT_EQ(shownPanel, u"Please wait while generating reports ..."_s);
    EXPECT_TRUE(progressShown);
    EXPECT_GT(world.desktop.waits, 0);
    EXPECT_EQ(world.desktop.waiting, 0);
    EXPECT_EQ(window->panels().first(), QString());
    EXPECT_FALSE(control<QProgressBar>(*window, u"pbrSearch"_s).isVisible());
}

TEST_F(MainWindowReports, writeAndOpenTheTextReport)
{
    choose(u"mnuReport"_s, Command::TextReport);
    EXPECT_EQ(openedName(), u"Zeta.txt"_s);
    EXPECT_TRUE(world.has(u"reports/Shop/menu.html"_s));
    EXPECT_TRUE(world.read(u"reports/Shop/Zeta.txt"_s).contains("Account Name: \tShop\r\n"));
}

TEST_F(MainWindowReports, areNotMadeAnewUntilALookupStarts)
{
    chooseHtml();
    world.write(u"reports/Shop/keywordurl.html"_s, "kept");
    chooseHtml();
    EXPECT_EQ(world.read(u"reports/Shop/keywordurl.html"_s), "kept");
    choose(u"mnuLookUp"_s, Command::LookupAll);
    chooseHtml();
    EXPECT_NE(world.read(u"reports/Shop/keywordurl.html"_s), "kept");
    child().unload();
}

TEST_F(MainWindowReports, tellWhenTheTemplateIsMissing)
{
    ASSERT_TRUE(QFile::remove(world.path(u"menutemplate.html"_s)));
    chooseHtml();
    ASSERT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_EQ(
        world.desktop.boxes[0],
        (MessageBox{u"Report"_s, u"Report template file is missing. You need to re-store the report template "
                                 "file by re-install the program."_s}));
    EXPECT_TRUE(world.desktop.opened.empty());
    EXPECT_EQ(window->panels().first(), QString());
}

TEST_F(MainWindowReports, cannotBeAskedForWithoutRows)
{
    writeProject(u"Empty"_s, {u"Zeta"_s});
    open();
    projects().setCurrentIndex(1);
    Q_EMIT projects().activated(1);
    EXPECT_FALSE(enabled(Command::HtmlReport));
    EXPECT_FALSE(enabled(Command::TextReport));
}

TEST_F(MainWindowReports, areMadeOnceWhenAskedForTwice)
{
    world.desktop.onPendingEvents = [this] { window->action(Command::HtmlReport)->trigger(); };
    chooseHtml();
    EXPECT_EQ(world.desktop.opened.size(), 1U);
}

TEST_F(MainWindowReports, makeTheWorkbookFromTheGridAsItIsShown)
{
    RecordingSpreadsheets spreadsheets;
    world.app.Spreadsheets = &spreadsheets;
    world.write(u"report.xlt"_s, "the template");
    lookUp(Page);
    grid().horizontalHeader()->moveSection(1, 7); // the keywords' column to the right
    grid().setColumnHidden(2, true);
    grid().setRowHidden(0, true);
    bool enabledMeanwhile = true;
    spreadsheets.record.onStep = [&](const QString &) {
        window->action(Command::HtmlReport)->trigger(); // is not heard while one is made
        enabledMeanwhile = window->isEnabled();
    };
    choose(u"mnuReport"_s, Command::ExcelReport);
    EXPECT_EQ(openedName(), u"Zeta.xls"_s);
    EXPECT_EQ(world.desktop.opened.size(), 1U);
    EXPECT_TRUE(enabledMeanwhile);
    EXPECT_FALSE(world.has(u"reports/Shop/menu.html"_s));
    EXPECT_TRUE(world.has(u"reports/Shop/EngineSummary.dat"_s));
    EXPECT_EQ(spreadsheets.record.cells[u"Keyword Summary!12,2"_s], u"shoes"_s);
    EXPECT_EQ(spreadsheets.record.cells[u"Keyword Summary!12,7"_s], u"http://www.site.example/shop"_s);
    EXPECT_EQ(spreadsheets.record.cells[u"Keyword Summary!12,3"_s], u"#1"_s);
    EXPECT_EQ(window->panels().first(), QString());
    EXPECT_FALSE(control<QProgressBar>(*window, u"pbrSearch"_s).isVisible());
}

TEST_F(MainWindowReports, tellWhenThereIsNoSpreadsheetProgram)
{
    world.write(u"report.xlt"_s, "the template");
    choose(u"mnuReport"_s, Command::ExcelReport);
    ASSERT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_EQ(world.desktop.boxes[0].title, u"Connect Excel"_s);
    EXPECT_EQ(window->panels().first(), QString());
}

} // namespace
} // namespace sondrel
