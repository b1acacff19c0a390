// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QStyledItemDelegate>

namespace sondrel {

/// Whether texts stand on a dark ground.
bool isDark(const QPalette &palette);

/// What check boxes on the ground of a text are painted with. Styles take their frame from the window's
/// colour, which on a dark ground is as dark.
QPalette boxPalette(QPalette palette);

/// A row whose check box is seen on a dark ground too.
class BoxDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};

} // namespace sondrel
