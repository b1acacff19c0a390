// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

namespace sondrel {

/// What a search engine takes from a page.
struct MetaTags
{
    QString keywords;    // content of the last meta tag of that name in the head
    QString description; // content of the last other meta tag there that speaks of keywords or a description
    QString title;
    QString body; // the visible text on one line

    bool operator==(const MetaTags &) const = default;
};

/// Cuts a page into its parts by a forward scan over its tags, which knows no comments, styles or entities.
/// Takes time in proportion to the page.
MetaTags retrieveMetaTag(ApplicationContext &app, const QString &html);

} // namespace sondrel
