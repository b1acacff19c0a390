// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

namespace sondrel {

/// True while a spreadsheet program has the workbook open. The mark that it leaves beside the workbook counts
/// where nothing else tells: one of this user's programs on this machine that was killed leaves it for ever,
/// though no program has the workbook open any more.
bool isWorkbookOpenElsewhere(ApplicationContext &app, const QString &path);

} // namespace sondrel
