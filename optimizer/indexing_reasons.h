// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "optimizer/page_marks.h"

#include <QString>

namespace sondrel {

/// Why search engines might not index a page, as list items; empty when nothing speaks against it. siteURL is
/// the address as it was typed, words the count of the body's words.
QString indexingReasons(const PageMarks &page, const QString &siteURL, qint32 words,
                        const QString &exampleURL);

} // namespace sondrel
