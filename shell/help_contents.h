// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

namespace sondrel {

/// Help > Contents: opens the help file; where no program for such files is set up, the manual's pages
/// instead. Tells when there is no help file.
void showHelpContents(ApplicationContext &app);

} // namespace sondrel
