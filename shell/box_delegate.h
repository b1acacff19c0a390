// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QStyledItemDelegate>

namespace sondrel {

/// A row whose check box is seen on a dark ground too.
class BoxDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};

} // namespace sondrel
