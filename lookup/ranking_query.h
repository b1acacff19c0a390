// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

namespace sondrel {

/// What a keyword's first request to an engine is.
struct RankingQuery
{
    QString URL;
    QString PostData;
    QString SubmitMethod;
};

/// The keyword without a bracketed part that only repeats what stands before it, or is repeated by it:
/// "hotels (hotels uk)" gives "hotels ", "hotels (paris)" stays.
QString withoutRepeatedBrackets(const QString &keyword);

/// The keyword as the engine wants it in a query: percent-encoded UTF-8 or code page bytes for engines with
/// "(CN)" in their name, marks and accented letters escaped for all others.
QString encodedForEngine(ApplicationContext &app, const QString &engineName, const QString &keyword);

/// The first request for a keyword. Throws Failure when the catalogue has no such engine.
RankingQuery rankingQuery(ApplicationContext &app, const QString &engineName, const QString &keyword);

} // namespace sondrel
