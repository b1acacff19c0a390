// What goes wrong while the real spreadsheet program makes a report.
#include "reports/excel_report.h"
#include "tests/calc/own_office.h"
#include "tests/calc/workbook_reader.h"
#include "tests/reports/report_world.h"
#include "tests/support/small_disk.h"

#include <QTimer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr int FirstSheet = 1; // steps of the progress
constexpr int SecondSheet = 2;

// Has an older workbook, which says "old".
class CalcFailures : public testing::Test, public ReportWorld
{
protected:
    static void SetUpTestSuite() { own = new OwnOffice; }
    static void TearDownTestSuite() { delete std::exchange(own, nullptr); }

    CalcFailures()
    {
        app.Spreadsheets = own;
        QFile file(sourceFile(u"data/report.xlt"_s));
        if (file.open(QIODevice::ReadOnly))
            write(u"report.xlt"_s, file.readAll());
        writeReportFile(u"Finder.xls"_s, "old");
        add(u"tea"_s);
    }

    void add(const QString &keyword)
    {
        grid.push_back(
            {keyword, u"3"_s, u"1"_s, u"5"_s, u"+2"_s, u"http://www.site.example/"_s, u"11/15/2026"_s});
        keywords.Add(row(keyword, u"3"_s, u"http://www.site.example/"_s, u"240"_s), keyword);
    }
    void make() { ExcelReport(app, {u"Demo"_s, u"Finder"_s, account, keywords, grid}, status); }

    // Something that happens when the report comes to a step.
    void at(int step, const std::function<void()> &event)
    {
        status.progress = [step, event](int value, int) {
            if (value == step)
                event();
        };
    }
    static void signalOffice(int number) { ::kill(static_cast<pid_t>(own->office.processId()), number); }

    // The told box and log of a report that has failed, and the old workbook whole.
    void expectFailure(const QString &text)
    {
        ASSERT_EQ(desktop.boxes.size(), 1U);
        EXPECT_EQ(desktop.boxes[0].text, u"ExcelReport_Error: "_s + text);
        EXPECT_EQ(desktop.boxes[0].icon, MessageIcon::Critical);
        EXPECT_TRUE(takeLog().endsWith(u"ExcelReport_Error: "_s + text));
        EXPECT_EQ(read(u"reports/Demo/Finder.xls"_s), "old");
        EXPECT_EQ(desktop.waiting, 0);
        EXPECT_TRUE(desktop.opened.empty());
        desktop.boxes.clear();
    }
    // The next report is made as if nothing had been.
    void expectNextReport()
    {
        status.progress = {};
        make();
        EXPECT_TRUE(desktop.boxes.empty());
        EXPECT_EQ(ReadWorkbook(path(u"reports/Demo/Finder.xls"_s)).sheets().size(), 3);
    }

    static OwnOffice *own;
    Collection<clsKeyword> keywords;
    std::vector<GridCells> grid;
};

OwnOffice *CalcFailures::own = nullptr;

} // namespace

TEST_F(CalcFailures, anOfficeKilledOnTheFirstSheetIsNotStartedAgain)
{
    own->office.run([] {});
    const int starts = own->office.starts();
    at(FirstSheet, [] { signalOffice(SIGKILL); });
    make();
    expectFailure(u"The spreadsheet program has ended"_s);
    EXPECT_EQ(own->office.starts(), starts);
    expectNextReport();
    EXPECT_EQ(own->office.starts(), starts + 1);
}

TEST_F(CalcFailures, anOfficeKilledInTheMiddleEndsTheReport)
{
    at(SecondSheet, [] { signalOffice(SIGKILL); });
    make();
    expectFailure(u"The spreadsheet program has ended"_s);
    expectNextReport();
}

TEST_F(CalcFailures, anOfficeThatNeverAnswersIsGivenUpWhileTheWindowLives)
{
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&ticks] { ++ticks; });
    at(SecondSheet, [&] {
        own->office.setPatience(std::chrono::milliseconds(500));
        signalOffice(SIGSTOP);
        timer.start(10);
    });
    make();
    EXPECT_GT(ticks, 5);
    expectFailure(u"The spreadsheet program does not answer"_s);
    own->office.setPatience(std::chrono::seconds(100));
    expectNextReport();
}

TEST_F(CalcFailures, aWorkbookThatIsOpenInTheOfficeIsLeftAlone)
{
    make();
    const QByteArray first = read(u"reports/Demo/Finder.xls"_s);
    OwnOffice users;
    const std::unique_ptr<Spreadsheet> open = users.create();
    open->open(path(u"reports/Demo/Finder.xls"_s));
    make();
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_TRUE(desktop.boxes[0].text.startsWith(u"ExcelReport_Error: "_s));
    EXPECT_TRUE(desktop.boxes[0].text.endsWith(u"\r\n\r\nReport file is already opened by MS Excel. Please "
                                               u"close your previoues excel report file in MS "
                                               "Excel and try again."_s));
    EXPECT_EQ(read(u"reports/Demo/Finder.xls"_s), first);
    open->close();
    desktop.boxes.clear();
    add(u"coffee"_s);
    expectNextReport();
    EXPECT_NE(read(u"reports/Demo/Finder.xls"_s), first);
}

TEST_F(CalcFailures, aDamagedTemplateIsRefused)
{
    const QByteArray whole = read(u"report.xlt"_s);
    const std::pair<const char *, QByteArray> damages[] = {
        {"empty", {}},
        {"a text", "keyword;12\r\n"},
        {"a page", "<html><body><table><tr><td>1</td></tr></table></body></html>"},
        {"another kind of file", "PK\x03\x04 and so on"},
        {"the mark alone", whole.first(8)},
        {"cut off in its head", whole.first(300)},
        {"cut off in its sheets", whole.first(whole.size() / 2)},
        {"zeros inside", whole.first(512) + QByteArray(whole.size() - 512, '\0')},
    };
    for (const auto &[name, bytes] : damages) {
        SCOPED_TRACE(name);
        write(u"report.xlt"_s, bytes);
        desktop.boxes.clear();
        make();
        ASSERT_EQ(desktop.boxes.size(), 1U);
        const MessageBox &box = desktop.boxes[0];
        EXPECT_TRUE(box.text.startsWith(u"The MS Excel template - "_s) ||
                    box.text.startsWith(u"ExcelReport_Error: "_s))
            << qPrintable(box.text);
        EXPECT_EQ(box.icon, MessageIcon::Critical);
        EXPECT_TRUE(takeLog().contains(u"_Error: "_s));
        EXPECT_EQ(read(u"reports/Demo/Finder.xls"_s), "old");
        EXPECT_EQ(desktop.waiting, 0);
    }
    write(u"report.xlt"_s, whole);
    desktop.boxes.clear();
    expectNextReport();
}

TEST_F(CalcFailures, aFullDiskBehindTheOfficeEndsTheReport)
{
    const QByteArray usual = qgetenv("TMPDIR");
    const QString temporary = folder.filePath(u"temporary"_s);
    ASSERT_TRUE(QDir().mkpath(temporary));
    const SmallDisk disk(temporary, 4 << 20);
    if (!disk.isThere())
        GTEST_SKIP() << "takes the right to mount a file system";
    // One that sees the disk, with files of its own elsewhere.
    OwnOffice other;
    app.Spreadsheets = &other;
    other.office.run([] {});
    qputenv("TMPDIR", QFile::encodeName(temporary));
    at(SecondSheet, [&] { disk.fill(); });
    make();
    if (usual.isNull())
        qunsetenv("TMPDIR");
    else
        qputenv("TMPDIR", usual);
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_TRUE(desktop.boxes[0].text.startsWith(u"ExcelReport_Error: "_s));
    const QString text = desktop.boxes[0].text.mid(19);
    expectFailure(text);
    EXPECT_FALSE(text.isEmpty());
    expectNextReport();
}

} // namespace sondrel
