// Marovia Sondrel - positions of web sites in search engine results
#pragma once

class QWidget;

namespace sondrel {

/// Centres a dialog on its screen, a little above the true middle, and never with its title bar out of reach.
void CenterForm(QWidget &dialog);

} // namespace sondrel
