#include "shell/box_delegate.h"

#include "shell/quiet_colour.h"

namespace sondrel {

bool isDark(const QPalette &palette)
{
    constexpr int Middle = 128;
    return palette.color(QPalette::Base).lightness() < Middle;
}

QPalette boxPalette(QPalette palette)
{
    if (isDark(palette))
        palette.setColor(QPalette::Window, quietColour(palette));
    return palette;
}

void BoxDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->palette = boxPalette(option->palette);
}

} // namespace sondrel
