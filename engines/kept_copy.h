// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

namespace sondrel {

/// Replaces a file and keeps what it held before in a copy beside it: the name and ".bak". A file that would
/// not change leaves the copy alone. Throws Failure, with the file as it was, when the copy or the file
/// cannot be written.
void replaceKeepingCopy(ApplicationContext &app, const QString &path, QByteArrayView bytes);

/// Keeps a copy of a file beside it for good: the name and ".damaged", with a number behind that where such a
/// copy of something else is there already. Nothing for a missing file. Throws Failure.
void keepForGood(ApplicationContext &app, const QString &path);

} // namespace sondrel
