#include "reports/clsMaroviaExcel.h"

#include "tests/doors/recording_spreadsheet.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

const QString Sheet = u"Report"_s;

class Workbook : public testing::Test, public World
{
protected:
    Workbook() : excel(app, &spreadsheets), book(app.appFile({u"book.xls"_s}))
    {
        write(u"book.xls"_s, "bytes");
    }
    void SetUp() override
    {
        ASSERT_TRUE(excel.ConnectExcel(book, false));
        takeSteps();
    }

    QStringList takeSteps() { return std::exchange(spreadsheets.record.steps, {}); }

    RecordingSpreadsheets spreadsheets;
    clsMaroviaExcel excel;
    QString book;
};

SpreadsheetFont boldFont(bool bold)
{
    SpreadsheetFont font;
    font.bold = bold;
    return font;
}

} // namespace

TEST_F(Workbook, handsItsOperationsOn)
{
    const std::pair<std::function<void()>, const char16_t *> cases[] = {
        {[&] { excel.SetActiveSheet(Sheet); }, u"activate Report"},
        {[&] { excel.ReNameSheet(Sheet, u"New"_s); }, u"rename Report New"},
        {[&] { excel.PasteSheet(Sheet); }, u"paste Report"},
        {[&] { excel.EnterHyperlink(3, 2, u"http://a.example"_s, u"A"_s); },
         u"link Report 3,2 http://a.example"},
        {[&] { excel.EnterxlFormula(Sheet, 3, 2, u"=1+1"_s); }, u"formula Report 3,2 =1+1"},
        {[&] { excel.Enterxlmerge(Sheet, u"A1:B1"_s); }, u"merge Report A1:B1"},
        {[&] { excel.Enterxlautofit(Sheet, u"A:B"_s); }, u"fit Report A:B"},
        {[&] { excel.AutoFitAllColumns(Sheet, 53); }, u"fit Report A:BA"},
        {[&] { excel.Enterxlshrinktofit(Sheet, u"A1"_s); }, u"shrink Report A1"},
        {[&] { excel.Enterxlpagebreak(Sheet, u"A9"_s); }, u"break Report A9"},
        {[&] { excel.EnterxlHeight(Sheet, u"2"_s, 9); }, u"height Report 2 9"},
        {[&] { excel.EnterxlWidth(Sheet, u"B"_s, 20); }, u"width Report B 20"},
        {[&] { excel.EnterxlHAlignment(Sheet, u"A1"_s, -4131); }, u"align Report A1 -4131"},
        {[&] { excel.EnterxlVAlignment(Sheet, u"A1"_s, -4108); }, u"valign Report A1 -4108"},
        {[&] { excel.Enterxlborder(Sheet, u"A1"_s, 9, 1); }, u"border Report A1 9 1"},
        {[&] { excel.Enterxlborder(Sheet, u"A1"_s, std::nullopt, 1); }, u"border Report A1 0 1"},
        {[&] { excel.Enterxlbordercolor(Sheet, u"A1"_s, 9, 1, 2, 3); }, u"borderColour Report A1 9 10203"},
        {[&] { excel.SetFondColor(u"A1"_s, 3); }, u"font Report A1 ff0000"},
        {[&] { excel.Enterxlinteriorcolor(Sheet, u"A1"_s, 97, 196, 243); }, u"colour Report A1 61c4f3"},
        {[&] { excel.EnterxlFillRectangle(Sheet, u"Box"_s, u"A1:B2"_s); }, u"copyShape Report Box A1:B2"},
        {[&] { excel.Enterxlfont(Sheet, u"A1"_s, boldFont(false)); }, u"font Report A1 plain"},
        {[&] { excel.Enterxlclear(Sheet, u"A1"_s); }, u"clear Report A1"},
        {[&] { excel.Enterxldelete(Sheet, u"A1"_s); }, u"remove Report A1"},
        {[&] { excel.Enterxlcopy(Sheet, u"A1"_s, u"B1"_s); }, u"copy Report A1 B1"},
        {[&] { excel.putintextbox(Sheet, u"Box"_s, u"text"_s); }, u"shapeText Report Box text"},
        {[&] {
             excel.putpicture(Sheet, u"/logo.png"_s, {1, 2, 3, 4});
         },
         u"picture Report /logo.png 3"},
        {[&] { excel.PrintOut(Sheet, 2); }, u"print Report 2"},
    };
    for (const auto &[operation, step] : cases) {
        const int events = desktop.pendingEventRuns;
        operation();
        EXPECT_EQ(takeSteps(), QStringList(QString::fromUtf16(step)));
        EXPECT_GT(desktop.pendingEventRuns, events) << qPrintable(QString::fromUtf16(step));
    }
    EXPECT_EQ(excel.ActiveSheet(), Sheet);
}

TEST_F(Workbook, refusesAColourThatThePaletteDoesNotHave)
{
    for (const int index : {0, 57, -1})
        EXPECT_THROW(excel.SetFondColor(u"A1"_s, index), std::out_of_range) << index;
}

TEST_F(Workbook, findsSheetsInAnyCase)
{
    EXPECT_TRUE(excel.IsWorksheetExist(u"sheet2"_s));
    EXPECT_FALSE(excel.IsWorksheetExist(u"Sheet"_s));
}

TEST_F(Workbook, writesWhatIsEnteredBeforeTheNextStep)
{
    excel.Enterxldata(Sheet, 4, 3, u"c"_s);
    excel.Enterxldata(Sheet, 4, 2, u"b"_s);
    excel.Enterxlnumber(Sheet, 5, 2, u"12"_s);
    excel.Enterxlnumber(Sheet, 5, 3, u"012"_s);
    excel.Enterxldata(Sheet, 9, 2, u"apart"_s);
    EXPECT_TRUE(takeSteps().isEmpty());
    excel.Enterxlmerge(Sheet, u"A1:B1"_s);
    EXPECT_EQ(takeSteps(),
              QStringList({u"write Report 4,2 2 2"_s, u"write Report 9,2 1 1"_s, u"merge Report A1:B1"_s}));
    EXPECT_EQ(spreadsheets.record.cells[u"Report!5,2"_s], u"#12"_s);
    EXPECT_EQ(spreadsheets.record.cells[u"Report!5,3"_s], u"012"_s);
}

TEST_F(Workbook, isSavedUnderItsOwnNameAndUnderAnother)
{
    excel.Saveasxl(app.appFile({u"other.xls"_s}));
    EXPECT_EQ(read(u"other.xls"_s), "a workbook");
    EXPECT_EQ(read(u"book.xls"_s), "bytes");
    excel.Saveasxl({});
    EXPECT_EQ(read(u"book.xls"_s), "a workbook");
}

TEST_F(Workbook, isClosedWithoutASave)
{
    excel.Enterxldata(Sheet, 4, 3, u"lost"_s);
    excel.ExcelClose();
    EXPECT_TRUE(takeSteps().isEmpty());
    EXPECT_EQ(spreadsheets.record.closed, 1);
    EXPECT_EQ(desktop.resets, 1);
    EXPECT_EQ(read(u"book.xls"_s), "bytes");
}

TEST_F(Workbook, isLetGoOfWithItsInstance)
{
    {
        clsMaroviaExcel other(app, &spreadsheets);
        ASSERT_TRUE(other.ConnectExcel(book, true));
        EXPECT_TRUE(other.Visible);
    }
    EXPECT_EQ(spreadsheets.record.closed, 1);
}

TEST_F(Workbook, isNotConnectedWithoutAFile)
{
    for (const QString &missing : {QString(), app.appFile({u"nothing.xls"_s})}) {
        clsMaroviaExcel other(app, &spreadsheets);
        EXPECT_FALSE(other.ConnectExcel(missing, true));
    }
    ASSERT_EQ(desktop.boxes.size(), 2U);
    for (const MessageBox &box : desktop.boxes)
        EXPECT_EQ(box,
                  (MessageBox{u"Excel Report"_s, u"Report template file '"_s + app.AppPath +
                                                     u"\\report.xlt' is missing. Please reinstall the full "
                                                     "version and try again."_s}));
    EXPECT_EQ(takeLog(), QString());
}

TEST_F(Workbook, isNotConnectedWhileItIsLocked)
{
    write(u".~lock.book.xls#"_s, ",me,here");
    clsMaroviaExcel other(app, &spreadsheets);
    EXPECT_FALSE(other.ConnectExcel(book, true));
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_EQ(
        desktop.boxes[0],
        (MessageBox{u"Connect Excel"_s,
                    u"Error:70-The workbook is open in another program\r\n\r\nIf you currently have any "
                    "Excel file open, please close them and try again.\r\nYou are requested to install "
                    "Microsoft Excel on this PC before using this feature."_s,
                    MessageIcon::Exclamation, MessageButtons::Ok}));
    EXPECT_EQ(takeLog(),
              u"ConnectExcel_Error: The workbook is open in another program\r\nExcelFile: "_s + book);
    EXPECT_EQ(desktop.waiting, 0);
    EXPECT_TRUE(takeSteps().isEmpty());
}

} // namespace sondrel
