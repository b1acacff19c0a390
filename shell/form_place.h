// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QPoint>
#include <QSize>

namespace sondrel {

/// Where a dialog of that size stands on a screen: in the middle, a little above the true one.
QPoint centredPlace(QSize screen, QSize dialog);

} // namespace sondrel
