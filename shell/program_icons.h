// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QIcon>
#include <QString>

namespace sondrel {

/// A drawing of ours by name: one stroke in the colour of the text around it, so that it follows light and dark. An
/// unknown name gives an empty icon.
QIcon programIcon(const QString &name);

/// The program's own icon, in every size.
QIcon applicationIcon();

} // namespace sondrel
