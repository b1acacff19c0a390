// Where the sources of the tests lie.
#pragma once

#include <QString>

namespace sondrel {

/// The full path of a file of the checkout that the tests were built from; `path` is relative to its top.
QString sourceFile(const QString &path);

} // namespace sondrel
