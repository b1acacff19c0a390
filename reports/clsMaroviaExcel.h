// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "reports/spreadsheet.h"

#include <QTemporaryDir>

#include <map>
#include <memory>

namespace sondrel {

/// What a message says when the template of the workbooks is not there.
QString missingTemplateText(const ApplicationContext &app);

/// One workbook in the spreadsheet program. It works on a copy of its own, so that the file itself changes
/// only by a save that has succeeded. Cells are gathered and written in blocks. ConnectExcel comes first;
/// every other step that fails throws.
class clsMaroviaExcel
{
public:
    /// spreadsheets may be null: then there is no spreadsheet program.
    clsMaroviaExcel(ApplicationContext &app, SpreadsheetFactory *spreadsheets);
    ~clsMaroviaExcel();
    clsMaroviaExcel(const clsMaroviaExcel &) = delete;
    clsMaroviaExcel &operator=(const clsMaroviaExcel &) = delete;

    /// Binds to the workbook at the path. With a source, the workbook begins as a copy of that one, and the
    /// path is where it is going to be. A message tells what went wrong.
    bool ConnectExcel(const QString &path, bool showWindow, const QString &source = {});

    QString ActiveSheet() const { return m_activeSheet; }
    void SetActiveSheet(const QString &sheet);
    QStringList GetWorkSheets();
    bool IsWorksheetExist(const QString &sheet);
    void ReNameSheet(const QString &oldName, const QString &newName);
    void PasteSheet(const QString &sheet);

    void Enterxldata(const QString &sheet, int row, int column, const QString &text);
    /// A text that is a plain number becomes one; any other stays a text.
    void Enterxlnumber(const QString &sheet, int row, int column, const QString &text);
    void EnterHyperlink(int row, int column, const QString &target, const QString &display);
    void EnterxlFormula(const QString &sheet, int row, int column, const QString &text);
    void Enterxlmerge(const QString &sheet, const QString &range);
    void Enterxlautofit(const QString &sheet, const QString &columns);
    void AutoFitAllColumns(const QString &sheet, int lastColumn);
    void Enterxlshrinktofit(const QString &sheet, const QString &range);
    void Enterxlpagebreak(const QString &sheet, const QString &cell);
    void EnterxlHeight(const QString &sheet, const QString &rows, double height);
    void EnterxlWidth(const QString &sheet, const QString &columns, double width);
    void EnterxlHAlignment(const QString &sheet, const QString &range, int alignment);
    void EnterxlVAlignment(const QString &sheet, const QString &range, int alignment);
    void Enterxlborder(const QString &sheet, const QString &range, std::optional<int> edge, int style);
    void Enterxlbordercolor(const QString &sheet, const QString &range, std::optional<int> edge, int red,
                            int green, int blue);
    void SetFondColor(const QString &range, int paletteIndex);
    void Enterxlinteriorcolor(const QString &sheet, const QString &range, int red, int green, int blue);
    void EnterxlFillRectangle(const QString &sheet, const QString &shape, const QString &range);
    void Enterxlfont(const QString &sheet, const QString &range, const SpreadsheetFont &font);
    void Enterxlclear(const QString &sheet, const QString &range);
    void Enterxldelete(const QString &sheet, const QString &range);
    void Enterxlcopy(const QString &sheet, const QString &source, const QString &target);
    void putintextbox(const QString &sheet, const QString &shape, const QString &text);
    void putpicture(const QString &sheet, const QString &path, const SpreadsheetPlace &place);
    void PrintOut(const QString &sheet, int copies);

    bool Visible = false;
    /// Saves under the path, or under its own name when that is empty.
    void Saveasxl(const QString &path);
    /// Saves, lets go of the workbook and hands it to the desktop's program for workbooks.
    void ExcelPreview();
    void ExcelClose() noexcept;

private:
    using Row = std::map<int, SpreadsheetCell>;

    void bind(const QString &source);
    void tellFailure(const QString &path, const std::exception &error);
    void enter(const QString &sheet, int row, int column, SpreadsheetCell cell);
    void writeCells();
    void writeRows(const QString &sheet, const std::map<int, Row> &rows);
    template <typename Step>
    void give(Step &&step);

    ApplicationContext &m_app;
    SpreadsheetFactory *m_factory;
    QTemporaryDir m_folder; // of the copy
    std::unique_ptr<Spreadsheet> m_workbook;
    QString m_path;
    QString m_activeSheet;
    std::map<QString, std::map<int, Row>> m_cells; // entered and not yet written
};

} // namespace sondrel
