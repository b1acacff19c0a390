// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/host_path.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace sondrel {

/// True when there is a file of that name, or a folder in its place.
bool isThere(const HostPath &files, const QString &path);
/// The whole file; nothing when there is none of that name. Throws Failure when something is there and cannot
/// be read, a folder included: whoever writes the file back must not take it for a missing one.
std::optional<QByteArray> readIfThere(const HostPath &files, const QString &path);

} // namespace sondrel
