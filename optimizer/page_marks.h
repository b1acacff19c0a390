// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QStringView>

namespace sondrel {

/// What a page holds anywhere, in whatever case.
struct PageMarks
{
    bool javaScriptTag = false; // "<javascript>", which hardly any page has: scripts are marked otherwise
    bool linkTag = false;       // "<a "
    bool http = false;          // "http", be it an address or not
    bool framesetTag = false;   // "<frameset"
    bool refresh = false;       // the attribute of a meta tag that leads to another page

    static PageMarks of(QStringView page);
};

} // namespace sondrel
