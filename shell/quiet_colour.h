// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QPalette>

namespace sondrel {

/// The colour of what stands back on the ground of a text: half of the text's own. The palette's colour for
/// placeholders stays black with some desktops' dark colours.
inline QColor quietColour(const QPalette &palette)
{
    QColor colour = palette.color(QPalette::Text);
    colour.setAlphaF(colour.alphaF() / 2);
    return colour;
}

} // namespace sondrel
