#include "calc/calc_workbook.h"

#include "tests/calc/workbook_reader.h"

#include <QRegularExpression>
#include <QTemporaryDir>

#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

const QString Sheet = u"Report"_s;

// One office for all of them: it takes seconds to come up.
class Calc : public testing::Test
{
protected:
    static void SetUpTestSuite() { office = new Office(std::chrono::seconds(100)); }
    static void TearDownTestSuite() { delete std::exchange(office, nullptr); }

    Calc() : workbook(*office)
    {
        source = folder.filePath(u"source.xls"_s);
        QFile::copy(sourceFile(u"data/report.xlt"_s), source);
        workbook.open(source);
        saved = folder.filePath(u"saved.xls"_s);
    }

    ReadWorkbook save()
    {
        workbook.saveAs(saved);
        return ReadWorkbook(saved);
    }

    void write(int row, int column, const QString &text) { workbook.write(Sheet, row, column, {{text}}); }

    static Office *office;
    QTemporaryDir folder;
    QString source;
    QString saved;
    CalcWorkbook workbook;
};

Office *Calc::office = nullptr;

} // namespace

TEST_F(Calc, savesAnExcel97Workbook)
{
    const ReadWorkbook read = save();
    EXPECT_EQ(read.biff(), 80);
    EXPECT_EQ(read.sheets(), QStringList({u"Report"_s, u"Sheet2"_s, u"Sheet3"_s}));
}

TEST_F(Calc, namesAndRenamesSheets)
{
    workbook.renameSheet(u"Sheet2"_s, u"Keyword URL"_s);
    EXPECT_EQ(workbook.sheets(), QStringList({u"Report"_s, u"Keyword URL"_s, u"Sheet3"_s}));
    EXPECT_THROW(workbook.renameSheet(u"Sheet3"_s, u"Keyword URL"_s), SpreadsheetError);
    EXPECT_EQ(save().sheets(), QStringList({u"Report"_s, u"Keyword URL"_s, u"Sheet3"_s}));
}

TEST_F(Calc, keepsTheActiveSheet)
{
    workbook.setActiveSheet(u"Sheet3"_s);
    const ReadWorkbook read = save();
    EXPECT_TRUE(read.sheet(u"Sheet3"_s)[u"active"].toBool());
    EXPECT_FALSE(read.sheet(u"Report"_s)[u"active"].toBool());
}

TEST_F(Calc, writesTextsAsTheyAre)
{
    const QStringList texts{u"plain"_s,      u"=1+1"_s,
                            u"+x"_s,         u"@y"_s,
                            u"-3"_s,         u"'tis"_s,
                            u"007"_s,        u"1e5"_s,
                            u"11/15/2026"_s, u"TRUE"_s,
                            u"café 绿茶"_s,  u" blanks "_s,
                            u"a;b,c\"d"_s,   u"http://e.example/"_s + QString(300, u'x'),
                            QString()};
    SpreadsheetBlock block;
    for (const QString &text : texts)
        block.push_back({text, 12.0});
    workbook.write(Sheet, 10, 2, block);
    const ReadWorkbook read = save();
    const QStringList lines = gnumericLines(saved, 0);
    for (qsizetype i = 0; i < texts.size(); ++i) {
        const QString row = QString::number(10 + i);
        EXPECT_EQ(read.text(Sheet, u'B' + row), texts[i]) << i;
        EXPECT_EQ(read.value(Sheet, u'C' + row).toDouble(), 12) << i;
        EXPECT_EQ(read.cell(Sheet, u'C' + row)[u"type"].toString(), u"number"_s) << i;
    }
    for (const QString &text : {u"=1+1"_s, u"+x"_s, u"@y"_s, u"007"_s, u"café 绿茶"_s})
        EXPECT_THAT(lines, testing::Contains(u',' + text + u",12"_s)) << qPrintable(text);
}

TEST_F(Calc, writesFormulas)
{
    workbook.write(Sheet, 10, 2, {{2.0}, {3.0}});
    workbook.writeFormula(Sheet, 12, 2, u"=SUM(B10:B11)"_s);
    EXPECT_EQ(save().value(Sheet, u"B12"_s).toDouble(), 5);
    EXPECT_THAT(gnumericLines(saved, 0), testing::Contains(u",5"_s));
}

TEST_F(Calc, writesLinks)
{
    workbook.writeLink(Sheet, 10, 2, u"http://www.site.example/a?b=c&d"_s, u"The site"_s);
    workbook.writeLink(Sheet, 11, 2, u"mailto:me@site.example"_s, u"me@site.example"_s);
    const ReadWorkbook read = save();
    EXPECT_EQ(read.text(Sheet, u"B10"_s), u"The site"_s);
    EXPECT_EQ(read.cell(Sheet, u"B10"_s)[u"link"].toString(), u"http://www.site.example/a?b=c&d"_s);
    EXPECT_EQ(read.cell(Sheet, u"B11"_s)[u"link"].toString(), u"mailto:me@site.example"_s);
    EXPECT_THAT(gnumericLines(saved, 0), testing::Contains(u",The site"_s));
}

TEST_F(Calc, clearsRemovesAndCopiesCells)
{
    workbook.write(Sheet, 10, 2, {{u"a"_s, u"b"_s}, {u"c"_s, u"d"_s}, {u"e"_s, u"f"_s}, {u"g"_s, u"h"_s}});
    workbook.copy(Sheet, u"B10:C10"_s, u"B20"_s);
    workbook.clear(Sheet, u"B10"_s);
    workbook.remove(Sheet, u"B11:C11"_s);
    const ReadWorkbook read = save();
    // The copy has moved up with what stood above it.
    EXPECT_EQ(read.text(Sheet, u"B19"_s), u"a"_s);
    EXPECT_EQ(read.text(Sheet, u"C19"_s), u"b"_s);
    EXPECT_EQ(read.text(Sheet, u"B10"_s), QString());
    EXPECT_EQ(read.text(Sheet, u"B11"_s), u"e"_s);
}

TEST_F(Calc, pastesWhatWasCopiedIntoAnotherSheet)
{
    write(10, 2, u"copied"_s);
    workbook.copy(Sheet, u"B10"_s, u"B11"_s);
    workbook.pasteSheet(u"Sheet3"_s);
    EXPECT_EQ(save().text(u"Sheet3"_s, u"A1"_s), u"copied"_s);
}

TEST_F(Calc, mergesAndAlignsCells)
{
    write(10, 2, u"text"_s);
    workbook.merge(Sheet, u"B10:D10"_s);
    workbook.setHAlignment(Sheet, u"B10:D10"_s, -4108);
    workbook.setVAlignment(Sheet, u"B10:D10"_s, -4160);
    write(11, 2, u"left"_s);
    workbook.setHAlignment(Sheet, u"B11"_s, -4131);
    workbook.shrinkToFit(Sheet, u"B11"_s);
    const ReadWorkbook read = save();
    EXPECT_THAT(read.merged(Sheet), testing::Contains(u"B10:D10"_s));
    EXPECT_EQ(read.cell(Sheet, u"B10"_s)[u"horizontal"].toString(), u"centre"_s);
    EXPECT_EQ(read.cell(Sheet, u"B10"_s)[u"vertical"].toString(), u"top"_s);
    EXPECT_EQ(read.cell(Sheet, u"B11"_s)[u"horizontal"].toString(), u"left"_s);
    EXPECT_TRUE(read.cell(Sheet, u"B11"_s)[u"shrink"].toBool());
}

TEST_F(Calc, setsHeightsWidthsAndPageBreaks)
{
    workbook.setRowHeight(Sheet, u"12"_s, 9);
    workbook.setColumnWidth(Sheet, u"B"_s, 20);
    write(10, 4, u"a text that is a good deal wider than its column"_s);
    workbook.autoFitColumns(Sheet, u"D:D"_s);
    workbook.addPageBreak(Sheet, u"A15"_s);
    write(20, 1, u"end"_s);
    const ReadWorkbook read = save();
    EXPECT_NEAR(read.sheet(Sheet)[u"heights"][u"12"].toDouble(), 9, 0.5);
    // Counted in digits of whatever stands in for the font here.
    EXPECT_NEAR(read.sheet(Sheet)[u"widths"][u"B"].toDouble(), 20, 4);
    EXPECT_GT(read.sheet(Sheet)[u"widths"][u"D"].toDouble(), 30);
    EXPECT_EQ(read.sheet(Sheet)[u"breaks"].toArray(), QJsonArray{15});
}

TEST_F(Calc, drawsBordersByEdge)
{
    workbook.setBorder(Sheet, u"B10:C11"_s, 9, 1);
    workbook.setBorderColour(Sheet, u"B10:C11"_s, 9, 0xFF0000);
    workbook.setBorder(Sheet, u"E10:F11"_s, std::nullopt, 1);
    workbook.setBorder(Sheet, u"E14"_s, 5, 1);
    const ReadWorkbook read = save();
    EXPECT_EQ(read.cell(Sheet, u"B11"_s)[u"bottom"].toInt(), 1);
    EXPECT_EQ(read.cell(Sheet, u"B11"_s)[u"bottomColour"].toString(), u"FF0000"_s);
    EXPECT_EQ(read.cell(Sheet, u"B11"_s)[u"left"].toInt(), 0);
    for (const QString &edge : {u"left"_s, u"top"_s, u"right"_s, u"bottom"_s})
        EXPECT_EQ(read.cell(Sheet, u"E10"_s)[edge].toInt(), 1) << qPrintable(edge);
    EXPECT_EQ(read.cell(Sheet, u"E14"_s)[u"diagonals"].toArray(), QJsonArray({true, false}));
}

TEST_F(Calc, setsFontsAndColoursExactly)
{
    write(10, 2, u"text"_s);
    write(11, 2, u"text"_s);
    SpreadsheetFont font;
    font.name = u"Arial"_s;
    font.size = 14;
    font.bold = true;
    font.italic = true;
    font.colour = 0xFF0000;
    font.underline = 2;
    workbook.setFont(Sheet, u"B10:B11"_s, font);
    SpreadsheetFont plain;
    plain.bold = false;
    workbook.setFont(Sheet, u"B11"_s, plain);
    workbook.setBackground(Sheet, u"B10"_s, 0x61C4F3);
    const ReadWorkbook read = save();
    QJsonObject cell = read.cell(Sheet, u"B10"_s);
    EXPECT_EQ(cell[u"font"].toString(), u"Arial"_s);
    EXPECT_EQ(cell[u"size"].toDouble(), 14);
    EXPECT_TRUE(cell[u"bold"].toBool() && cell[u"italic"].toBool());
    EXPECT_EQ(cell[u"underline"].toInt(), 1);
    EXPECT_EQ(cell[u"colour"].toString(), u"FF0000"_s);
    EXPECT_EQ(cell[u"background"].toString(), u"61C4F3"_s);
    cell = read.cell(Sheet, u"B11"_s);
    EXPECT_FALSE(cell[u"bold"].toBool());
    EXPECT_TRUE(cell[u"italic"].toBool());
    EXPECT_EQ(cell[u"size"].toDouble(), 14);
}

namespace {

// A sheet with the text box "Box 1".
class CalcShapes : public Calc
{
protected:
    CalcShapes()
    {
        const QString shapes = folder.filePath(u"shapes.xls"_s);
        office->run([&] {
            const css::uno::Reference<css::frame::XStorable> document(
                office->desktop()->loadComponentFromURL(
                    toUno(u"file://"_s + sourceFile(u"tests/calc/shapes.fods"_s)), "_blank", 0, {}),
                css::uno::UNO_QUERY_THROW);
            document->storeToURL(
                toUno(u"file://"_s + shapes),
                sequenceOf({property("FilterName", css::uno::Any(toUno(u"MS Excel 97"_s)))}));
            css::uno::Reference<css::util::XCloseable>(document, css::uno::UNO_QUERY_THROW)->close(true);
        });
        workbook.close();
        workbook.open(shapes);
    }

    // The saved workbook as Gnumeric reads it, in Gnumeric's own form.
    QString gnumeric()
    {
        workbook.saveAs(saved);
        const QString path = folder.filePath(u"saved.xml"_s);
        outputOf(u"ssconvert"_s, {u"-T"_s, u"Gnumeric_XmlIO:sax:0"_s, saved, path});
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QString::fromUtf8(file.readAll());
    }
};

} // namespace

TEST_F(CalcShapes, takeTexts)
{
    workbook.setShapeText(Sheet, u"Box 1"_s, u"=after"_s);
    const QString read = gnumeric();
    EXPECT_TRUE(read.contains(u"Label=\"=after\""_s));
    EXPECT_FALSE(read.contains(u"before"_s));
}

TEST_F(CalcShapes, areCopiedToCells)
{
    workbook.copyShape(Sheet, u"Box 1"_s, u"D20:E21"_s);
    const QString read = gnumeric();
    EXPECT_EQ(read.count(u"Label=\"before\""_s), 2);
    // In points, where the rows are as high as the font here makes them.
    static const QRegularExpression copy(u"Name=\"Box 2\"[^>]* ObjectOffset=\"([\\d.]+) ([\\d.]+) "_s);
    const QRegularExpressionMatch place = copy.match(read);
    EXPECT_NEAR(place.captured(1).toDouble(), 182, 20);
    EXPECT_NEAR(place.captured(2).toDouble(), 243, 30);
}

TEST_F(CalcShapes, arePicturesToo)
{
    const QString picture = folder.filePath(u"logo.png"_s);
    QFile file(picture);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(
        QByteArray::fromBase64("iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9"
                               "awAAAABJRU5ErkJggg=="));
    file.close();
    workbook.addPicture(Sheet, picture, {10, 10, 72, 36});
    EXPECT_TRUE(gnumeric().contains(u"SheetObjectImage"_s));
    EXPECT_THROW(workbook.addPicture(Sheet, source, {}), SpreadsheetError);
}

TEST_F(CalcShapes, arePrintedOnThePageOfTheirSheet)
{
    workbook.print(Sheet, 1);
    EXPECT_TRUE(gnumeric().contains(u"type=\"size_fit\" cols=\"1\""_s));
}

TEST_F(Calc, refusesAFileThatIsNoWorkbook)
{
    const QString path = folder.filePath(u"garbage.xls"_s);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("keyword;12\r\n") > 0);
    file.close();
    CalcWorkbook other(*office);
    try {
        other.open(path);
        FAIL() << "it was taken for a workbook";
    } catch (const SpreadsheetError &error) {
        EXPECT_EQ(error.number(), SpreadsheetError::NoWorkbook);
    }
}

TEST_F(Calc, tellsOfSheetsAndShapesThatAreNotThere)
{
    EXPECT_THROW(workbook.merge(u"Sheet9"_s, u"A1:B1"_s), SpreadsheetError);
    EXPECT_THROW(workbook.setShapeText(Sheet, u"Box 1"_s, u"text"_s), SpreadsheetError);
    EXPECT_THROW(workbook.merge(Sheet, u"nonsense"_s), SpreadsheetError);
}

TEST_F(Calc, tellsWhenItCannotSave)
{
    EXPECT_THROW(workbook.saveAs(source + u"/saved.xls"_s), SpreadsheetError);
}

TEST(CalcOffice, comesAgainAfterItWasKilled)
{
    const QTemporaryDir folder;
    const QString source = folder.filePath(u"source.xls"_s);
    QFile::copy(sourceFile(u"data/report.xlt"_s), source);
    Office office(std::chrono::seconds(100));
    {
        CalcWorkbook workbook(office);
        workbook.open(source);
        ::kill(static_cast<pid_t>(office.processId()), SIGKILL);
        EXPECT_THROW(workbook.sheets(), SpreadsheetError);
    }
    CalcWorkbook workbook(office);
    workbook.open(source);
    EXPECT_EQ(workbook.sheets().size(), 3);
}

TEST(CalcOffice, isEndedWhenItDoesNotAnswer)
{
    const QTemporaryDir folder;
    const QString source = folder.filePath(u"source.xls"_s);
    QFile::copy(sourceFile(u"data/report.xlt"_s), source);
    Office office(std::chrono::seconds(100));
    CalcWorkbook workbook(office);
    workbook.open(source);
    office.setPatience(std::chrono::milliseconds(300));
    ::kill(static_cast<pid_t>(office.processId()), SIGSTOP);
    try {
        // On a busy machine it may answer a few times before it stops.
        for (int calls = 0; calls < 10000; ++calls)
            workbook.sheets();
        FAIL() << "it has answered";
    } catch (const SpreadsheetError &error) {
        EXPECT_EQ(error.text(), u"The spreadsheet program does not answer"_s);
    }
}

} // namespace sondrel
