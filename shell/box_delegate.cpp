#include "shell/box_delegate.h"

#include "shell/ground_colours.h"

namespace sondrel {

void BoxDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->palette = boxPalette(option->palette);
}

} // namespace sondrel
