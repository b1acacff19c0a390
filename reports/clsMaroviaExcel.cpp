#include "reports/clsMaroviaExcel.h"

#include "reports/column_letters.h"
#include "reports/workbook_lock.h"

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// The colours that workbooks number from 1.
constexpr std::array<int, 56> Palette{
    0x000000, 0xFFFFFF, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00, 0xFF00FF, 0x00FFFF, 0x800000, 0x008000,
    0x000080, 0x808000, 0x800080, 0x008080, 0xC0C0C0, 0x808080, 0x9999FF, 0x993366, 0xFFFFCC, 0xCCFFFF,
    0x660066, 0xFF8080, 0x0066CC, 0xCCCCFF, 0x000080, 0xFF00FF, 0xFFFF00, 0x00FFFF, 0x800080, 0x800000,
    0x008080, 0x0000FF, 0x00CCFF, 0xCCFFFF, 0xCCFFCC, 0xFFFF99, 0x99CCFF, 0xFF99CC, 0xCC99FF, 0xFFCC99,
    0x3366FF, 0x33CCCC, 0x99CC00, 0xFFCC00, 0xFF9900, 0xFF6600, 0x666699, 0x969696, 0x003366, 0x339966,
    0x003300, 0x333300, 0x993300, 0x993366, 0x333399, 0x333333};

constexpr int NotInstalled = 429; // what automation has always said of a program that is not there
constexpr int Locked = 70;

int colourOf(int red, int green, int blue)
{
    return (red << 16) | (green << 8) | blue;
}

// Digits that survive as a number: no leading zeros, no more than a double holds.
bool isPlainNumber(QStringView text)
{
    constexpr qsizetype MostDigits = 15;
    if (text.isEmpty() || text.size() > MostDigits || (text.size() > 1 && text.front() == u'0'))
        return false;
    return std::all_of(text.begin(), text.end(), [](QChar unit) { return unit >= u'0' && unit <= u'9'; });
}

} // namespace

QString missingTemplateText(const ApplicationContext &app)
{
    return u"Report template file '"_s + app.AppPath +
           u"\\report.xlt' is missing. Please reinstall the full version and try again."_s;
}

clsMaroviaExcel::clsMaroviaExcel(ApplicationContext &app, SpreadsheetFactory *spreadsheets)
    : m_app(app), m_factory(spreadsheets)
{
}

clsMaroviaExcel::~clsMaroviaExcel()
{
    if (m_workbook)
        m_workbook->close();
}

bool clsMaroviaExcel::ConnectExcel(const QString &path, bool showWindow, const QString &source)
{
    const QString from = source.isEmpty() ? path : source;
    if (from.isEmpty() || !m_app.files.fileExists(from)) {
        m_app.desktop.showMessage({u"Excel Report"_s, missingTemplateText(m_app)});
        return false;
    }
    try {
        const WaitCursor wait(m_app.desktop);
        m_path = path;
        if (isWorkbookOpenElsewhere(m_app, path))
            throw SpreadsheetError(Locked, u"The workbook is open in another program"_s);
        bind(from);
        Visible = showWindow;
        return true;
    } catch (const std::exception &error) {
        m_workbook.reset();
        m_app.desktop.resetPointer();
        tellFailure(path, error);
        return false;
    }
}

void clsMaroviaExcel::bind(const QString &source)
{
    if (!m_factory)
        throw SpreadsheetError(NotInstalled, u"No spreadsheet program was found"_s);
    if (!m_folder.isValid())
        throw Failure(m_folder.errorString());
    const QString copy = m_folder.filePath(u"workbook.xls"_s);
    m_app.files.writeUnflushed(copy, m_app.files.readAll(source));
    m_workbook = m_factory->create();
    m_workbook->open(copy);
    m_app.desktop.runPendingEvents();
}

void clsMaroviaExcel::tellFailure(const QString &path, const std::exception &error)
{
    const auto *failure = dynamic_cast<const SpreadsheetError *>(&error);
    const QString text = failure ? failure->text() : errorText(error);
    m_app.WriteErrorLog(u"ConnectExcel_Error: "_s + text + u"\r\nExcelFile: "_s + path);
    if (failure && failure->number() == SpreadsheetError::NoWorkbook) {
        m_app.desktop.showMessage({m_app.deployment.Title,
                                   u"The MS Excel template - "_s + path + u" could not be found !"_s,
                                   MessageIcon::Critical, MessageButtons::Ok});
        return;
    }
    m_app.desktop.showMessage(
        {u"Connect Excel"_s,
         u"Error:"_s + QString::number(failure ? failure->number() : 0) + u'-' + text +
             u"\r\n\r\nIf you currently have any Excel file open, please close them and try again.\r\n"
             "You are requested to install Microsoft Excel on this PC before using this feature."_s,
         MessageIcon::Exclamation, MessageButtons::Ok});
}

// A step of the program behind the door, on what has been entered so far.
template <typename Step>
void clsMaroviaExcel::give(Step &&step)
{
    writeCells();
    step(*m_workbook);
    m_app.desktop.runPendingEvents();
}

void clsMaroviaExcel::SetActiveSheet(const QString &sheet)
{
    give([&](Spreadsheet &workbook) { workbook.setActiveSheet(sheet); });
    m_activeSheet = sheet;
}

QStringList clsMaroviaExcel::GetWorkSheets()
{
    QStringList names;
    give([&](Spreadsheet &workbook) { names = workbook.sheets(); });
    return names;
}

bool clsMaroviaExcel::IsWorksheetExist(const QString &sheet)
{
    return GetWorkSheets().contains(sheet, Qt::CaseInsensitive);
}

void clsMaroviaExcel::ReNameSheet(const QString &oldName, const QString &newName)
{
    give([&](Spreadsheet &workbook) { workbook.renameSheet(oldName, newName); });
}

void clsMaroviaExcel::PasteSheet(const QString &sheet)
{
    give([&](Spreadsheet &workbook) { workbook.pasteSheet(sheet); });
}

void clsMaroviaExcel::enter(const QString &sheet, int row, int column, SpreadsheetCell cell)
{
    m_cells[sheet][row][column] = std::move(cell);
}

void clsMaroviaExcel::Enterxldata(const QString &sheet, int row, int column, const QString &text)
{
    enter(sheet, row, column, text);
}

void clsMaroviaExcel::Enterxlnumber(const QString &sheet, int row, int column, const QString &text)
{
    if (isPlainNumber(text))
        enter(sheet, row, column, text.toDouble());
    else
        enter(sheet, row, column, text);
}

void clsMaroviaExcel::writeCells()
{
    const auto cells = std::exchange(m_cells, {});
    for (const auto &[sheet, rows] : cells)
        writeRows(sheet, rows);
}

// Rows that follow each other and fill the same columns go out as one block.
void clsMaroviaExcel::writeRows(const QString &sheet, const std::map<int, Row> &rows)
{
    constexpr std::size_t LargestBlock = 2000; // rows; events run between blocks
    SpreadsheetBlock block;
    int firstRow = 0;
    int firstColumn = 0;
    const auto send = [&] {
        if (!block.empty()) {
            m_workbook->write(sheet, firstRow, firstColumn, block);
            m_app.desktop.runPendingEvents();
        }
        block.clear();
    };
    for (const auto &[row, cells] : rows) {
        for (auto cell = cells.begin(); cell != cells.end();) {
            const int start = cell->first;
            std::vector<SpreadsheetCell> run;
            for (int column = start; cell != cells.end() && cell->first == column; ++cell, ++column)
                run.push_back(cell->second);
            const bool continues =
                !block.empty() && start == firstColumn && run.size() == block.front().size() &&
                row == firstRow + static_cast<int>(block.size()) && block.size() < LargestBlock;
            if (!continues) {
                send();
                firstRow = row;
                firstColumn = start;
            }
            block.push_back(std::move(run));
        }
    }
    send();
}

void clsMaroviaExcel::EnterHyperlink(int row, int column, const QString &target, const QString &display)
{
    give([&](Spreadsheet &workbook) { workbook.writeLink(m_activeSheet, row, column, target, display); });
}

void clsMaroviaExcel::EnterxlFormula(const QString &sheet, int row, int column, const QString &text)
{
    give([&](Spreadsheet &workbook) { workbook.writeFormula(sheet, row, column, text); });
}

void clsMaroviaExcel::Enterxlmerge(const QString &sheet, const QString &range)
{
    give([&](Spreadsheet &workbook) { workbook.merge(sheet, range); });
}

void clsMaroviaExcel::Enterxlautofit(const QString &sheet, const QString &columns)
{
    give([&](Spreadsheet &workbook) { workbook.autoFitColumns(sheet, columns); });
}

void clsMaroviaExcel::AutoFitAllColumns(const QString &sheet, int lastColumn)
{
    Enterxlautofit(sheet, u"A:"_s + getColumn(lastColumn));
}

void clsMaroviaExcel::Enterxlshrinktofit(const QString &sheet, const QString &range)
{
    give([&](Spreadsheet &workbook) { workbook.shrinkToFit(sheet, range); });
}

void clsMaroviaExcel::Enterxlpagebreak(const QString &sheet, const QString &cell)
{
    give([&](Spreadsheet &workbook) { workbook.addPageBreak(sheet, cell); });
}

void clsMaroviaExcel::EnterxlHeight(const QString &sheet, const QString &rows, double height)
{
    give([&](Spreadsheet &workbook) { workbook.setRowHeight(sheet, rows, height); });
}

void clsMaroviaExcel::EnterxlWidth(const QString &sheet, const QString &columns, double width)
{
    give([&](Spreadsheet &workbook) { workbook.setColumnWidth(sheet, columns, width); });
}

void clsMaroviaExcel::EnterxlHAlignment(const QString &sheet, const QString &range, int alignment)
{
    give([&](Spreadsheet &workbook) { workbook.setHAlignment(sheet, range, alignment); });
}

void clsMaroviaExcel::EnterxlVAlignment(const QString &sheet, const QString &range, int alignment)
{
    give([&](Spreadsheet &workbook) { workbook.setVAlignment(sheet, range, alignment); });
}

void clsMaroviaExcel::Enterxlborder(const QString &sheet, const QString &range, std::optional<int> edge,
                                    int style)
{
    give([&](Spreadsheet &workbook) { workbook.setBorder(sheet, range, edge, style); });
}

void clsMaroviaExcel::Enterxlbordercolor(const QString &sheet, const QString &range, std::optional<int> edge,
                                         int red, int green, int blue)
{
    give([&](Spreadsheet &workbook) {
        workbook.setBorderColour(sheet, range, edge, colourOf(red, green, blue));
    });
}

void clsMaroviaExcel::SetFondColor(const QString &range, int paletteIndex)
{
    SpreadsheetFont font;
    font.colour = Palette.at(static_cast<std::size_t>(paletteIndex) - 1);
    Enterxlfont(m_activeSheet, range, font);
}

void clsMaroviaExcel::Enterxlinteriorcolor(const QString &sheet, const QString &range, int red, int green,
                                           int blue)
{
    give([&](Spreadsheet &workbook) { workbook.setBackground(sheet, range, colourOf(red, green, blue)); });
}

void clsMaroviaExcel::EnterxlFillRectangle(const QString &sheet, const QString &shape, const QString &range)
{
    give([&](Spreadsheet &workbook) { workbook.copyShape(sheet, shape, range); });
}

void clsMaroviaExcel::Enterxlfont(const QString &sheet, const QString &range, const SpreadsheetFont &font)
{
    give([&](Spreadsheet &workbook) { workbook.setFont(sheet, range, font); });
}

void clsMaroviaExcel::Enterxlclear(const QString &sheet, const QString &range)
{
    give([&](Spreadsheet &workbook) { workbook.clear(sheet, range); });
}

void clsMaroviaExcel::Enterxldelete(const QString &sheet, const QString &range)
{
    give([&](Spreadsheet &workbook) { workbook.remove(sheet, range); });
}

void clsMaroviaExcel::Enterxlcopy(const QString &sheet, const QString &source, const QString &target)
{
    give([&](Spreadsheet &workbook) { workbook.copy(sheet, source, target); });
}

void clsMaroviaExcel::putintextbox(const QString &sheet, const QString &shape, const QString &text)
{
    give([&](Spreadsheet &workbook) { workbook.setShapeText(sheet, shape, text); });
}

void clsMaroviaExcel::putpicture(const QString &sheet, const QString &path, const SpreadsheetPlace &place)
{
    give([&](Spreadsheet &workbook) {
        workbook.addPicture(sheet, m_app.files.find(path).value_or(path), place);
    });
}

void clsMaroviaExcel::PrintOut(const QString &sheet, int copies)
{
    give([&](Spreadsheet &workbook) { workbook.print(sheet, copies); });
}

void clsMaroviaExcel::Saveasxl(const QString &path)
{
    const QString saved = m_folder.filePath(u"saved.xls"_s);
    give([&](Spreadsheet &workbook) { workbook.saveAs(saved); });
    m_app.files.writeAll(path.isEmpty() ? m_path : path, m_app.files.readAll(saved));
}

void clsMaroviaExcel::ExcelPreview()
{
    Saveasxl({});
    m_workbook->close();
    m_workbook.reset();
    if (!m_app.desktop.open(m_app.files.find(m_path).value_or(m_path), ShowMode::Normal))
        throw Failure(u"No program opens the workbook "_s + m_path);
}

void clsMaroviaExcel::ExcelClose() noexcept
{
    m_cells.clear();
    if (m_workbook)
        m_workbook->close();
    m_workbook.reset();
    m_app.desktop.resetPointer();
}

} // namespace sondrel
