// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QString>

namespace sondrel {

/// Takes the first "%" with the two characters behind it and replaces every occurrence of these three,
/// without regard to case, by the mark that they stand for, or by nothing when they stand for none; over
/// again, until no "%" is left. A blank ("%20") and letters stand for none.
QString DecodeHTMLString(const QString &text);

} // namespace sondrel
