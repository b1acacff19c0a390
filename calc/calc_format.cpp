// How cells look.
#include "calc/calc_workbook.h"

#include <com/sun/star/awt/FontSlant.hpp>
#include <com/sun/star/awt/FontUnderline.hpp>
#include <com/sun/star/awt/FontWeight.hpp>
#include <com/sun/star/table/BorderLineStyle.hpp>
#include <com/sun/star/table/CellHoriJustify.hpp>
#include <com/sun/star/table/CellVertJustify2.hpp>
#include <com/sun/star/table/TableBorder2.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/table/XTableColumns.hpp>
#include <com/sun/star/table/XTableRows.hpp>
#include <com/sun/star/util/XMergeable.hpp>

#include <cmath>

using css::uno::Any;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace sondrel {

namespace {

// The program measures in hundredths of a millimetre.
constexpr double PerPoint = 2540.0 / 72;
// A column of so many characters in the standard font: 7 pixels each, and 5 beside them, at 96 to the inch.
constexpr double PixelsPerCharacter = 7;
constexpr double PixelsBeside = 5;
constexpr double PerPixel = 2540.0 / 96;

constexpr sal_Int16 HairLine = 26; // the width of a thin border

css::table::CellHoriJustify hJustify(int alignment)
{
    switch (alignment) {
    case -4131:
        return css::table::CellHoriJustify_LEFT;
    case -4108:
        return css::table::CellHoriJustify_CENTER;
    case -4152:
        return css::table::CellHoriJustify_RIGHT;
    case -4130:
        return css::table::CellHoriJustify_BLOCK;
    case 5:
        return css::table::CellHoriJustify_REPEAT;
    default:
        return css::table::CellHoriJustify_STANDARD;
    }
}

sal_Int32 vJustify(int alignment)
{
    switch (alignment) {
    case -4160:
        return css::table::CellVertJustify2::TOP;
    case -4108:
        return css::table::CellVertJustify2::CENTER;
    case -4107:
        return css::table::CellVertJustify2::BOTTOM;
    case -4130:
        return css::table::CellVertJustify2::BLOCK;
    default:
        return css::table::CellVertJustify2::STANDARD;
    }
}

sal_Int16 lineStyle(int style)
{
    switch (style) {
    case -4115:
        return css::table::BorderLineStyle::DASHED;
    case -4118:
        return css::table::BorderLineStyle::DOTTED;
    case -4119:
        return css::table::BorderLineStyle::DOUBLE_THIN;
    case 4:
        return css::table::BorderLineStyle::DASH_DOT;
    case 5:
        return css::table::BorderLineStyle::DASH_DOT_DOT;
    default:
        return css::table::BorderLineStyle::SOLID;
    }
}

sal_Int16 underline(int style)
{
    switch (style) {
    case 2:
    case 4:
        return css::awt::FontUnderline::SINGLE;
    case 5:
    case -4119:
        return css::awt::FontUnderline::DOUBLE;
    default:
        return css::awt::FontUnderline::NONE;
    }
}

void setStyle(css::table::BorderLine2 &line, int style)
{
    constexpr int None = -4142;
    line.LineStyle = style == None ? css::table::BorderLineStyle::NONE : lineStyle(style);
    line.LineWidth = style == None ? 0 : style == -4119 ? 3 * HairLine : HairLine;
    line.OuterLineWidth = style == None ? 0 : HairLine;
    line.InnerLineWidth = style == -4119 ? HairLine : 0;
    line.LineDistance = line.InnerLineWidth;
}

} // namespace

void CalcWorkbook::merge(const QString &sheet, const QString &range)
{
    run([&] {
        const Reference<css::util::XMergeable> cells(rangeOf(sheet, range), UNO_QUERY_THROW);
        cells->merge(true);
    });
}

void CalcWorkbook::autoFitColumns(const QString &sheet, const QString &columns)
{
    run([&] {
        const Reference<css::table::XColumnRowRange> range(rangeOf(sheet, columns), UNO_QUERY_THROW);
        Properties(range->getColumns(), UNO_QUERY_THROW)->setPropertyValue("OptimalWidth", Any(true));
    });
}

void CalcWorkbook::shrinkToFit(const QString &sheet, const QString &range)
{
    run([&] { propertiesOf(sheet, range)->setPropertyValue("ShrinkToFit", Any(true)); });
}

void CalcWorkbook::addPageBreak(const QString &sheet, const QString &cell)
{
    run([&] {
        const Reference<css::table::XColumnRowRange> range(rangeOf(sheet, cell), UNO_QUERY_THROW);
        const Properties row(range->getRows()->getByIndex(0), UNO_QUERY_THROW);
        row->setPropertyValue("IsStartOfNewPage", Any(true));
    });
}

void CalcWorkbook::setRowHeight(const QString &sheet, const QString &rows, double points)
{
    run([&] {
        const QString range = rows.contains(u':') ? rows : rows + u':' + rows;
        const Reference<css::table::XColumnRowRange> cells(rangeOf(sheet, range), UNO_QUERY_THROW);
        Properties(cells->getRows(), UNO_QUERY_THROW)
            ->setPropertyValue("Height", Any(static_cast<sal_Int32>(std::lround(points * PerPoint))));
    });
}

void CalcWorkbook::setColumnWidth(const QString &sheet, const QString &columns, double characters)
{
    run([&] {
        const QString range = columns.contains(u':') ? columns : columns + u':' + columns;
        const Reference<css::table::XColumnRowRange> cells(rangeOf(sheet, range), UNO_QUERY_THROW);
        const double width = (characters * PixelsPerCharacter + PixelsBeside) * PerPixel;
        Properties(cells->getColumns(), UNO_QUERY_THROW)
            ->setPropertyValue("Width", Any(static_cast<sal_Int32>(std::lround(width))));
    });
}

void CalcWorkbook::setHAlignment(const QString &sheet, const QString &range, int alignment)
{
    run([&] { propertiesOf(sheet, range)->setPropertyValue("HoriJustify", Any(hJustify(alignment))); });
}

void CalcWorkbook::setVAlignment(const QString &sheet, const QString &range, int alignment)
{
    run([&] { propertiesOf(sheet, range)->setPropertyValue("VertJustify", Any(vJustify(alignment))); });
}

void CalcWorkbook::setLines(const QString &sheet, const QString &range, std::optional<int> edge,
                            const std::function<void(css::table::BorderLine2 &)> &change) const
{
    const Properties cells = propertiesOf(sheet, range);
    if (edge == 5 || edge == 6) { // across the cells, down or up
        const char *name = edge == 5 ? "DiagonalTLBR2" : "DiagonalBLTR2";
        css::table::BorderLine2 line;
        cells->getPropertyValue(rtl::OUString::createFromAscii(name)) >>= line;
        change(line);
        cells->setPropertyValue(rtl::OUString::createFromAscii(name), Any(line));
        return;
    }
    css::table::TableBorder2 border;
    cells->getPropertyValue("TableBorder2") >>= border;
    const auto set = [&](int own, css::table::BorderLine2 &line, sal_Bool &valid) {
        valid = !edge || *edge == own;
        if (valid)
            change(line);
    };
    set(7, border.LeftLine, border.IsLeftLineValid);
    set(8, border.TopLine, border.IsTopLineValid);
    set(9, border.BottomLine, border.IsBottomLineValid);
    set(10, border.RightLine, border.IsRightLineValid);
    set(11, border.VerticalLine, border.IsVerticalLineValid);
    set(12, border.HorizontalLine, border.IsHorizontalLineValid);
    border.IsDistanceValid = false;
    cells->setPropertyValue("TableBorder2", Any(border));
}

void CalcWorkbook::setBorder(const QString &sheet, const QString &range, std::optional<int> edge, int style)
{
    run([&] {
        setLines(sheet, range, edge, [style](css::table::BorderLine2 &line) { setStyle(line, style); });
    });
}

void CalcWorkbook::setBorderColour(const QString &sheet, const QString &range, std::optional<int> edge,
                                   int colour)
{
    run([&] {
        setLines(sheet, range, edge, [colour](css::table::BorderLine2 &line) {
            if (line.OuterLineWidth == 0)
                setStyle(line, 1); // a colour needs a line
            line.Color = colour;
        });
    });
}

void CalcWorkbook::setBackground(const QString &sheet, const QString &range, int colour)
{
    run([&] { propertiesOf(sheet, range)->setPropertyValue("CellBackColor", Any(sal_Int32(colour))); });
}

void CalcWorkbook::setFont(const QString &sheet, const QString &range, const SpreadsheetFont &font)
{
    run([&] {
        const Properties cells = propertiesOf(sheet, range);
        if (font.name)
            cells->setPropertyValue("CharFontName", Any(toUno(*font.name)));
        if (font.size)
            cells->setPropertyValue("CharHeight", Any(static_cast<float>(*font.size)));
        if (font.italic)
            cells->setPropertyValue(
                "CharPosture", Any(*font.italic ? css::awt::FontSlant_ITALIC : css::awt::FontSlant_NONE));
        if (font.bold)
            cells->setPropertyValue(
                "CharWeight", Any(*font.bold ? css::awt::FontWeight::BOLD : css::awt::FontWeight::NORMAL));
        if (font.colour)
            cells->setPropertyValue("CharColor", Any(sal_Int32(*font.colour)));
        if (font.underline)
            cells->setPropertyValue("CharUnderline", Any(underline(*font.underline)));
    });
}

} // namespace sondrel
