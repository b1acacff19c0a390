// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/profile_file.h"

#include <QStringList>

namespace sondrel {

/// The values of a section's keys "1", "2", ... up to the first empty one.
QStringList unbrokenList(const ProfileFile &file, const QString &section);

} // namespace sondrel
