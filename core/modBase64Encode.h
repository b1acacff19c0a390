// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

namespace sondrel {

/// Base64 of the characters' ANSI values without line breaks, in chunks of 54 characters.
QString Base64Encode(ApplicationContext &app, const QString &text);
/// One chunk: filled with blanks to a multiple of three before it is encoded, so "a" gives "YS==".
QString Encode(ApplicationContext &app, const QString &chunk);

} // namespace sondrel
