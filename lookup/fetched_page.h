// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "lookup/page_text.h"

#include <QByteArray>

namespace sondrel {

/// A page as it was received, and the text that it is in the system code page.
struct FetchedPage
{
    QByteArray bytes;
    PageText text;
};

} // namespace sondrel
