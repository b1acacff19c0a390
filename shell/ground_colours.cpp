#include "shell/ground_colours.h"

namespace sondrel {

bool isDark(const QPalette &palette)
{
    constexpr int Middle = 128;
    return palette.color(QPalette::Base).lightness() < Middle;
}

QColor quietColour(const QPalette &palette)
{
    QColor colour = palette.color(QPalette::Text);
    colour.setAlphaF(colour.alphaF() / 2);
    return colour;
}

QPalette boxPalette(QPalette palette)
{
    if (isDark(palette))
        palette.setColor(QPalette::Window, quietColour(palette));
    return palette;
}

} // namespace sondrel
