#include "reports/html_report.h"

#include "reports/ranking_reports.h"
#include "tests/reports/report_world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

class HtmlReport : public testing::Test, public ReportWorld
{
protected:
    void create(const std::vector<clsKeyword> &stored, const QString &engine = u"Finder"_s)
    {
        CreateHTMLReport(app, account, engine, rows(stored), status);
    }
};

} // namespace

TEST_F(HtmlReport, writesTheTwoPartsUnchanged)
{
    const std::vector<clsKeyword> stored{row(u"tea"_s, u"3"_s, u"http://site.example/"_s)};
    create(stored);
    EXPECT_EQ(report(u"Finder.html"_s), SummaryReport(app, account, u"Finder"_s, rows(stored)) + u"\r\n"_s);
    EXPECT_EQ(report(u"Finderku.html"_s),
              KeywordURLReport(app, account, u"Finder"_s, rows(stored)) + u"\r\n"_s);
    EXPECT_EQ(panels, QStringList({u"Please wait while generating HTML report ...."_s, QString()}));
    EXPECT_GT(desktop.waits, 0);
    EXPECT_EQ(desktop.waiting, 0);
    EXPECT_EQ(takeLog(), QString());
}

TEST_F(HtmlReport, replacesWhatAnEarlierLookupLeft)
{
    create({row(u"tea"_s, u"3"_s), row(u"coffee"_s, u"4"_s)});
    const QByteArray longer = read(u"reports/Demo/Finder.html"_s);
    create({row(u"tea"_s, u"3"_s)});
    EXPECT_LT(read(u"reports/Demo/Finder.html"_s).size(), longer.size());
    EXPECT_FALSE(report(u"Finderku.html"_s).contains(u"coffee"_s));
}

TEST_F(HtmlReport, takesTheEngineNameAsItStands)
{
    create({}, u"Alta Vista (US)"_s);
    EXPECT_TRUE(hasReport(u"Alta Vista (US).html"_s));
    EXPECT_TRUE(hasReport(u"Alta Vista (US)ku.html"_s));
}

TEST_F(HtmlReport, writesAnEmptyMatrixWithoutKeywords)
{
    create({});
    EXPECT_EQ(read(u"reports/Demo/Finderku.html"_s), "\r\n");
    EXPECT_TRUE(report(u"Finder.html"_s).contains(u"<!-- begin report section -->"_s));
}

TEST_F(HtmlReport, isReachedByBothSpellingsOfTheFolder)
{
    create({});
    EXPECT_TRUE(has(u"reports/Demo/Finder.html"_s));
    EXPECT_TRUE(has(u"Reports/Demo/Finder.html"_s));
}

TEST_F(HtmlReport, tellsWhenAFolderCannotBeMade)
{
    write(u"Reports"_s, "a file in the folder's place");
    create({row(u"tea"_s)});
    EXPECT_TRUE(takeLog().startsWith(u"CreateReport_Error: "_s));
    EXPECT_EQ(panels, QStringList({u"Please wait while generating HTML report ...."_s,
                                   u"Error occur while create ranking report"_s}));
    EXPECT_EQ(desktop.waiting, 0);
    EXPECT_EQ(desktop.resets, 1);
    EXPECT_TRUE(desktop.boxes.empty());
    EXPECT_EQ(read(u"Reports"_s), "a file in the folder's place");
}

TEST_F(HtmlReport, keepsTheFirstFileWhenTheSecondFails)
{
    writeReportFile(u"Finderku.html/in the way"_s, "x");
    create({row(u"tea"_s)});
    EXPECT_TRUE(takeLog().startsWith(u"CreateReport_Error: "_s));
    EXPECT_TRUE(report(u"Finder.html"_s).contains(u">tea<"_s));
}

TEST_F(HtmlReport, staysInsideTheProjectsFolder)
{
    for (const QString &engine : {u"../../outside"_s, u"a/b"_s, u"a\\b"_s})
        create({row(u"tea"_s)}, engine);
    EXPECT_EQ(takeLog().count(u"CreateReport_Error: "_s), 3);
    EXPECT_FALSE(has(u"outside.html"_s));
    account.Name = u".."_s;
    create({row(u"tea"_s)});
    EXPECT_TRUE(takeLog().startsWith(u"CreateReport_Error: "_s));
    EXPECT_FALSE(has(u"Finder.html"_s));
}

} // namespace sondrel
