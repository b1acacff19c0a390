#include "reports/report_commands.h"

#include "tests/reports/report_world.h"

#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

class ReportCommands : public testing::Test, public ReportWorld
{
protected:
    ReportCommands() : set(app, status) { write(u"menutemplate.html"_s, "[AccountName]"); }
    void give(ReportFormat format)
    {
        announceReports(app, status);
        giveReport(app, set, format, {account, u"Finder"_s, keywords}, status);
    }

    ReportSet set;
    Collection<clsKeyword> keywords = rows({row(u"tea"_s, u"3"_s)});
};

} // namespace

TEST_F(ReportCommands, writesTheSetAndOpensItsIndex)
{
    give(ReportFormat::Html);
    for (const QString &name : {u"EngineSummary.html"_s, u"keywordurl.html"_s, u"keywordsummary.html"_s,
                                u"rankingdetail.html"_s, u"menu.html"_s})
        EXPECT_TRUE(hasReport(name)) << qPrintable(name);
    ASSERT_EQ(desktop.opened.size(), 1U);
    EXPECT_EQ(QFileInfo(desktop.opened[0].first).canonicalFilePath(),
              QFileInfo(path(u"reports/Demo/menu.html"_s)).canonicalFilePath());
    EXPECT_EQ(panels, QStringList({u"Please wait while generating reports ..."_s, QString()}));
    EXPECT_EQ(desktop.pendingEventRuns, 1);
    EXPECT_TRUE(set.ReportsFresh);
    EXPECT_EQ(takeLog(), QString());
}

TEST_F(ReportCommands, writesAndOpensTheTextReport)
{
    give(ReportFormat::Text);
    EXPECT_TRUE(hasReport(u"menu.html"_s));
    EXPECT_TRUE(hasReport(u"Finder.txt"_s));
    ASSERT_EQ(desktop.opened.size(), 1U);
    EXPECT_TRUE(desktop.opened[0].first.endsWith(u"/Finder.txt"_s));
    EXPECT_EQ(panels,
              QStringList({u"Please wait while generating reports ..."_s,
                           u"Please wait while generating text report ...."_s, QString(), QString()}));
}

TEST_F(ReportCommands, leavesPagesThatAreFresh)
{
    give(ReportFormat::Html);
    writeReportFile(u"keywordurl.html"_s, "kept");
    writeReportFile(u"menu.html"_s, "renewed");
    give(ReportFormat::Html);
    EXPECT_EQ(read(u"reports/Demo/keywordurl.html"_s), "kept");
    EXPECT_EQ(read(u"reports/Demo/menu.html"_s), "Demo\r\n");
    set.ReportsFresh = false; // a lookup has been started
    give(ReportFormat::Html);
    EXPECT_NE(read(u"reports/Demo/keywordurl.html"_s), "kept");
}

TEST_F(ReportCommands, tellsWhenThereIsNoIndex)
{
    ASSERT_TRUE(QFile::remove(path(u"menutemplate.html"_s)));
    give(ReportFormat::Html);
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_EQ(
        desktop.boxes[0],
        (MessageBox{u"Report"_s, u"Report template file is missing. You need to re-store the report template "
                                 "file by re-install the program."_s}));
    EXPECT_TRUE(desktop.opened.empty());
    EXPECT_TRUE(takeLog().startsWith(u"CreateHTMLReportIndex_Error: "_s));
    EXPECT_TRUE(panels.constLast().isEmpty());
}

TEST_F(ReportCommands, opensAnOlderIndexWithoutATemplate)
{
    ASSERT_TRUE(QFile::remove(path(u"menutemplate.html"_s)));
    writeReportFile(u"menu.html"_s, "old");
    give(ReportFormat::Html);
    EXPECT_TRUE(desktop.boxes.empty());
    EXPECT_EQ(desktop.opened.size(), 1U);
}

} // namespace sondrel
