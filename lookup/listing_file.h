// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

#include <vector>

namespace sondrel {

/// One line of a keyword's saved listing.
struct Listing
{
    QString URL;
    QString Title;

    bool operator==(const Listing &) const = default;
};

/// The listings of a keyword's last lookup, in order; a further hit "word(2)" gives those of "word". An empty
/// line ends the file; a line that is not URL, title and page is passed over. A missing file gives none.
/// Throws Failure when the file cannot be read.
std::vector<Listing> loadListings(ApplicationContext &app, const QString &engineName, const QString &keyword);

} // namespace sondrel
