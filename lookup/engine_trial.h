// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "engines/clsEngine.h"
#include "lookup/fetched_page.h"

#include <vector>

namespace sondrel {

/// A listing that an engine's strings cut out of a page. A lookup does not number one that is left without an
/// address; its position is 0.
struct TrialListing
{
    int position = 0;
    QString title;
    QString url;

    bool operator==(const TrialListing &) const = default;
};

/// What a lookup would read out of a page by an engine's strings.
struct EngineTrial
{
    std::vector<TrialListing> listings;
    QString count;               // as a lookup keeps it: a number as the engine writes it, or empty
    QString countText;           // what stands in the count's place
    bool hasResultStart = false; // the string was found
    bool hasResultEnd = false;   // and the other one behind it
    bool hasNextLink = false;    // the page has a link that leads on
    QString next; // address of the next page; empty when the engine has no string to find it by
};

/// Runs the strings over a page that came from that address, as a lookup does, and keeps nothing.
EngineTrial tryEngine(ApplicationContext &app, const EngineRow &engine, const FetchedPage &page,
                      const QString &url);

} // namespace sondrel
