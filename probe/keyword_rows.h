// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/collection.h"
#include "project/clsKeyword.h"

#include <QJsonArray>

namespace sondrel::probe {

/// Keyword rows as objects with the field names of clsKeyword, and back (keyed by the keyword; a repeated one
/// is dropped).
QJsonArray rowsAsJson(const Collection<clsKeyword> &rows);
Collection<clsKeyword> rowsFromJson(const QJsonArray &rows);

} // namespace sondrel::probe
