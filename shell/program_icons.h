// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QIcon>
#include <QString>

namespace sondrel {

/// An icon by the name of our drawing: the desktop's own icon for the same thing where its theme has one,
/// else the drawing, one stroke in the colour of the text around it, so that it follows light and dark. An
/// unknown name gives an empty icon.
QIcon programIcon(const QString &name);

/// The program's own icon, in every size.
QIcon applicationIcon();

} // namespace sondrel
