// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

namespace sondrel {

/// The vendor's details on splash, about box and reports. A dealer replaces them by a file in the system
/// directory.
struct clsDealerProfile
{
    QString Dealername;
    QString DealerEmail;
    QString OrderWebSite;
    QString DealerURL;
    QString UpdateURL;
    QString SupportURL;
    QString TipsURL;
    QString TutorialURL;
    QString SiteStatsURL;

    bool operator==(const clsDealerProfile &) const = default;

    /// Reads orbelsoft.ini. Without a dealer's name and web site there, all values are the built-in ones;
    /// otherwise built-in ones fill most of its gaps.
    void GetSettings(ApplicationContext &app);
};

} // namespace sondrel
