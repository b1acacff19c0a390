// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QPalette>

// Colours of what is painted on the ground of texts, light or dark.

namespace sondrel {

/// Whether texts stand on a dark ground.
bool isDark(const QPalette &palette);

/// The colour of what stands back: half of the text's own. The palette's colour for placeholders stays black
/// with some desktops' dark colours.
QColor quietColour(const QPalette &palette);

/// What check boxes are painted with. Styles take their frame from the window's colour, which on a dark
/// ground is as dark.
QPalette boxPalette(QPalette palette);

} // namespace sondrel
