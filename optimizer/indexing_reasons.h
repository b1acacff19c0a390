// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QString>

namespace sondrel {

/// Why search engines might not index a page, as list items; empty when nothing speaks against it. foldedPage
/// is the page with its case folded, siteURL the address as it was typed, words the count of the body's
/// words.
QString indexingReasons(QStringView foldedPage, const QString &siteURL, qint32 words,
                        const QString &exampleURL);

} // namespace sondrel
