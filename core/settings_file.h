// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/settings_tree.h"

#include <QByteArray>

namespace sondrel {

/// The settings as text, UTF-8: "[key path]" lines, each with "name=value" lines behind it. What would break
/// a line is escaped with "%"; values that are no strings carry their type ("@bytes:00ff", "@integer:5").
/// Keys and names stand in the order of their folded spelling.
QByteArray writeSettings(const SettingsTree &tree);

/// Reads that form. Empty lines and lines that begin with ";" or "#" are passed over; of two equal names the
/// last one counts. Throws Failure that names the line when the bytes are anything else.
SettingsTree readSettings(const QByteArray &bytes);

} // namespace sondrel
