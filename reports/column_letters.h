// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QString>

namespace sondrel {

/// The letters of a spreadsheet column counted from 1: "A" to "Z", "AA" to "EZ"; empty outside 1 to 156,
/// which is as wide as reports get.
QString getColumn(int number);

/// The same without the limit, for what stands beside the data.
QString columnLetters(int number);

} // namespace sondrel
