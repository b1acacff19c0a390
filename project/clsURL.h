// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QString>

namespace sondrel {

/// One tracked URL.
struct clsURL
{
    QString URL; // as the user typed it
    bool IsCompetitor = false;

    bool operator==(const clsURL &) const = default;
};

} // namespace sondrel
