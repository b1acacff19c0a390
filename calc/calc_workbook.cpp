#include "calc/calc_workbook.h"

#include <QUrl>

#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/datatransfer/XTransferableSupplier.hpp>
#include <com/sun/star/document/MacroExecMode.hpp>
#include <com/sun/star/document/UpdateDocMode.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/lang/IllegalArgumentException.hpp>
#include <com/sun/star/sheet/CellDeleteMode.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XCellRangeMovement.hpp>
#include <com/sun/star/sheet/XSheetOperation.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/sheet/XSpreadsheets.hpp>
#include <com/sun/star/text/XText.hpp>
#include <com/sun/star/text/XTextContent.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

using namespace Qt::Literals::StringLiterals;
using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY_THROW;

namespace sondrel {

namespace {

constexpr int Failed = 1004; // the numbers that automation has always given
constexpr int Locked = 70;

// By name: any other filter would take a file of anything for a text.
const QString Filter = u"MS Excel 97"_s;

rtl::OUString urlOf(const QString &path)
{
    return toUno(QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded()));
}

Any valueOf(const SpreadsheetCell &cell)
{
    if (const auto *number = std::get_if<double>(&cell))
        return Any(*number);
    return Any(toUno(std::get<QString>(cell)));
}

Sequence<Sequence<Any>> dataOf(const SpreadsheetBlock &block)
{
    Sequence<Sequence<Any>> data(static_cast<sal_Int32>(block.size()));
    auto *line = data.getArray();
    for (const auto &row : block) {
        Sequence<Any> cells(static_cast<sal_Int32>(row.size()));
        std::transform(row.begin(), row.end(), cells.getArray(), valueOf);
        *line++ = cells;
    }
    return data;
}

} // namespace

CalcWorkbook::~CalcWorkbook()
{
    close();
}

// Steps after its office has ended fail at once: another office would have no such workbook.
void CalcWorkbook::run(const std::function<void()> &step) const
{
    if (!m_model.is() || !m_office.isAt(m_start))
        throw SpreadsheetError(Failed, u"The spreadsheet program has ended"_s);
    m_office.run(step);
}

void CalcWorkbook::open(const QString &path)
{
    m_office.run([&] {
        m_start = m_office.starts();
        Reference<css::lang::XComponent> component;
        try {
            component = m_office.desktop()->loadComponentFromURL(
                urlOf(path), "_blank", 0,
                sequenceOf({property("Hidden", Any(false)), property("FilterName", Any(toUno(Filter))),
                            property("MacroExecutionMode", Any(css::document::MacroExecMode::NEVER_EXECUTE)),
                            property("UpdateDocMode", Any(css::document::UpdateDocMode::NO_UPDATE))}));
        } catch (const css::lang::IllegalArgumentException &) {
            component.clear(); // what it says of a file that the filter refuses
        }
        m_model.set(component, css::uno::UNO_QUERY);
        if (!m_model.is() || !Reference<css::sheet::XSpreadsheetDocument>(m_model, css::uno::UNO_QUERY).is())
            throw SpreadsheetError(SpreadsheetError::NoWorkbook, u"The file holds no workbook: "_s + path);
        if (Reference<css::frame::XStorable>(m_model, UNO_QUERY_THROW)->isReadonly())
            throw SpreadsheetError(Locked, u"The workbook is open in another program"_s);
    });
}

void CalcWorkbook::store(const QString &path) const
{
    const Reference<css::frame::XStorable> file(m_model, UNO_QUERY_THROW);
    file->storeToURL(urlOf(path), sequenceOf({property("FilterName", Any(toUno(Filter)))}));
}

void CalcWorkbook::saveAs(const QString &path)
{
    run([&] { store(path); });
}

void CalcWorkbook::close() noexcept
{
    try {
        if (m_model.is())
            run([&] {
                const Reference<css::util::XCloseable> file(m_model, UNO_QUERY_THROW);
                file->close(true);
            });
    } catch (const std::exception &) {
        // The office has ended, and the workbook with it.
    }
    m_clipboard.clear();
    m_model.clear();
}

Reference<css::sheet::XSpreadsheetDocument> CalcWorkbook::document() const
{
    return {m_model, UNO_QUERY_THROW};
}

Reference<css::sheet::XSpreadsheet> CalcWorkbook::sheetOf(const QString &name) const
{
    const auto sheets = document()->getSheets();
    if (!sheets->hasByName(toUno(name)))
        throw SpreadsheetError(Failed, u"The workbook has no sheet \""_s + name + u'"');
    return {sheets->getByName(toUno(name)), UNO_QUERY_THROW};
}

Reference<css::table::XCellRange> CalcWorkbook::rangeOf(const QString &sheet, const QString &range) const
{
    return sheetOf(sheet)->getCellRangeByName(toUno(range));
}

CalcWorkbook::Properties CalcWorkbook::propertiesOf(const QString &sheet, const QString &range) const
{
    return {rangeOf(sheet, range), UNO_QUERY_THROW};
}

Reference<css::table::XCell> CalcWorkbook::cellOf(const QString &sheet, int row, int column) const
{
    return sheetOf(sheet)->getCellByPosition(column - 1, row - 1);
}

Reference<css::uno::XInterface> CalcWorkbook::newObject(const char *service) const
{
    const Reference<css::lang::XMultiServiceFactory> factory(m_model, UNO_QUERY_THROW);
    return factory->createInstance(rtl::OUString::createFromAscii(service));
}

QStringList CalcWorkbook::sheets()
{
    QStringList names;
    run([&] {
        for (const rtl::OUString &name : document()->getSheets()->getElementNames())
            names.append(fromUno(name));
    });
    return names;
}

void CalcWorkbook::showSheet(const QString &sheet) const
{
    const Reference<css::sheet::XSpreadsheetView> view(m_model->getCurrentController(), UNO_QUERY_THROW);
    view->setActiveSheet(sheetOf(sheet));
}

void CalcWorkbook::setActiveSheet(const QString &sheet)
{
    run([&] { showSheet(sheet); });
}

void CalcWorkbook::renameSheet(const QString &name, const QString &newName)
{
    run([&] {
        const Reference<css::container::XNamed> sheet(sheetOf(name), UNO_QUERY_THROW);
        sheet->setName(toUno(newName));
        if (fromUno(sheet->getName()) != newName)
            throw SpreadsheetError(Failed, u"The workbook has a sheet \""_s + newName + u"\" already"_s);
    });
}

void CalcWorkbook::pasteSheet(const QString &sheet)
{
    run([&] {
        if (!m_clipboard.is())
            throw SpreadsheetError(Failed, u"There is nothing to paste"_s);
        showSheet(sheet);
        const Reference<css::datatransfer::XTransferableSupplier> view(m_model->getCurrentController(),
                                                                       UNO_QUERY_THROW);
        view->insertTransferable(m_clipboard);
    });
}

void CalcWorkbook::write(const QString &sheet, int row, int column, const SpreadsheetBlock &block)
{
    run([&] {
        const auto lastRow = static_cast<sal_Int32>(row - 2 + static_cast<int>(block.size()));
        const auto lastColumn = static_cast<sal_Int32>(column - 2 + static_cast<int>(block.front().size()));
        const Reference<css::sheet::XCellRangeData> range(
            sheetOf(sheet)->getCellRangeByPosition(column - 1, row - 1, lastColumn, lastRow),
            UNO_QUERY_THROW);
        range->setDataArray(dataOf(block));
    });
}

void CalcWorkbook::writeFormula(const QString &sheet, int row, int column, const QString &formula)
{
    run([&] { cellOf(sheet, row, column)->setFormula(toUno(formula)); });
}

void CalcWorkbook::writeLink(const QString &sheet, int row, int column, const QString &target,
                             const QString &text)
{
    run([&] {
        const Properties field(newObject("com.sun.star.text.TextField.URL"), UNO_QUERY_THROW);
        field->setPropertyValue("URL", Any(toUno(target)));
        field->setPropertyValue("Representation", Any(toUno(text)));
        const Reference<css::text::XText> cell(cellOf(sheet, row, column), UNO_QUERY_THROW);
        cell->setString({});
        cell->insertTextContent(Reference<css::text::XTextRange>(cell->createTextCursor(), UNO_QUERY_THROW),
                                Reference<css::text::XTextContent>(field, UNO_QUERY_THROW), false);
    });
}

void CalcWorkbook::clear(const QString &sheet, const QString &range)
{
    run([&] {
        using namespace css::sheet::CellFlags;
        const Reference<css::sheet::XSheetOperation> cells(rangeOf(sheet, range), UNO_QUERY_THROW);
        cells->clearContents(VALUE | DATETIME | STRING | FORMULA);
    });
}

void CalcWorkbook::remove(const QString &sheet, const QString &range)
{
    run([&] {
        const Reference<css::sheet::XCellRangeAddressable> cells(rangeOf(sheet, range), UNO_QUERY_THROW);
        const auto address = cells->getRangeAddress();
        // What is left closes up over the shorter side.
        const bool tall = address.EndRow - address.StartRow > address.EndColumn - address.StartColumn;
        const Reference<css::sheet::XCellRangeMovement> movement(sheetOf(sheet), UNO_QUERY_THROW);
        movement->removeRange(address,
                              tall ? css::sheet::CellDeleteMode_LEFT : css::sheet::CellDeleteMode_UP);
    });
}

void CalcWorkbook::copy(const QString &sheet, const QString &source, const QString &target)
{
    run([&] {
        showSheet(sheet);
        const Reference<css::view::XSelectionSupplier> view(m_model->getCurrentController(), UNO_QUERY_THROW);
        const Reference<css::datatransfer::XTransferableSupplier> content(view, UNO_QUERY_THROW);
        view->select(Any(rangeOf(sheet, source)));
        m_clipboard = content->getTransferable();
        view->select(Any(rangeOf(sheet, target)));
        content->insertTransferable(m_clipboard);
    });
}

} // namespace sondrel
