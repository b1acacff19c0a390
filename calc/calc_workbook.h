// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "calc/office.h"
#include "reports/spreadsheet.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/datatransfer/XTransferable.hpp>
#include <com/sun/star/drawing/XDrawPage.hpp>
#include <com/sun/star/drawing/XShape.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/table/BorderLine2.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/table/XCellRange.hpp>

namespace sondrel {

/// A workbook in LibreOffice Calc.
class CalcWorkbook final : public Spreadsheet
{
public:
    explicit CalcWorkbook(Office &office) : m_office(office) {}
    ~CalcWorkbook() override;

    void open(const QString &path) override;
    void saveAs(const QString &path) override;
    void close() noexcept override;

    QStringList sheets() override;
    void setActiveSheet(const QString &sheet) override;
    void renameSheet(const QString &name, const QString &newName) override;
    void pasteSheet(const QString &sheet) override;

    void write(const QString &sheet, int row, int column, const SpreadsheetBlock &block) override;
    void writeFormula(const QString &sheet, int row, int column, const QString &formula) override;
    void writeLink(const QString &sheet, int row, int column, const QString &target,
                   const QString &text) override;
    void clear(const QString &sheet, const QString &range) override;
    void remove(const QString &sheet, const QString &range) override;
    void copy(const QString &sheet, const QString &source, const QString &target) override;

    void merge(const QString &sheet, const QString &range) override;
    void autoFitColumns(const QString &sheet, const QString &columns) override;
    void shrinkToFit(const QString &sheet, const QString &range) override;
    void addPageBreak(const QString &sheet, const QString &cell) override;
    void setRowHeight(const QString &sheet, const QString &rows, double points) override;
    void setColumnWidth(const QString &sheet, const QString &columns, double characters) override;
    void setHAlignment(const QString &sheet, const QString &range, int alignment) override;
    void setVAlignment(const QString &sheet, const QString &range, int alignment) override;
    void setBorder(const QString &sheet, const QString &range, std::optional<int> edge, int style) override;
    void setBorderColour(const QString &sheet, const QString &range, std::optional<int> edge,
                         int colour) override;
    void setBackground(const QString &sheet, const QString &range, int colour) override;
    void setFont(const QString &sheet, const QString &range, const SpreadsheetFont &font) override;

    void copyShape(const QString &sheet, const QString &shape, const QString &range) override;
    void setShapeText(const QString &sheet, const QString &shape, const QString &text) override;
    void addPicture(const QString &sheet, const QString &path, const SpreadsheetPlace &place) override;
    void print(const QString &sheet, int copies) override;

private:
    using Properties = css::uno::Reference<css::beans::XPropertySet>;

    void run(const std::function<void()> &step) const;

    // On the office's thread.
    css::uno::Reference<css::sheet::XSpreadsheetDocument> document() const;
    css::uno::Reference<css::sheet::XSpreadsheet> sheetOf(const QString &name) const;
    css::uno::Reference<css::table::XCellRange> rangeOf(const QString &sheet, const QString &range) const;
    Properties propertiesOf(const QString &sheet, const QString &range) const;
    css::uno::Reference<css::table::XCell> cellOf(const QString &sheet, int row, int column) const;
    css::uno::Reference<css::drawing::XDrawPage> drawPageOf(const QString &sheet) const;
    css::uno::Reference<css::drawing::XShape> shapeOf(const QString &sheet, const QString &name) const;
    css::uno::Reference<css::uno::XInterface> newObject(const char *service) const;
    void store(const QString &path) const;
    void setLines(const QString &sheet, const QString &range, std::optional<int> edge,
                  const std::function<void(css::table::BorderLine2 &)> &change) const;
    void showSheet(const QString &sheet) const;

    Office &m_office;
    int m_start = 0; // of the office that has the workbook
    css::uno::Reference<css::frame::XModel> m_model;
    css::uno::Reference<css::datatransfer::XTransferable> m_clipboard;
};

} // namespace sondrel
