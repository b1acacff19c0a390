#include "shell/grid_delegates.h"

#include "shell/ground_colours.h"
#include "shell/keyword_model.h"
#include "shell/listing_model.h"
#include "shell/row_table.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

namespace sondrel {

namespace {

// Red and green as they have always been on a light base, lighter tones on a dark one.
QColor ownColour(const QPalette &palette)
{
    return isDark(palette) ? QColor(0xFF, 0x8A, 0x80) : QColor(255, 0, 0);
}

QColor competitorColour(const QPalette &palette)
{
    return isDark(palette) ? QColor(0x81, 0xD6, 0x84) : QColor(0, 128, 0);
}

QColor pictureColour(const QStyleOptionViewItem &option, const QColor &plain)
{
    return option.state & QStyle::State_Selected ? option.palette.color(QPalette::HighlightedText) : plain;
}

ListingOwner ownerOf(const QModelIndex &index)
{
    return index.data(ListingModel::OwnerRole).value<ListingOwner>();
}

// An arrow head that points up or down.
QPainterPath arrow(const QRectF &place, bool up)
{
    QPainterPath path;
    path.moveTo(place.left(), up ? place.bottom() : place.top());
    path.lineTo(place.right(), up ? place.bottom() : place.top());
    path.lineTo(place.center().x(), up ? place.top() : place.bottom());
    path.closeSubpath();
    return path;
}

} // namespace

void CellDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->state &= ~QStyle::State_HasFocus;
}

void CellDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    paintCell(painter, cell);
}

QSize CellDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return QStyledItemDelegate::sizeHint(option, index) + QSize(2 * RowTable::air(option.fontMetrics), 0);
}

void CellDelegate::paintCell(QPainter *painter, const QStyleOptionViewItem &cell)
{
    const QStyle *style = cell.widget ? cell.widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &cell, painter, cell.widget); // up to the cell's edges
    QStyleOptionViewItem inner = cell;
    const int air = RowTable::air(cell.fontMetrics);
    inner.rect.adjust(air, 0, -air, 0);
    style->drawControl(QStyle::CE_ItemViewItem, &inner, painter, cell.widget);
}

QRect ShowDelegate::boxRect(const QStyleOptionViewItem &option)
{
    const QStyle *style = option.widget ? option.widget->style() : QApplication::style();
    const QSize size(style->pixelMetric(QStyle::PM_IndicatorWidth, &option, option.widget),
                     style->pixelMetric(QStyle::PM_IndicatorHeight, &option, option.widget));
    return QStyle::alignedRect(option.direction, Qt::AlignCenter, size, option.rect);
}

void ShowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const bool checked = cell.checkState == Qt::Checked;
    cell.features &= ~QStyleOptionViewItem::HasCheckIndicator;
    const QStyle *style = cell.widget ? cell.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);

    QStyleOptionButton box;
    box.rect = boxRect(option);
    box.palette = boxPalette(option.palette);
    box.state = (option.state & QStyle::State_Enabled) | (checked ? QStyle::State_On : QStyle::State_Off);
    style->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, painter, cell.widget);

    const qreal size = box.rect.height() * 0.45;
    const QPointF middle(box.rect.right() + size * 1.6, box.rect.center().y() + 0.5);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QColor colour = pictureColour(option, option.palette.color(QPalette::Text));
    painter->setPen(QPen(colour, 1.2));
    painter->setBrush(index.data(KeywordModel::RankedRole).toBool() ? QBrush(colour) : QBrush(Qt::NoBrush));
    painter->drawEllipse(middle, size / 2, size / 2);
    painter->restore();
}

bool ShowDelegate::editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                               const QModelIndex &index)
{
    if (event->type() != QEvent::MouseButtonRelease)
        return event->type() == QEvent::MouseButtonDblClick;
    const auto *mouse = static_cast<QMouseEvent *>(event);
    if (mouse->button() != Qt::LeftButton ||
        !boxRect(option).adjusted(-3, -3, 3, 3).contains(mouse->position().toPoint()))
        return false;
    const bool checked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    return model->setData(index, checked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

void ChangeDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                           const QModelIndex &index) const
{
    using Trend = KeywordModel::Trend;
    const auto trend = index.data(KeywordModel::ChangeRole).value<Trend>();
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QColor colour = trend == Trend::Down ? ownColour(option.palette) : competitorColour(option.palette);
    if (trend != Trend::None)
        cell.palette.setColor(QPalette::Text, colour);
    paintCell(painter, cell);
    if (trend == Trend::None)
        return;
    const qreal size = option.fontMetrics.ascent() * 0.55;
    const QRectF place(option.rect.left() + size, option.rect.center().y() - size / 2 + 0.5, size, size);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(pictureColour(option, colour));
    if (trend == Trend::New)
        painter->drawEllipse(place.adjusted(1, 1, -1, -1));
    else
        painter->drawPath(arrow(place, trend == Trend::Up));
    painter->restore();
}

void MiddleElidingDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    CellDelegate::initStyleOption(option, index);
    option->textElideMode = Qt::ElideMiddle;
}

void ListingDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    CellDelegate::initStyleOption(option, index);
    const ListingOwner owner = ownerOf(index);
    if (owner != ListingOwner::Nobody)
        option->palette.setColor(QPalette::Text, owner == ListingOwner::Own
                                                     ? ownColour(option->palette)
                                                     : competitorColour(option->palette));
    if (index.column() == ListingModel::Url)
        option->textElideMode = Qt::ElideMiddle;
}

void ListingDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                            const QModelIndex &index) const
{
    CellDelegate::paint(painter, option, index);
    const ListingOwner owner = ownerOf(index);
    if (index.column() != ListingModel::Number || owner == ListingOwner::Nobody)
        return;
    // A filled disc for one's own, a ring for a competitor's: the colours need not be told apart.
    const qreal size = option.fontMetrics.ascent() * 0.5;
    const QPointF middle(option.rect.left() + size * 1.5, option.rect.center().y() + 0.5);
    const QColor colour = pictureColour(
        option, owner == ListingOwner::Own ? ownColour(option.palette) : competitorColour(option.palette));
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(colour, 1.5));
    painter->setBrush(owner == ListingOwner::Own ? QBrush(colour) : QBrush(Qt::NoBrush));
    painter->drawEllipse(middle, size / 2, size / 2);
    painter->restore();
}

} // namespace sondrel
