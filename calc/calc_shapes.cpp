// What lies on the sheets, and printing.
#include "calc/calc_workbook.h"

#include <QUrl>

#include <com/sun/star/awt/Point.hpp>
#include <com/sun/star/awt/Size.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/datatransfer/XTransferableSupplier.hpp>
#include <com/sun/star/drawing/XDrawPageSupplier.hpp>
#include <com/sun/star/graphic/GraphicProvider.hpp>
#include <com/sun/star/graphic/XGraphic.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XPrintAreas.hpp>
#include <com/sun/star/sheet/XSheetCellCursor.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/style/XStyleFamiliesSupplier.hpp>
#include <com/sun/star/text/XText.hpp>
#include <com/sun/star/view/XPrintable.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

#include <cmath>

using namespace Qt::Literals::StringLiterals;
using css::uno::Any;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace sondrel {

namespace {

constexpr int Failed = 1004; // the number that automation has always given
constexpr double PerPoint = 2540.0 / 72;

sal_Int32 measure(double points)
{
    return static_cast<sal_Int32>(std::lround(points * PerPoint));
}

} // namespace

Reference<css::drawing::XDrawPage> CalcWorkbook::drawPageOf(const QString &sheet) const
{
    const Reference<css::drawing::XDrawPageSupplier> supplier(sheetOf(sheet), UNO_QUERY_THROW);
    return supplier->getDrawPage();
}

Reference<css::drawing::XShape> CalcWorkbook::shapeOf(const QString &sheet, const QString &name) const
{
    const auto page = drawPageOf(sheet);
    for (sal_Int32 i = 0; i < page->getCount(); ++i) {
        const Reference<css::container::XNamed> named(page->getByIndex(i), css::uno::UNO_QUERY);
        if (named.is() && fromUno(named->getName()) == name)
            return {named, UNO_QUERY_THROW};
    }
    throw SpreadsheetError(Failed, u"The sheet has no shape \""_s + name + u'"');
}

void CalcWorkbook::copyShape(const QString &sheet, const QString &shape, const QString &range)
{
    run([&] {
        const auto source = shapeOf(sheet, shape);
        showSheet(sheet);
        const Reference<css::view::XSelectionSupplier> view(m_model->getCurrentController(), UNO_QUERY_THROW);
        const Reference<css::datatransfer::XTransferableSupplier> content(view, UNO_QUERY_THROW);
        view->select(Any(source));
        m_clipboard = content->getTransferable();
        view->select(Any(rangeOf(sheet, range)));
        const auto page = drawPageOf(sheet);
        const sal_Int32 before = page->getCount();
        content->insertTransferable(m_clipboard);
        css::awt::Point place;
        propertiesOf(sheet, range)->getPropertyValue("Position") >>= place;
        for (sal_Int32 i = before; i < page->getCount(); ++i)
            Reference<css::drawing::XShape>(page->getByIndex(i), UNO_QUERY_THROW)->setPosition(place);
    });
}

void CalcWorkbook::setShapeText(const QString &sheet, const QString &shape, const QString &text)
{
    run([&] { Reference<css::text::XText>(shapeOf(sheet, shape), UNO_QUERY_THROW)->setString(toUno(text)); });
}

void CalcWorkbook::addPicture(const QString &sheet, const QString &path, const SpreadsheetPlace &place)
{
    run([&] {
        const auto provider = css::graphic::GraphicProvider::create(m_office.context());
        const auto graphic = provider->queryGraphic(sequenceOf(
            {property("URL", Any(toUno(QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded()))))}));
        if (!graphic.is())
            throw SpreadsheetError(Failed, u"No picture: "_s + path);
        const Properties picture(newObject("com.sun.star.drawing.GraphicObjectShape"), UNO_QUERY_THROW);
        const Reference<css::drawing::XShape> shape(picture, UNO_QUERY_THROW);
        drawPageOf(sheet)->add(shape);
        picture->setPropertyValue("Graphic", Any(graphic));
        shape->setSize({measure(place.width), measure(place.height)});
        shape->setPosition({measure(place.left), measure(place.top)});
    });
}

void CalcWorkbook::print(const QString &sheet, int copies)
{
    run([&] {
        const Properties cells(sheetOf(sheet), UNO_QUERY_THROW);
        rtl::OUString style;
        cells->getPropertyValue("PageStyle") >>= style;
        const Reference<css::style::XStyleFamiliesSupplier> styles(m_model, UNO_QUERY_THROW);
        const Reference<css::container::XNameAccess> pages(
            styles->getStyleFamilies()->getByName("PageStyles"), UNO_QUERY_THROW);
        const Properties page(pages->getByName(style), UNO_QUERY_THROW);
        page->setPropertyValue("ScaleToPagesX", Any(sal_Int16(1)));
        page->setPropertyValue("ScaleToPagesY", Any(sal_Int16(0)));
        // Where one sheet has an area to print, the others are not printed.
        const auto used = sheetOf(sheet)->createCursor();
        Reference<css::sheet::XUsedAreaCursor>(used, UNO_QUERY_THROW)->gotoEndOfUsedArea(true);
        const Reference<css::sheet::XPrintAreas> areas(cells, UNO_QUERY_THROW);
        const auto before = areas->getPrintAreas();
        areas->setPrintAreas(sequenceOf(
            {Reference<css::sheet::XCellRangeAddressable>(used, UNO_QUERY_THROW)->getRangeAddress()}));
        // One by one: without a print server, printers forget how many they were asked for.
        const Reference<css::view::XPrintable> printer(m_model, UNO_QUERY_THROW);
        for (int copy = 0; copy < copies; ++copy)
            printer->print(sequenceOf({property("Wait", Any(true))}));
        areas->setPrintAreas(before);
    });
}

} // namespace sondrel
