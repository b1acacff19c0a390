#include "reports/excel_report.h"

#include "tests/doors/recording_spreadsheet.h"
#include "tests/reports/report_world.h"
#include "tests/support/ordinary_user.h"
#include "tests/support/small_disk.h"

#include <QDir>
#include <QSysInfo>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

const QString MissingText = u"\\report.xlt' is missing. Please reinstall the full version and try again."_s;

class Excel : public testing::Test, public ReportWorld
{
protected:
    Excel()
    {
        app.Spreadsheets = &spreadsheets;
        write(u"report.xlt"_s, "the template");
        setUrls({{u"www.a.example"_s, false}, {u"b.example"_s, true}});
        add({u"tea"_s, u"3"_s, u"1"_s, u"5"_s, u"+2"_s, u"http://www.a.example/"_s, u"11/15/2026"_s});
    }

    void add(const GridCells &cells)
    {
        grid.push_back(cells);
        clsKeyword keyword = row(cells[0], cells[1], cells[5], u"240"_s);
        keywords.Add(keyword, cells[0]);
    }
    void make() { ExcelReport(app, {u"Demo"_s, u"Finder"_s, account, keywords, grid}, status); }

    void setPreferenceTexts()
    {
        setPreference(u"ReporterName"_s, u"Ann"_s);
        setPreference(u"CompanyName"_s, u"Acme"_s);
        setPreference(u"WebSite"_s, u"acme.example"_s);
        setPreference(u"Email"_s, u"ann@acme.example"_s);
    }

    SpreadsheetRecord &record() { return spreadsheets.record; }
    QString cell(const QString &sheet, int row, int column)
    {
        const auto found = record().cells.find(u"%1!%2,%3"_s.arg(sheet).arg(row).arg(column));
        return found == record().cells.end() ? QString() : found->second;
    }
    QStringList line(const QString &sheet, int row, int first, int last)
    {
        QStringList cells;
        for (int column = first; column <= last; ++column)
            cells.append(cell(sheet, row, column));
        return cells;
    }
    bool did(const QString &step) { return record().steps.contains(step); }

    RecordingSpreadsheets spreadsheets;
    Collection<clsKeyword> keywords;
    std::vector<GridCells> grid;
};

const QString Summary = u"Keyword Summary"_s;
const QString KeywordUrl = u"Keyword URL"_s;
const QString Engines = u"Engine Summary"_s;

} // namespace

TEST_F(Excel, makesTheWorkbookFromTheTemplateAndOpensIt)
{
    make();
    EXPECT_EQ(record().opened, "the template");
    EXPECT_EQ(read(u"reports/Demo/Finder.xls"_s), "a workbook");
    ASSERT_EQ(desktop.opened.size(), 1U);
    EXPECT_TRUE(desktop.opened[0].first.endsWith(u"/Demo/Finder.xls"_s));
    EXPECT_TRUE(desktop.boxes.empty());
    EXPECT_EQ(record().closed, 1);
    EXPECT_EQ(takeLog(), u"ExcelKeywordSummaryReport end"_s);
    EXPECT_EQ(panels, QStringList{QString()});
    EXPECT_EQ(progress.back(), std::pair(5, 5));
    EXPECT_EQ(desktop.waiting, 0);
    EXPECT_EQ(record().steps.constLast(), u"save"_s);
    EXPECT_EQ(record().steps.at(record().steps.size() - 2), u"activate Keyword Summary"_s);
}

TEST_F(Excel, doesNothingWithoutRows)
{
    grid.clear();
    make();
    EXPECT_TRUE(record().steps.isEmpty());
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(Excel, fillsTheKeywordSummaryFromTheGrid)
{
    add({u"=1+1"_s, QString(), QString(), u"7"_s, u"-7"_s, QString(), u"Failed"_s});
    add({u"2005"_s, u"12"_s, u"2"_s, QString(), u"12+"_s, u"http://b.example/"_s, u"11/15/2026"_s});
    account.ExcludeUnRanking = true; // plays no part here
    setPreferenceTexts();
    make();
    EXPECT_TRUE(did(u"rename Report Keyword Summary"_s));
    EXPECT_TRUE(did(u"font Keyword Summary A3:H200 plain"_s));
    EXPECT_EQ(cell(Summary, 4, 3), u"Sunday, November 15, 2026"_s);
    EXPECT_EQ(cell(Summary, 5, 3), u"Demo"_s);
    EXPECT_EQ(cell(Summary, 6, 3), u"Finder"_s);
    EXPECT_EQ(cell(Summary, 7, 3), u"www.a.example"_s);
    EXPECT_EQ(cell(Summary, 8, 3), u"b.example"_s);
    for (int row = 4; row <= 8; ++row)
        EXPECT_TRUE(did(u"merge Keyword Summary C%1:H%1"_s.arg(row))) << row;
    EXPECT_EQ(line(Summary, 11, 2, 8), QStringList({u"Search Terms"_s, u"Position"_s, u"Page"_s, u"LastPos"_s,
                                                    u"Change"_s, u"URL"_s, u"Status"_s}));
    EXPECT_EQ(line(Summary, 12, 2, 8), QStringList({u"tea"_s, u"#3"_s, u"#1"_s, u"#5"_s, u"+2"_s,
                                                    u"http://www.a.example/"_s, u"11/15/2026"_s}));
    EXPECT_EQ(line(Summary, 13, 2, 8),
              QStringList({u"=1+1"_s, QString(), QString(), u"#7"_s, u"-7"_s, QString(), u"Failed"_s}));
    EXPECT_EQ(cell(Summary, 14, 2), u"2005"_s);
    EXPECT_TRUE(did(u"colour Keyword Summary A11:H11 61c4f3"_s));
    EXPECT_TRUE(did(u"colour Keyword Summary A15:H15 61c4f3"_s));
    EXPECT_TRUE(did(u"align Keyword Summary C11:F14 -4108"_s));
    EXPECT_TRUE(did(u"align Keyword Summary H11:H14 -4108"_s));
    EXPECT_TRUE(did(u"merge Keyword Summary B16:I16"_s));
    EXPECT_TRUE(did(u"merge Keyword Summary B17:H17"_s));
    EXPECT_EQ(cell(Summary, 16, 2), u"This report is generated by: Ann"_s);
    EXPECT_EQ(cell(Summary, 17, 2), u"Acme"_s);
    EXPECT_EQ(cell(Summary, 18, 2), u"http://acme.example"_s);
}

TEST_F(Excel, writesTheRowsInOneBlock)
{
    for (int i = 0; i < 1000; ++i)
        add({u"term %1"_s.arg(i), u"1"_s, u"1"_s, u"1"_s, u"0"_s, u"u"_s, u"s"_s});
    make();
    EXPECT_TRUE(did(u"write Keyword Summary 11,2 1002 7"_s));
}

TEST_F(Excel, passesOverWhatFailsOnTheFirstSheet)
{
    record().onStep = [](const QString &step) {
        if (step.startsWith(u"merge Keyword Summary"_s) || step.startsWith(u"font Keyword Summary"_s) ||
            step.startsWith(u"rename Report"_s))
            throw SpreadsheetError(1004, u"no"_s);
    };
    make();
    EXPECT_EQ(record().steps.filter(u"activate Keyword Summary"_s).size(), 2); // at the start and at the end
    EXPECT_EQ(cell(Summary, 4, 3), u"Sunday, November 15, 2026"_s);
    EXPECT_TRUE(desktop.boxes.empty());
    EXPECT_TRUE(hasReport(u"Finder.xls"_s));
}

TEST_F(Excel, fillsTheKeywordUrlSheetFromTheMatrix)
{
    setPreferenceTexts();
    add({u"tea(2)"_s, u"9"_s, u"1"_s, QString(), QString(), u"http://b.example/x"_s, QString()});
    make();
    EXPECT_TRUE(did(u"rename Sheet2 Keyword URL"_s));
    EXPECT_TRUE(did(u"merge Keyword URL A2:H2"_s));
    EXPECT_TRUE(did(u"align Keyword URL A2:H2 -4108"_s));
    EXPECT_TRUE(did(u"colour Keyword URL A2:H2 61c4f3"_s));
    EXPECT_TRUE(did(u"font Keyword URL A2:H2 Arial 14 bold"_s));
    EXPECT_EQ(cell(KeywordUrl, 2, 1), u"Keyword URL Report"_s);
    EXPECT_EQ(line(KeywordUrl, 4, 2, 3), QStringList({u"Date"_s, u"Sunday, November 15, 2026"_s}));
    EXPECT_EQ(line(KeywordUrl, 5, 2, 3), QStringList({u"Account"_s, u"Demo"_s}));
    EXPECT_EQ(line(KeywordUrl, 6, 2, 3), QStringList({u"Search Engine"_s, u"Finder"_s}));
    EXPECT_EQ(line(KeywordUrl, 7, 2, 3), QStringList({u"Web Site URLs"_s, u"1=www.a.example"_s}));
    EXPECT_EQ(line(KeywordUrl, 8, 2, 3), QStringList({QString(), u"2=b.example"_s}));
    EXPECT_TRUE(did(u"merge Keyword URL C8:H8"_s));
    EXPECT_TRUE(did(u"align Keyword URL C8:H8 -4131"_s));
    EXPECT_EQ(line(KeywordUrl, 11, 2, 5), QStringList({u"Search Term"_s, u"Counts"_s, u"URL1"_s, u"URL2"_s}));
    EXPECT_EQ(line(KeywordUrl, 12, 2, 5), QStringList({u"tea"_s, u"#240"_s, u"#3"_s, u"#9"_s}));
    EXPECT_TRUE(did(u"colour Keyword URL A11:E11 61c4f3"_s));
    EXPECT_TRUE(did(u"align Keyword URL C11:E12 -4108"_s));
    EXPECT_TRUE(did(u"colour Keyword URL A13:E13 61c4f3"_s));
    EXPECT_TRUE(did(u"merge Keyword URL B14:I14"_s));
    EXPECT_TRUE(did(u"merge Keyword URL B16:H16"_s));
    EXPECT_EQ(cell(KeywordUrl, 15, 2), u"Acme"_s);
    EXPECT_TRUE(did(u"fit Keyword URL A:E"_s));
}

TEST_F(Excel, headsTheColumnOfASingleUrlRanking)
{
    setUrls({{u"www.a.example"_s, false}});
    make();
    EXPECT_EQ(line(KeywordUrl, 10, 2, 5),
              QStringList({u"Search Term"_s, u"Counts"_s, u"Ranking"_s, QString()}));
}

TEST_F(Excel, takes154UrlsAndNoMore)
{
    const auto urls = [](int count) {
        QList<clsURL> list;
        for (int i = 0; i < count; ++i)
            list.append({u"site%1.example"_s.arg(i), false});
        return list;
    };
    setUrls(urls(154));
    make();
    EXPECT_TRUE(desktop.boxes.empty());
    EXPECT_EQ(cell(KeywordUrl, 7 + 153 + 3, 157), u"URL154"_s);
    record() = {};
    setUrls(urls(155));
    make();
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_EQ(desktop.boxes[0].text, u"Column number is over size. Please contact technical support at "_s +
                                         app.deployment.SupportEmail + u" for help."_s);
    EXPECT_TRUE(cell(KeywordUrl, 4, 2).isEmpty());
    EXPECT_EQ(cell(Summary, 5, 3), u"Demo"_s);
    EXPECT_EQ(desktop.opened.size(), 2U);
}

TEST_F(Excel, fillsTheEngineSummaryFromItsFile)
{
    setPreferenceTexts();
    setEngines({u"Finder"_s, u"Poster"_s});
    writeReportFile(u"EngineSummary.dat"_s, "[USA]\r\nEnginesKeyword;Finder;Poster\r\ntea;3;\r\n=x;;12\r\n"
                                            "[Asia]\r\nEnginesKeyword;Sousuo\r\ntea;4\r\n");
    make();
    EXPECT_TRUE(did(u"rename Sheet3 Engine Summary"_s));
    EXPECT_TRUE(did(u"merge Engine Summary A1:D1"_s));
    EXPECT_TRUE(did(u"font Engine Summary A1:D1 Arial 14 bold"_s));
    EXPECT_TRUE(did(u"height Engine Summary 2 9"_s));
    EXPECT_EQ(cell(Engines, 1, 1), u"Engine->Keyword Summary Report"_s);
    EXPECT_EQ(line(Engines, 3, 1, 2), QStringList({u"Create By:"_s, u"Ann"_s}));
    EXPECT_TRUE(did(u"link Engine Summary 3,2 http://acme.example"_s));
    EXPECT_EQ(line(Engines, 4, 1, 2), QStringList({u"Date Created:"_s, u"Sunday, November 15, 2026"_s}));
    EXPECT_EQ(line(Engines, 5, 1, 2), QStringList({u"Project Name:"_s, u"Demo"_s}));
    EXPECT_EQ(line(Engines, 6, 1, 2), QStringList({u"Web Site URLs:"_s, u"www.a.example"_s}));
    EXPECT_EQ(line(Engines, 7, 1, 2), QStringList({QString(), u"(Competitor)b.example"_s}));
    EXPECT_EQ(line(Engines, 8, 1, 2), QStringList({QString(), QString()}));
    EXPECT_EQ(line(Engines, 9, 1, 2), QStringList({u"USA"_s, QString()}));
    EXPECT_TRUE(did(u"font Engine Summary A9 ff0000"_s));
    EXPECT_EQ(line(Engines, 10, 1, 3), QStringList({u"EnginesKeyword"_s, u"Finder"_s, u"Poster"_s}));
    EXPECT_TRUE(did(u"colour Engine Summary A10:C10 61c4f3"_s));
    EXPECT_EQ(line(Engines, 11, 1, 3), QStringList({u"tea"_s, u"#3"_s, QString()}));
    EXPECT_EQ(line(Engines, 12, 1, 3), QStringList({u"=x"_s, QString(), u"#12"_s}));
    EXPECT_TRUE(did(u"align Engine Summary A10:A12 -4131"_s));
    EXPECT_TRUE(did(u"align Engine Summary B10:C12 -4108"_s));
    EXPECT_EQ(cell(Engines, 13, 1), u"Asia"_s);
    EXPECT_TRUE(did(u"colour Engine Summary A14:B14 61c4f3"_s));
    EXPECT_EQ(line(Engines, 17, 1, 2), QStringList({u"This report was generated by : "_s, u"Ann"_s}));
    EXPECT_EQ(line(Engines, 18, 1, 2), QStringList({u"on "_s, u"Sunday, November 15, 2026"_s}));
    EXPECT_EQ(line(Engines, 19, 1, 2), QStringList({u"Email:"_s, u"ann@acme.example"_s}));
    EXPECT_TRUE(did(u"link Engine Summary 19,2 mailto:ann@acme.example"_s));
    EXPECT_EQ(line(Engines, 20, 1, 2), QStringList({u"Company:"_s, u"Acme"_s}));
    EXPECT_TRUE(did(u"fit Engine Summary A:D"_s));
}

TEST_F(Excel, leavesTheEngineSheetWithoutASummary)
{
    make();
    EXPECT_FALSE(did(u"rename Sheet3 Engine Summary"_s));
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(Excel, takesHeadingsOfTheSummaryInAnyCase)
{
    writeReportFile(u"EngineSummary.dat"_s, "[USA]\r\nENGINESKEYWORD;Finder\r\ntea;3\r\n");
    make();
    EXPECT_TRUE(did(u"colour Engine Summary A10:B10 61c4f3"_s));
    EXPECT_EQ(cell(Engines, 10, 1), u"ENGINESKEYWORD"_s);
}

TEST_F(Excel, renamesTheTemplatesSheetsInAnyCase)
{
    record().sheets = {u"REPORT"_s, u"sheet2"_s, u"Sheet3"_s};
    make();
    EXPECT_TRUE(did(u"rename Report Keyword Summary"_s));
    EXPECT_TRUE(did(u"rename Sheet2 Keyword URL"_s));
}

TEST_F(Excel, leavesSheetsThatHaveTheirNamesAlready)
{
    record().sheets = {Summary, KeywordUrl, Engines};
    make();
    EXPECT_TRUE(record().steps.filter(u"rename"_s).isEmpty());
    EXPECT_TRUE(did(u"activate Keyword Summary"_s));
}

TEST_F(Excel, tellsWhenTheTemplateIsMissing)
{
    ASSERT_TRUE(QFile::remove(path(u"report.xlt"_s)));
    make();
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_EQ(desktop.boxes[0],
              (MessageBox{u"Excel Report"_s, u"Report template file '"_s + app.AppPath + MissingText}));
    EXPECT_EQ(desktop.waiting, 0);
}

TEST_F(Excel, tellsWhenTheTemplateIsNoWorkbook)
{
    writeReportFile(u"Finder.xls"_s, "old");
    record().onStep = [](const QString &) {
        throw SpreadsheetError(SpreadsheetError::NoWorkbook, u"garbage"_s);
    };
    make();
    ASSERT_EQ(desktop.boxes.size(), 1U);
    const QString workbook = app.AppPath + u"\\reports\\Demo\\Finder.xls"_s;
    EXPECT_EQ(desktop.boxes[0].text, u"The MS Excel template - "_s + workbook + u" could not be found !"_s);
    EXPECT_EQ(desktop.boxes[0].icon, MessageIcon::Critical);
    EXPECT_EQ(takeLog(), u"ConnectExcel_Error: garbage\r\nExcelFile: "_s + workbook);
    EXPECT_EQ(read(u"reports/Demo/Finder.xls"_s), "old");
}

TEST_F(Excel, tellsWhenThereIsNoSpreadsheetProgram)
{
    app.Spreadsheets = nullptr;
    make();
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_EQ(desktop.boxes[0],
              (MessageBox{
                  u"Connect Excel"_s,
                  u"Error:429-No spreadsheet program was found\r\n\r\nIf you currently have any Excel file "
                  "open, please close them and try again.\r\nYou are requested to install Microsoft Excel on "
                  "this PC before using this feature."_s,
                  MessageIcon::Exclamation, MessageButtons::Ok}));
    EXPECT_TRUE(
        takeLog().startsWith(u"ConnectExcel_Error: No spreadsheet program was found\r\nExcelFile: "_s));
    EXPECT_FALSE(hasReport(u"Finder.xls"_s));
}

TEST_F(Excel, tellsWhenTheWorkbookIsOpenElsewhere)
{
    writeReportFile(u"Finder.xls"_s, "old");
    writeReportFile(u".~lock.Finder.xls#"_s, ",me,here");
    make();
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_TRUE(desktop.boxes[0].text.startsWith(u"ExcelReport_Error: "_s));
    EXPECT_TRUE(desktop.boxes[0].text.endsWith(u"\r\n\r\nReport file is already opened by MS Excel. Please "
                                               u"close your previoues excel report file in MS "
                                               "Excel and try again."_s));
    EXPECT_EQ(desktop.boxes[0].icon, MessageIcon::Critical);
    EXPECT_EQ(read(u"reports/Demo/Finder.xls"_s), "old");
    ASSERT_TRUE(QFile::remove(path(u"reports/Demo/.~lock.Finder.xls#"_s)));
    make();
    EXPECT_EQ(read(u"reports/Demo/Finder.xls"_s), "a workbook");
}

TEST_F(Excel, takesNoProgramThatWasKilledForOneThatHasTheWorkbookOpen)
{
    writeReportFile(u"Finder.xls"_s, "old");
    const QString here = QSysInfo::machineHostName();
    writeReportFile(u".~lock.Finder.xls#"_s,
                    u"Doe\\, Ann,ann,%1,22.11.2026 05:13,file:///home/ann/profile;"_s.arg(here).toUtf8());
    QFile open(path(u"reports/Demo/Finder.xls"_s));
    ASSERT_TRUE(open.open(QIODevice::ReadOnly));
    make();
    EXPECT_EQ(read(u"reports/Demo/Finder.xls"_s), "old");
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_TRUE(desktop.boxes[0].text.contains(u"already opened"_s));
    open.close();
    make();
    EXPECT_EQ(read(u"reports/Demo/Finder.xls"_s), "a workbook");
    EXPECT_EQ(desktop.boxes.size(), 1U);
}

TEST_F(Excel, keepsTheOldWorkbookWhenTheProgramEnds)
{
    writeReportFile(u"Finder.xls"_s, "old");
    record().onStep = [](const QString &step) {
        if (step.contains(u"Keyword URL"_s))
            throw SpreadsheetError(1004, u"The spreadsheet program has ended"_s);
    };
    make();
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_EQ(desktop.boxes[0].text, u"ExcelReport_Error: The spreadsheet program has ended"_s);
    EXPECT_TRUE(takeLog().endsWith(u"ExcelReport_Error: The spreadsheet program has ended"_s));
    EXPECT_EQ(read(u"reports/Demo/Finder.xls"_s), "old");
    EXPECT_EQ(record().closed, 1);
    EXPECT_EQ(desktop.waiting, 0);
    EXPECT_TRUE(desktop.opened.empty());
}

TEST_F(Excel, keepsTheOldWorkbookWhenTheDiskIsFull)
{
    writeReportFile(u"Finder.html"_s, "makes the folder");
    const SmallDisk disk(path(u"reports/Demo"_s), 64 << 10);
    if (!disk.isThere())
        GTEST_SKIP() << "takes the right to mount a file system";
    writeReportFile(u"Finder.xls"_s, "old");
    disk.fill();
    make();
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_TRUE(desktop.boxes[0].text.startsWith(u"ExcelReport_Error: "_s));
    EXPECT_TRUE(desktop.boxes[0].text.contains(u"No space left on device"_s))
        << qPrintable(desktop.boxes[0].text);
    EXPECT_EQ(desktop.boxes[0].icon, MessageIcon::Critical);
    EXPECT_TRUE(takeLog().endsWith(desktop.boxes[0].text));
    EXPECT_EQ(read(u"reports/Demo/Finder.xls"_s), "old");
    EXPECT_EQ(QDir(path(u"reports/Demo"_s)).entryList(QDir::Files | QDir::Hidden, QDir::Name),
              QStringList({u"Finder.xls"_s, u"filler"_s}));
    EXPECT_EQ(desktop.waiting, 0);
    disk.empty();
    make();
    EXPECT_EQ(read(u"reports/Demo/Finder.xls"_s), "a workbook");
}

TEST_F(Excel, keepsTheOldWorkbookInAFolderThatIsReadOnly)
{
    writeReportFile(u"Finder.xls"_s, "old");
    ASSERT_EQ(::chmod(QFile::encodeName(path(u"reports/Demo"_s)).constData(), 0555), 0);
    EXPECT_TRUE(asOrdinaryUser(folder.path(), [&] {
        make();
        return desktop.boxes.size() == 1 && desktop.boxes[0].text.startsWith(u"ExcelReport_Error: "_s) &&
               desktop.boxes[0].text.contains(u"Permission denied"_s) &&
               desktop.boxes[0].icon == MessageIcon::Critical && takeLog().endsWith(desktop.boxes[0].text) &&
               desktop.waiting == 0 && desktop.opened.empty();
    }));
    ASSERT_EQ(::chmod(QFile::encodeName(path(u"reports/Demo"_s)).constData(), 0755), 0);
    EXPECT_EQ(read(u"reports/Demo/Finder.xls"_s), "old");
}

TEST_F(Excel, tellsWhenTheWorkbookCannotBeWritten)
{
    writeReportFile(u"Finder.xls/note.txt"_s, "a folder stands where the file belongs");
    make();
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_TRUE(desktop.boxes[0].text.startsWith(u"ExcelReport_Error: "_s));
}

} // namespace sondrel
