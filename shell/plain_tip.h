// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QString>

namespace sondrel {

/// A tool tip that shows the text letter for letter. Texts of users and strangers are no markup, and a tool
/// tip takes what looks like it for that.
QString plainTip(const QString &text);

} // namespace sondrel
