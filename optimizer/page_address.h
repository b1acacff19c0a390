// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

#include <optional>

// What may stand in the address box of the optimizer.

namespace sondrel {

/// The file that the text names, if it names a local one rather than an address: a path with a drive, one
/// from the root or from the home folder ("~/"), or a "file://" address.
std::optional<QString> localPage(const QString &text);

/// The address that a report shows: with a scheme, unless it is a path.
QString pageAddress(const QString &text);

/// The name of a page's report, as it is made of the address; it may be no possible file name.
QString reportFileName(ApplicationContext &app, const QString &text);

/// The text of a local page, through the system code page. Throws Failure.
QString localPageText(ApplicationContext &app, const QString &path);

} // namespace sondrel
