// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QStyledItemDelegate>

namespace sondrel {

/// A cell of the keyword grid, with a little air at its sides and no focus frame of its own.
class CellDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

protected:
    /// Paints a cell whose option has been filled.
    static void paintCell(QPainter *painter, const QStyleOptionViewItem &cell);
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};

/// The Show cell: a check box in the middle, and behind it a small picture that tells rows with a position
/// from those without.
class ShowDelegate final : public CellDelegate
{
public:
    using CellDelegate::CellDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                     const QModelIndex &index) override;

private:
    static QRect boxRect(const QStyleOptionViewItem &option);
};

/// The Change cell: the stored text, with an arrow and a colour that say the same.
class ChangeDelegate final : public CellDelegate
{
public:
    using CellDelegate::CellDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
};

/// An address, shortened in its middle: host and end tell most.
class MiddleElidingDelegate final : public CellDelegate
{
public:
    using CellDelegate::CellDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};

/// A listing, red for the user's own, green for a competitor's, with a mark beside its number.
class ListingDelegate final : public CellDelegate
{
public:
    using CellDelegate::CellDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};

} // namespace sondrel
