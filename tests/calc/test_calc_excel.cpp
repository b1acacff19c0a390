// Every operation of a workbook, in the real spreadsheet program, as two others read what is saved.
#include "reports/clsMaroviaExcel.h"

#include "reports/column_letters.h"
#include "tests/calc/own_office.h"
#include "tests/calc/workbook_reader.h"
#include "tests/support/world.h"

#include <QDir>

#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

const QString Sheet = u"Report"_s;

class ExcelOperations : public testing::Test, public World
{
protected:
    static void SetUpTestSuite() { own = new OwnOffice; }
    static void TearDownTestSuite() { delete std::exchange(own, nullptr); }

    ExcelOperations() : excel(app, own), book(app.appFile({u"book.xls"_s}))
    {
        QFile file(sourceFile(u"data/report.xlt"_s));
        if (file.open(QIODevice::ReadOnly))
            write(u"book.xls"_s, file.readAll());
    }
    void SetUp() override { ASSERT_TRUE(excel.ConnectExcel(book, false)); }

    // What both see of the saved workbook.
    void expectRead(const std::function<void(const ReadWorkbook &)> &expectations)
    {
        excel.Saveasxl(app.appFile({u"saved.xls"_s}));
        for (const Reader reader : {Reader::Xlrd, Reader::Gnumeric}) {
            SCOPED_TRACE(reader == Reader::Xlrd ? "xlrd" : "Gnumeric");
            expectations(ReadWorkbook(path(u"saved.xls"_s), reader));
        }
    }
    void enter(int row, int column, const QString &text) { excel.Enterxldata(Sheet, row, column, text); }

    static OwnOffice *own;
    clsMaroviaExcel excel;
    QString book;
};

OwnOffice *ExcelOperations::own = nullptr;

} // namespace

TEST_F(ExcelOperations, activateASheet)
{
    excel.SetActiveSheet(u"Sheet3"_s);
    EXPECT_EQ(excel.ActiveSheet(), u"Sheet3"_s);
    expectRead([](const ReadWorkbook &read) {
        EXPECT_TRUE(read.sheet(u"Sheet3"_s)[u"active"].toBool());
        EXPECT_FALSE(read.sheet(Sheet)[u"active"].toBool());
    });
}

TEST_F(ExcelOperations, listFindAndRenameSheets)
{
    EXPECT_EQ(excel.GetWorkSheets(), QStringList({Sheet, u"Sheet2"_s, u"Sheet3"_s}));
    EXPECT_TRUE(excel.IsWorksheetExist(u"Sheet2"_s));
    EXPECT_FALSE(excel.IsWorksheetExist(u"Keyword URL"_s));
    excel.ReNameSheet(u"Sheet2"_s, u"Keyword URL"_s);
    EXPECT_TRUE(excel.IsWorksheetExist(u"Keyword URL"_s));
    expectRead([](const ReadWorkbook &read) {
        EXPECT_EQ(read.sheets(), QStringList({Sheet, u"Keyword URL"_s, u"Sheet3"_s}));
    });
}

TEST_F(ExcelOperations, enterTextsAndNumbers)
{
    const QStringList texts{u"=1+1"_s, u"+x"_s,    u"@y"_s,        u"-3"_s,
                            u"007"_s,  u"1,240"_s, u"café 绿茶"_s, u"2005"_s};
    for (qsizetype i = 0; i < texts.size(); ++i)
        enter(10 + static_cast<int>(i), 2, texts[i]);
    excel.Enterxlnumber(Sheet, 10, 4, u"12"_s);
    excel.Enterxlnumber(Sheet, 11, 4, u"12+"_s);
    expectRead([&](const ReadWorkbook &read) {
        for (qsizetype i = 0; i < texts.size(); ++i)
            EXPECT_EQ(read.text(Sheet, u'B' + QString::number(10 + i)), texts[i]);
        EXPECT_EQ(read.value(Sheet, u"D10"_s), QJsonValue(12.0));
        EXPECT_EQ(read.text(Sheet, u"D11"_s), u"12+"_s);
    });
}

TEST_F(ExcelOperations, enterHyperlinksOnTheActiveSheet)
{
    excel.SetActiveSheet(u"Sheet3"_s);
    excel.EnterHyperlink(10, 2, u"http://www.site.example/a?b=c&d"_s, u"The site"_s);
    excel.EnterHyperlink(11, 2, u"mailto:me@site.example"_s, u"me@site.example"_s);
    expectRead([](const ReadWorkbook &read) {
        EXPECT_EQ(read.text(u"Sheet3"_s, u"B10"_s), u"The site"_s);
        EXPECT_EQ(read.cell(u"Sheet3"_s, u"B10"_s)[u"link"].toString(), u"http://www.site.example/a?b=c&d"_s);
        EXPECT_EQ(read.text(u"Sheet3"_s, u"B11"_s), u"me@site.example"_s);
        EXPECT_EQ(read.cell(u"Sheet3"_s, u"B11"_s)[u"link"].toString(), u"mailto:me@site.example"_s);
    });
}

TEST_F(ExcelOperations, enterFormulas)
{
    excel.Enterxlnumber(Sheet, 10, 2, u"2"_s);
    excel.Enterxlnumber(Sheet, 11, 2, u"3"_s);
    excel.EnterxlFormula(Sheet, 12, 2, u"=SUM(B10:B11)"_s);
    excel.Saveasxl(app.appFile({u"saved.xls"_s}));
    EXPECT_EQ(ReadWorkbook(path(u"saved.xls"_s)).value(Sheet, u"B12"_s), QJsonValue(5.0));
    EXPECT_EQ(ReadWorkbook(path(u"saved.xls"_s), Reader::Gnumeric).text(Sheet, u"B12"_s), u"=sum(B10:B11)"_s);
    EXPECT_THAT(gnumericLines(path(u"saved.xls"_s), 0),
                testing::Contains(testing::ResultOf(
                    [](const QString &line) { return line.startsWith(u",5,"_s) || line == u",5"_s; }, true)));
}

TEST_F(ExcelOperations, mergeAlignAndShrinkCells)
{
    enter(10, 2, u"text"_s);
    excel.Enterxlmerge(Sheet, u"B10:D10"_s);
    excel.EnterxlHAlignment(Sheet, u"B10:D10"_s, -4108);
    excel.EnterxlVAlignment(Sheet, u"B10:D10"_s, -4160);
    enter(11, 2, u"left"_s);
    excel.EnterxlHAlignment(Sheet, u"B11"_s, -4131);
    excel.Enterxlshrinktofit(Sheet, u"B11"_s);
    expectRead([](const ReadWorkbook &read) {
        EXPECT_THAT(read.merged(Sheet), testing::Contains(u"B10:D10"_s));
        EXPECT_EQ(read.cell(Sheet, u"B10"_s)[u"horizontal"].toString(), u"centre"_s);
        EXPECT_EQ(read.cell(Sheet, u"B10"_s)[u"vertical"].toString(), u"top"_s);
        EXPECT_FALSE(read.cell(Sheet, u"B10"_s)[u"shrink"].toBool());
        EXPECT_EQ(read.cell(Sheet, u"B11"_s)[u"horizontal"].toString(), u"left"_s);
        EXPECT_TRUE(read.cell(Sheet, u"B11"_s)[u"shrink"].toBool());
    });
}

TEST_F(ExcelOperations, fitColumnsToTheirTexts)
{
    enter(10, 2, u"a text that is a good deal wider than its column"_s);
    enter(10, 4, u"a text that is a good deal wider than its column"_s);
    enter(10, 5, u"a text that is a good deal wider than its column"_s);
    excel.Enterxlautofit(Sheet, u"D:D"_s);
    excel.AutoFitAllColumns(Sheet, 2);
    expectRead([](const ReadWorkbook &read) {
        const QJsonObject widths = read.sheet(Sheet)[u"widths"].toObject();
        EXPECT_GT(widths[u"D"].toDouble(), 3 * widths[u"E"].toDouble());
        EXPECT_NEAR(widths[u"B"].toDouble(), widths[u"D"].toDouble(), 1);
    });
}

TEST_F(ExcelOperations, setHeightsWidthsAndPageBreaks)
{
    excel.EnterxlHeight(Sheet, u"12"_s, 9);
    excel.EnterxlWidth(Sheet, u"B"_s, 40);
    excel.EnterxlWidth(Sheet, u"C:D"_s, 20);
    excel.Enterxlpagebreak(Sheet, u"A15"_s);
    enter(20, 1, u"end"_s);
    expectRead([](const ReadWorkbook &read) {
        const QJsonObject sheet = read.sheet(Sheet);
        EXPECT_NEAR(sheet[u"heights"][u"12"].toDouble(), 9, 0.5);
        // Each in a measure of its own.
        EXPECT_NEAR(sheet[u"widths"][u"B"].toDouble() / sheet[u"widths"][u"D"].toDouble(), 285.0 / 145, 0.1);
        EXPECT_EQ(sheet[u"widths"][u"C"].toDouble(), sheet[u"widths"][u"D"].toDouble());
    });
    EXPECT_EQ(ReadWorkbook(path(u"saved.xls"_s)).sheet(Sheet)[u"breaks"].toArray(), QJsonArray{15});
}

TEST_F(ExcelOperations, drawBordersByEdge)
{
    excel.Enterxlborder(Sheet, u"B10:C11"_s, 9, 1);
    excel.Enterxlbordercolor(Sheet, u"B10:C11"_s, 9, 255, 0, 0);
    excel.Enterxlborder(Sheet, u"E10:F11"_s, std::nullopt, 1);
    excel.Enterxlbordercolor(Sheet, u"E10:F11"_s, std::nullopt, 0, 0, 255);
    expectRead([](const ReadWorkbook &read) {
        const QJsonObject one = read.cell(Sheet, u"B11"_s);
        EXPECT_EQ(one[u"bottom"].toInt(), 1);
        EXPECT_EQ(one[u"bottomColour"].toString(), u"FF0000"_s);
        EXPECT_EQ(one[u"left"].toInt(), 0);
        EXPECT_EQ(read.cell(Sheet, u"B10"_s)[u"top"].toInt(), 0);
        for (const QString &edge : {u"left"_s, u"top"_s, u"right"_s, u"bottom"_s}) {
            EXPECT_EQ(read.cell(Sheet, u"E10"_s)[edge].toInt(), 1) << qPrintable(edge);
            EXPECT_EQ(read.cell(Sheet, u"E10"_s)[edge + u"Colour"_s].toString(), u"0000FF"_s)
                << qPrintable(edge);
        }
    });
}

TEST_F(ExcelOperations, setFontsAndColours)
{
    enter(10, 2, u"all"_s);
    enter(11, 2, u"one less"_s);
    enter(12, 2, u"red"_s);
    SpreadsheetFont font;
    font.name = u"Arial"_s;
    font.size = 14;
    font.bold = true;
    font.italic = true;
    font.colour = 0x0000FF;
    font.underline = 2;
    excel.Enterxlfont(Sheet, u"B10:B11"_s, font);
    SpreadsheetFont plain;
    plain.bold = false;
    excel.Enterxlfont(Sheet, u"B11"_s, plain);
    excel.Enterxlinteriorcolor(Sheet, u"B10"_s, 97, 196, 243);
    excel.SetActiveSheet(Sheet);
    excel.SetFondColor(u"B12"_s, 3);
    expectRead([](const ReadWorkbook &read) {
        for (const QString &place : {u"B10"_s, u"B11"_s}) {
            const QJsonObject cell = read.cell(Sheet, place);
            EXPECT_EQ(cell[u"bold"].toBool(), place == u"B10"_s);
            EXPECT_EQ(cell[u"font"].toString(), u"Arial"_s);
            EXPECT_EQ(cell[u"size"].toDouble(), 14);
            EXPECT_TRUE(cell[u"italic"].toBool());
            EXPECT_EQ(cell[u"underline"].toInt(), 1);
            EXPECT_EQ(cell[u"colour"].toString(), u"0000FF"_s);
        }
        EXPECT_EQ(read.cell(Sheet, u"B10"_s)[u"background"].toString(), u"61C4F3"_s);
        EXPECT_EQ(read.cell(Sheet, u"B12"_s)[u"colour"].toString(), u"FF0000"_s);
    });
}

TEST_F(ExcelOperations, clearCopyPasteAndDeleteCells)
{
    enter(10, 2, u"a"_s);
    enter(10, 3, u"b"_s);
    enter(11, 2, u"c"_s);
    enter(12, 2, u"d"_s);
    excel.Enterxlcopy(Sheet, u"B10:C10"_s, u"B20"_s);
    excel.PasteSheet(u"Sheet3"_s);
    excel.Enterxlclear(Sheet, u"B10:C10"_s);
    excel.Enterxldelete(Sheet, u"B11:C11"_s);
    expectRead([](const ReadWorkbook &read) {
        EXPECT_EQ(read.text(Sheet, u"B10"_s), QString());
        EXPECT_EQ(read.text(Sheet, u"B11"_s), u"d"_s);
        EXPECT_EQ(read.text(Sheet, u"B19"_s), u"a"_s); // has moved up with the rest
        EXPECT_EQ(read.text(Sheet, u"C19"_s), u"b"_s);
        EXPECT_EQ(read.text(u"Sheet3"_s, u"A1"_s), u"a"_s);
        EXPECT_EQ(read.text(u"Sheet3"_s, u"B1"_s), u"b"_s);
    });
}

TEST_F(ExcelOperations, printCopiesOfASheetFittedToThePage)
{
    // What takes the place of the system's printer.
    write(u"bin/lpr"_s, "#!/bin/sh\ncat >\"${0%/*}/$$.pdf\"\n");
    ASSERT_TRUE(
        QFile::setPermissions(path(u"bin/lpr"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    const QByteArray usual = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(path(u"bin"_s)) + ':' + usual);
    qputenv("SAL_DISABLE_CUPS", "1");
    OwnOffice office;
    clsMaroviaExcel printing(app, &office);
    ASSERT_TRUE(printing.ConnectExcel(book, false));
    qputenv("PATH", usual);
    qunsetenv("SAL_DISABLE_CUPS");
    printing.Enterxldata(Sheet, 10, 2, u"text"_s);
    printing.PrintOut(Sheet, 2);
    printing.Saveasxl(app.appFile({u"saved.xls"_s}));
    printing.ExcelClose();
    const QFileInfoList printed = QDir(path(u"bin"_s)).entryInfoList({u"*.pdf"_s}, QDir::Files);
    EXPECT_EQ(printed.size(), 2);
    for (const QFileInfo &copy : printed)
        EXPECT_TRUE(read(u"bin/"_s + copy.fileName()).startsWith("%PDF"));
    EXPECT_EQ(ReadWorkbook(path(u"saved.xls"_s), Reader::Gnumeric).sheet(Sheet)[u"fit"].toArray(),
              (QJsonArray{u"size_fit"_s, u"1"_s, u"0"_s}));
}

TEST_F(ExcelOperations, saveUnderTheirOwnNameAndUnderAnother)
{
    enter(10, 2, u"first"_s);
    excel.Saveasxl(app.appFile({u"other.xls"_s}));
    EXPECT_EQ(ReadWorkbook(path(u"book.xls"_s)).text(Sheet, u"B10"_s), QString());
    enter(10, 2, u"second"_s);
    excel.Saveasxl({});
    EXPECT_EQ(ReadWorkbook(path(u"other.xls"_s)).text(Sheet, u"B10"_s), u"first"_s);
    EXPECT_EQ(ReadWorkbook(path(u"book.xls"_s)).text(Sheet, u"B10"_s), u"second"_s);
}

TEST_F(ExcelOperations, showTheWorkbookInTheDesktopsProgram)
{
    enter(10, 2, u"shown"_s);
    excel.ExcelPreview();
    ASSERT_EQ(desktop.opened.size(), 1U);
    EXPECT_EQ(desktop.opened[0].first, path(u"book.xls"_s));
    EXPECT_EQ(ReadWorkbook(path(u"book.xls"_s)).text(Sheet, u"B10"_s), u"shown"_s);
}

TEST_F(ExcelOperations, closeWithoutSaving)
{
    const QByteArray before = read(u"book.xls"_s);
    enter(10, 2, u"lost"_s);
    excel.SetActiveSheet(u"Sheet2"_s);
    excel.ExcelClose();
    EXPECT_EQ(read(u"book.xls"_s), before);
    EXPECT_EQ(desktop.resets, 1);
    // The program goes on for the others.
    clsMaroviaExcel other(app, own);
    EXPECT_TRUE(other.ConnectExcel(book, false));
    EXPECT_EQ(other.GetWorkSheets().size(), 3);
}

namespace {

// A sheet with the text box "Box 1".
class ExcelShapes : public ExcelOperations
{
protected:
    void SetUp() override
    {
        const QString shapes = path(u"book.xls"_s);
        own->office.run([&] {
            const css::uno::Reference<css::frame::XStorable> document(
                own->office.desktop()->loadComponentFromURL(
                    toUno(u"file://"_s + sourceFile(u"tests/calc/shapes.fods"_s)), "_blank", 0, {}),
                css::uno::UNO_QUERY_THROW);
            document->storeToURL(
                toUno(u"file://"_s + shapes),
                sequenceOf({property("FilterName", css::uno::Any(toUno(u"MS Excel 97"_s)))}));
            css::uno::Reference<css::util::XCloseable>(document, css::uno::UNO_QUERY_THROW)->close(true);
        });
        ExcelOperations::SetUp();
    }
    QJsonArray objects()
    {
        excel.Saveasxl(app.appFile({u"saved.xls"_s}));
        return ReadWorkbook(path(u"saved.xls"_s), Reader::Gnumeric).sheet(Sheet)[u"objects"].toArray();
    }
};

} // namespace

TEST_F(ExcelShapes, takeTexts)
{
    excel.putintextbox(Sheet, u"Box 1"_s, u"=after"_s);
    const QJsonArray read = objects();
    ASSERT_EQ(read.size(), 1);
    EXPECT_EQ(read[0][u"text"].toString(), u"=after"_s);
}

TEST_F(ExcelShapes, areCopiedToCells)
{
    excel.EnterxlFillRectangle(Sheet, u"Box 1"_s, u"D20:E21"_s);
    const QJsonArray read = objects();
    ASSERT_EQ(read.size(), 2);
    EXPECT_EQ(read[1][u"text"].toString(), u"before"_s);
    EXPECT_GT(read[1][u"place"][1].toDouble(), read[0][u"place"][1].toDouble());
}

TEST_F(ExcelShapes, arePicturesToo)
{
    write(u"logo.png"_s, QByteArray::fromBase64(
                             "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9"
                             "awAAAABJRU5ErkJggg=="));
    excel.putpicture(Sheet, app.appFile({u"logo.png"_s}), {10, 10, 72, 36});
    const QJsonArray read = objects();
    ASSERT_EQ(read.size(), 2);
    EXPECT_EQ(read[1][u"kind"].toString(), u"SheetObjectImage"_s);
}

namespace {

class ExcelConnection : public ExcelOperations
{
protected:
    void SetUp() override {}
};

} // namespace

TEST_F(ExcelConnection, needsAFile)
{
    for (const QString &missing : {QString(), app.appFile({u"nothing.xls"_s})})
        EXPECT_FALSE(excel.ConnectExcel(missing, true));
    ASSERT_EQ(desktop.boxes.size(), 2U);
    for (const MessageBox &box : desktop.boxes)
        EXPECT_EQ(box,
                  (MessageBox{
                      u"Excel Report"_s,
                      u"Report template file '"_s + app.AppPath +
                          u"\\report.xlt' is missing. Please reinstall the full version and try again."_s}));
    EXPECT_EQ(takeLog(), QString());
}

TEST_F(ExcelConnection, isRefusedWhileAnotherProgramHasTheWorkbookOpen)
{
    OwnOffice other;
    const std::unique_ptr<Spreadsheet> open = other.create();
    open->open(path(u"book.xls"_s));
    EXPECT_FALSE(excel.ConnectExcel(book, true));
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_EQ(desktop.boxes[0],
              (MessageBox{
                  u"Connect Excel"_s,
                  u"Error:70-The workbook is open in another program\r\n\r\nIf you currently have any Excel "
                  "file open, please close them and try again.\r\nYou are requested to install Microsoft "
                  "Excel on this PC before using this feature."_s,
                  MessageIcon::Exclamation, MessageButtons::Ok}));
    EXPECT_EQ(takeLog(),
              u"ConnectExcel_Error: The workbook is open in another program\r\nExcelFile: "_s + book);
    EXPECT_EQ(desktop.waiting, 0);
    open->close();
    EXPECT_TRUE(excel.ConnectExcel(book, true));
    EXPECT_TRUE(excel.Visible);
}

TEST_F(ExcelConnection, isRefusedByAFileThatIsNoWorkbook)
{
    write(u"book.xls"_s, "keyword;12\r\n");
    EXPECT_FALSE(excel.ConnectExcel(book, true));
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_EQ(desktop.boxes[0], (MessageBox{app.deployment.Title,
                                            u"The MS Excel template - "_s + book + u" could not be found !"_s,
                                            MessageIcon::Critical, MessageButtons::Ok}));
    EXPECT_TRUE(takeLog().startsWith(u"ConnectExcel_Error: "_s));
    EXPECT_EQ(desktop.waiting, 0);
}

} // namespace sondrel
