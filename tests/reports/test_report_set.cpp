#include "reports/report_set.h"

#include "reports/html_report.h"
#include "tests/reports/report_world.h"

#include <QDir>

#include <gtest/gtest.h>

#include <filesystem>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

class ReportPages : public testing::Test, public ReportWorld
{
protected:
    ReportPages() : set(app, status)
    {
        set.Reporter = {u"Ann"_s,
                        u"ann@site.example"_s,
                        u"http://www.site.example"_s,
                        u"Example Ltd"_s,
                        QString(),
                        u"Top&Bottom"_s,
                        QString()};
    }
    void lookUp(const QString &engine, const std::vector<clsKeyword> &stored)
    {
        CreateHTMLReport(app, account, engine, rows(stored), {});
    }
    void writePages(const std::vector<clsKeyword> &stored = {}) { set.writePages(account, rows(stored)); }
    QStringList files() const
    {
        return QDir(path(u"reports/Demo"_s)).entryList(QDir::Files | QDir::NoSymLinks, QDir::Name);
    }
    QByteArrayList contents() const
    {
        QByteArrayList result;
        for (const QString &name : files())
            result.append(read(u"reports/Demo/"_s + name));
        return result;
    }

    ReportSet set;
};

const QString Head = u"<html><head><title>Marovia Sondrel Report</title></head><body bgcolor = #FFFFFF>"_s;

} // namespace

TEST_F(ReportPages, areWrittenForEnginesThatWereNeverLookedUp)
{
    setEngines({u"Finder"_s, u"Perla"_s});
    writePages({row(u"tea"_s)});
    EXPECT_EQ(files(), QStringList({u"EngineSummary.dat"_s, u"EngineSummary.html"_s, u"FinderDetails.html"_s,
                                    u"PerlaDetails.html"_s, u"keywordsummary.html"_s, u"keywordurl.html"_s,
                                    u"rankingdetail.html"_s}));
    EXPECT_FALSE(report(u"keywordurl.html"_s).contains(u"Engine: "_s));
    EXPECT_FALSE(report(u"keywordsummary.html"_s).contains(u"Engine: "_s));
    // Head and foot only.
    EXPECT_TRUE(report(u"FinderDetails.html"_s).contains(u"</table><p>\r\n<hr><center>\r\n"_s));
    EXPECT_TRUE(report(u"rankingdetail.html"_s).contains(u"<a href=FinderDetails.html>Finder</a><br>\r\n"_s));
    EXPECT_EQ(takeLog(), QString());
}

TEST_F(ReportPages, areWrittenForEnginesThatTheCatalogueDoesNotKnow)
{
    setEngines({u"Gone"_s, u"Finder"_s});
    lookUp(u"Gone"_s, {row(u"tea"_s, u"3"_s)});
    writePages({row(u"tea"_s)});
    EXPECT_TRUE(report(u"keywordsummary.html"_s).contains(u"<!--- Engine: Gone --><br><br>\r\n"_s));
    EXPECT_TRUE(hasReport(u"GoneDetails.html"_s));
    EXPECT_TRUE(report(u"rankingdetail.html"_s)
                    .contains(u"<font color=#FFFFFF face=arial size=2></td>\r\n"
                              "<td align=left valign=top widht=30% bgcolor=#0080C0>"
                              "<font color=#FFFFFF face=arial size=2>USA</td>\r\n</tr>"_s));
    EXPECT_EQ(report(u"EngineSummary.dat"_s), u"[USA]\r\nEnginesKeyword;Finder\r\n\r\n"_s);
    EXPECT_EQ(takeLog(), QString());
}

TEST_F(ReportPages, areWrittenForAProjectWithoutEngines)
{
    account.Engine.reset();
    writePages();
    EXPECT_EQ(files(),
              QStringList({u"keywordsummary.html"_s, u"keywordurl.html"_s, u"rankingdetail.html"_s}));
    EXPECT_EQ(takeLog(), QString());
}

TEST_F(ReportPages, leaveAnOldSummaryOfAProjectWithoutEngines)
{
    writeReportFile(u"EngineSummary.dat"_s, "old");
    setEngines({});
    set.CreateEngineSummaryReport(account);
    EXPECT_EQ(read(u"reports/Demo/EngineSummary.dat"_s), "old");
    EXPECT_FALSE(hasReport(u"EngineSummary.html"_s));
}

TEST_F(ReportPages, startANewGroupWhereverTheMarketChanges)
{
    setEngines({u"Finder"_s, u"Lookfar"_s, u"Zeta"_s, u"Questnet"_s});
    writePages();
    const QString page = report(u"rankingdetail.html"_s);
    EXPECT_EQ(page.count(u"size=2>USA</td>"_s), 2);
    EXPECT_EQ(page.count(u"size=2>UK</td>"_s), 1);
    EXPECT_TRUE(page.contains(u"</tr><tr><td align=left valign=top widht=30%><font face=arial size=2>"
                              "<a href=FinderDetails.html>Finder</a><br>\r\n</td>\r\n"_s));
    EXPECT_TRUE(page.contains(u"<a href=ZetaDetails.html>Zeta</a><br>\r\n"
                              "<a href=QuestnetDetails.html>Questnet</a><br>\r\n</td>\r\n</tr></table></p>"
                              "<hr><center>\r\n"_s));
}

TEST_F(ReportPages, pasteEnginesOfOneCleanedNameApart)
{
    setEngines({u"Quest.net"_s, u"Questnet"_s});
    lookUp(u"Quest.net"_s, {row(u"a"_s, u"3"_s)});
    lookUp(u"Questnet"_s, {row(u"b"_s, u"4"_s)});
    writePages();
    const QString page = report(u"keywordsummary.html"_s);
    EXPECT_LT(page.indexOf(u">a</font></a>"_s), page.indexOf(u"<!--- Engine: Quest.net --><br><br>"_s));
    EXPECT_LT(page.indexOf(u"<!--- Engine: Quest.net --><br><br>"_s), page.indexOf(u">b</font></a>"_s));
}

TEST_F(ReportPages, pasteThePartsOfTheEnginesWhole)
{
    writeReportFile(u"Finder.html"_s, "SUMMARY\r\n");
    writeReportFile(u"Finderku.html"_s, "MATRIX\r\n");
    writePages();
    EXPECT_TRUE(
        report(u"keywordsummary.html"_s)
            .contains(u"</table><p>\r\nSUMMARY\r\n<!--- Engine: Finder --><br><br>\r\n<hr><center>\r\n"_s));
    EXPECT_TRUE(
        report(u"keywordurl.html"_s)
            .contains(
                u"</table><p>\r\nMATRIX\r\n\r\n<!--- Engine: Finder --><br><br>\r\n<hr><center>\r\n"_s));
}

TEST_F(ReportPages, markAnEngineWhosePartIsEmpty)
{
    account.URLs.reset();
    lookUp(u"Finder"_s, {row(u"tea"_s, u"3"_s)});
    writePages();
    EXPECT_TRUE(report(u"keywordurl.html"_s).contains(u"</table><p>\r\n\r\n\r\n<!--- Engine: Finder -->"_s));
}

TEST_F(ReportPages, pasteBytesAsTheyAre)
{
    setPreference(u"CodePage"_s, u"936"_s);
    QByteArray every;
    for (int byte = 1; byte < 256; ++byte)
        every += static_cast<char>(byte);
    writeReportFile(u"Finder.html"_s, every);
    writeReportFile(u"Finder_tea.html"_s, every);
    writePages({row(u"tea"_s)});
    EXPECT_TRUE(read(u"reports/Demo/keywordsummary.html"_s).contains(every));
    EXPECT_TRUE(
        read(u"reports/Demo/FinderDetails.html"_s).contains("</table><p>\r\n" + every + "<hr><center>"));
}

TEST_F(ReportPages, listOwnUrlsBeforeCompetitors)
{
    setUrls({{u"r1.example"_s, true},
             {u"own1.example"_s, false},
             {u"r2.example"_s, true},
             {u"own2.example"_s, false}});
    lookUp(u"Finder"_s, {});
    writePages();
    const QString list = u"size=2>own1.example<br>\r\nown2.example<br>\r\nr1.example(Competitor)<br>\r\n"
                         "r2.example(Competitor)<br>\r\n</font></td>\r\n"_s;
    EXPECT_TRUE(report(u"EngineSummary.html"_s).contains(list));
    EXPECT_TRUE(report(u"keywordsummary.html"_s).contains(list));
    EXPECT_TRUE(report(u"rankingdetail.html"_s).contains(list));
    EXPECT_TRUE(report(u"FinderDetails.html"_s).contains(list));
    EXPECT_FALSE(report(u"keywordurl.html"_s).contains(u"(Competitor)"_s));
}

TEST_F(ReportPages, takeTheStoredPagesOfTheKeywordsOwnNames)
{
    writeReportFile(u"Finder_two_words.html"_s, "TWO WORDS");
    writeReportFile(u"Finder_it%27s.html"_s, "IT'S");
    writeReportFile(u"Finder_tea.html"_s, "TEA");
    writePages({row(u"tea"_s), row(u"two words"_s), row(u"two words(2)"_s), row(u"it's"_s), row(u"a/b"_s),
                row(u".."_s)});
    EXPECT_TRUE(report(u"FinderDetails.html"_s).contains(u"</table><p>\r\nTEATWO WORDS<hr><center>"_s));
    EXPECT_EQ(takeLog(), QString());
}

TEST_F(ReportPages, passOverThePageThatABrowserFindsUnderAKeywordsName)
{
    writeReportFile(u"Finder_it%27s.html"_s, "IT'S");
    app.files.linkBeside(app.appFile({u"reports"_s, u"Demo"_s, u"Finder_it%27s.html"_s}),
                         u"Finder_it's.html"_s);
    writePages({row(u"it's"_s)});
    ASSERT_TRUE(hasReport(u"Finder_it's.html"_s));
    EXPECT_FALSE(report(u"FinderDetails.html"_s).contains(u"IT'S"_s));
}

TEST_F(ReportPages, takeAKeywordsPageByItsOtherSpelling)
{
    writeReportFile(u"Finder_Tea.html"_s, "TEA");
    app.files.linkBeside(app.appFile({u"reports"_s, u"Demo"_s, u"Finder_Tea.html"_s}), u"Finder_tea.html"_s);
    writePages({row(u"tea"_s)});
    EXPECT_TRUE(report(u"FinderDetails.html"_s).contains(u"TEA"_s));
}

TEST_F(ReportPages, takeAKeywordsPageInAnyCaseButItsOwnFirst)
{
    writeReportFile(u"FINDER_Tea.html"_s, "OTHER");
    writePages({row(u"tea"_s)});
    EXPECT_TRUE(report(u"FinderDetails.html"_s).contains(u"</table><p>\r\nOTHER<hr>"_s));
    writeReportFile(u"Finder_tea.html"_s, "OWN");
    writePages({row(u"tea"_s)});
    EXPECT_TRUE(report(u"FinderDetails.html"_s).contains(u"</table><p>\r\nOWN<hr>"_s));
}

TEST_F(ReportPages, haveNoImageWithoutALogo)
{
    writePages();
    for (const QByteArray &page : contents())
        EXPECT_FALSE(page.contains("<img"));
}

TEST_F(ReportPages, showTheLogoAtBothEnds)
{
    set.Reporter.LogoURL = u"logo.gif"_s;
    writePages();
    EXPECT_TRUE(
        report(u"keywordsummary.html"_s)
            .startsWith(Head + u"<center><img src =\"logo.gif\"></center><table border = 0 width =900>"_s));
    EXPECT_TRUE(report(u"keywordsummary.html"_s)
                    .contains(u"<hr><center>\r\n<center><img src =\"logo.gif\"></center><br><p><font "_s));
    EXPECT_TRUE(
        report(u"keywordurl.html"_s)
            .contains(u"<hr><center>\r\n<center><img src =\"logo.gif\"></center><br>\r\n<p><font "_s));
    EXPECT_TRUE(report(u"rankingdetail.html"_s)
                    .contains(u"<hr><center>\r\n<center><img src =\"logo.gif\"></center><br><font "_s));
    EXPECT_TRUE(
        report(u"EngineSummary.html"_s).startsWith(Head + u"<center><img src =\"logo.gif\"><br></center>"_s));
    EXPECT_TRUE(
        report(u"EngineSummary.html"_s).contains(u"<center>\r\n <img src =\"logo.gif\"><br><p><font "_s));
}

TEST_F(ReportPages, areTheSameWhenWrittenAgain)
{
    writeResults(u"Finder"_s, {{u"tea"_s, u"3"_s}});
    lookUp(u"Finder"_s, {row(u"tea"_s, u"3"_s)});
    writePages({row(u"tea"_s)});
    const QByteArrayList first = contents();
    writePages({row(u"tea"_s)});
    EXPECT_EQ(contents(), first);
}

TEST_F(ReportPages, areReachedByTheSpellingsThatOthersLinkTo)
{
    writePages();
    for (const QString &name : {u"enginesummary.html"_s, u"Keywordurl.html"_s}) {
        const std::filesystem::path link(path(u"reports/Demo/"_s + name).toStdString());
        ASSERT_TRUE(std::filesystem::is_symlink(link)) << link;
        EXPECT_TRUE(std::filesystem::read_symlink(link).is_relative()) << link;
    }
    EXPECT_EQ(read(u"reports/Demo/enginesummary.html"_s), read(u"reports/Demo/EngineSummary.html"_s));
}

TEST_F(ReportPages, areReachedWhereAnOlderSpellingIsReplaced)
{
    writeReportFile(u"RankingDetail.HTML"_s, "old");
    writeReportFile(u"FINDERdetails.html"_s, "old");
    writePages();
    EXPECT_TRUE(report(u"rankingdetail.html"_s).contains(u"Ranking Details Report for Demo"_s));
    EXPECT_TRUE(report(u"FinderDetails.html"_s).contains(u"Ranking Details Report for Demo"_s));
    EXPECT_TRUE(files().contains(u"RankingDetail.HTML"_s));
}

TEST_F(ReportPages, reportTheirProgress)
{
    setEngines({u"Finder"_s, u"Zeta"_s});
    set.CreateKeywordURLReport(account);
    EXPECT_EQ(progress, (std::vector<std::pair<int, int>>{{1, 2}, {2, 2}}));
    progress.clear();
    set.CreateRankingDetailsReport(account, rows({row(u"a"_s), row(u"b"_s)}));
    EXPECT_EQ(progress, (std::vector<std::pair<int, int>>{{1, 2}, {2, 2}, {1, 2}, {2, 2}}));
    progress.clear();
    set.CreateEngineSummaryReport(account);
    EXPECT_EQ(progress.back(), (std::pair{0, 1}));
    EXPECT_GT(desktop.waits, 0);
    EXPECT_EQ(desktop.waiting, 0);
}

TEST_F(ReportPages, logEveryPageThatCannotBeWritten)
{
    write(u"Reports"_s, "a file in the folder's place");
    writePages();
    const QString log = takeLog();
    for (const QString &tag :
         {u"frmMain_EngineSummaryReportHTML error: "_s, u"frmmain_EngineSummaryReportExcel error: "_s,
          u"frmMain_CreateKeywordURLReport Error: "_s, u"CreateKeywordSummaryReport_Error: "_s,
          u"CreateRankingDetailsReport_Error: "_s})
        EXPECT_EQ(log.count(tag), 1) << qPrintable(tag);
    EXPECT_TRUE(desktop.boxes.empty());
    EXPECT_EQ(desktop.waiting, 0);
    EXPECT_EQ(desktop.resets, 5);
}

TEST_F(ReportPages, logASummaryThatCannotBegin)
{
    desktop.pointerFails = true;
    set.CreateEngineSummaryReport(account);
    EXPECT_EQ(takeLog(), u"frmMain_CreateEngineSummaryReport error: There is no pointer"_s);
}

TEST_F(ReportPages, endWithTheEngineThatHasNoFileName)
{
    setEngines({u"Finder"_s, u"a/b"_s, u"Zeta"_s});
    writePages();
    EXPECT_TRUE(takeLog().startsWith(u"CreateRankingDetailsReport_Error: "_s));
    EXPECT_TRUE(hasReport(u"FinderDetails.html"_s)); // written so far, and stays
    EXPECT_FALSE(hasReport(u"rankingdetail.html"_s));
    EXPECT_TRUE(hasReport(u"keywordsummary.html"_s));
}

TEST_F(ReportPages, stayInsideTheReportsFolder)
{
    account.Name = u"../.."_s;
    writePages();
    EXPECT_EQ(takeLog().count(u"cannot be the name of a file"_s), 5);
    EXPECT_FALSE(has(u"../keywordurl.html"_s));
}

class ReportIndex : public ReportPages
{
protected:
    QString index(const QByteArray &text)
    {
        write(u"menutemplate.html"_s, text);
        set.CreateHTMLReportIndex(u"Demo"_s);
        return report(u"menu.html"_s);
    }
};

TEST_F(ReportIndex, fillsEveryPlaceholderInAnyCase)
{
    EXPECT_EQ(index("[accountname]|[ACCOUNTNAME]|[DateCreated]|[CompanyName]|[ReporterName]|[CompanyURL]|"
                    "[ReporterEmail]|[Other]"),
              u"Demo|Demo|Sunday, November 15, 2026|Example Ltd|Ann|http://www.site.example|ann@site.example|"
              "[Other]\r\n"_s);
    EXPECT_EQ(takeLog(), QString());
}

TEST_F(ReportIndex, fillsWhatAFilledValueHolds)
{
    set.Reporter.Company = u"[ReporterName] & Co"_s;
    EXPECT_EQ(index("[CompanyName]"), u"Ann & Co\r\n"_s);
}

TEST_F(ReportIndex, leavesThePlacesOfTheLogoWithoutOne)
{
    EXPECT_EQ(index("a<!--TopLogo-->b<!--BottomLogo-->c"), u"a<!--TopLogo-->b<!--BottomLogo-->c\r\n"_s);
}

TEST_F(ReportIndex, showsTheLogoWhereItsPositionSays)
{
    set.Reporter.LogoURL = u"l.gif"_s;
    EXPECT_EQ(index("a<!--toplogo-->b<!--BottomLogo-->c"),
              u"a <img src =\"l.gif\">b <img src =\"l.gif\">c\r\n"_s);
    set.Reporter.LogoPosition = u"Bottom"_s;
    EXPECT_EQ(index("a<!--TopLogo-->b<!--BottomLogo-->c"), u"a<!--TopLogo-->b <img src =\"l.gif\">c\r\n"_s);
}

TEST_F(ReportIndex, replacesAnOlderOne)
{
    writeReportFile(u"menu.html"_s, "an older and longer one");
    EXPECT_EQ(index("x"), u"x\r\n"_s);
}

TEST_F(ReportIndex, leavesTheFolderAsItWasWithoutATemplate)
{
    writeReportFile(u"menu.html"_s, "old");
    set.CreateHTMLReportIndex(u"Demo"_s);
    const QString log = takeLog();
    EXPECT_TRUE(log.startsWith(u"CreateHTMLReportIndex_Error: "_s));
    EXPECT_EQ(log.count(u'\n'), 0);
    EXPECT_EQ(files(), QStringList(u"menu.html"_s));
    EXPECT_EQ(read(u"reports/Demo/menu.html"_s), "old");
    EXPECT_TRUE(desktop.boxes.empty());
}

} // namespace sondrel
