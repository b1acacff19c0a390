// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

namespace sondrel {

/// Makes the folder "Reports" below the application folder, or takes the one that is there in any spelling,
/// and makes a relative link for each of "Reports" and "reports" that is not its name: pages name it both
/// ways, and a browser minds the case. Throws Failure.
void ensureReportsFolder(ApplicationContext &app);

/// Makes links beside a report file, under the other names that a browser may look for: it decodes the
/// escapes of an address ("%27") before it opens the file, and where a name holds more than ASCII it reads it
/// by the charset that it guesses for the page with the address, since the pages tell none. Does nothing
/// where that is no possible name. Throws Failure.
void linkBrowserNames(ApplicationContext &app, const QString &path);

} // namespace sondrel
