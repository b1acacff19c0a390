// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

namespace sondrel {

/// Makes the folder "Reports" below the application folder, or takes the one that is there in any spelling,
/// and makes a relative link for each of "Reports" and "reports" that is not its name: pages name it both
/// ways, and a browser minds the case. Throws Failure.
void ensureReportsFolder(ApplicationContext &app);

/// Makes a link beside a report file whose name holds escapes, under the name that a browser looks for: it
/// decodes a link ("%27") before it opens the file. Does nothing where that is no possible name. Throws
/// Failure.
void linkDecodedName(ApplicationContext &app, const QString &path);

} // namespace sondrel
