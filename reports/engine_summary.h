// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "core/collection.h"
#include "project/clsAccount.h"
#include "reports/report_status.h"

#include <QStringList>

#include <vector>

// The current positions of one project's keywords on all of its engines, market by market.

namespace sondrel {

/// One market's table. Every row has a cell for the keyword and one for each of the project's engines in this
/// market; the first row names the engines.
struct MarketTable
{
    QString Market;
    std::vector<QStringList> Rows;

    bool operator==(const MarketTable &) const = default;
};

using EngineSummary = std::vector<MarketTable>;

/// What stands over the column of keywords.
constexpr auto EnginesKeyword = QLatin1StringView("EnginesKeyword");

/// The market of every engine in the catalogue, by the engine's name.
Collection<QString> GetMarketArray(const ApplicationContext &app);
/// How many of the engines are in the market.
int GetEnginesCount(const Collection<QString> &markets, const Collection<QString> &engines,
                    const QString &market);
/// The text without a bracket that names a supplier of results.
QString TrimBracketString(const QString &text);

/// Reads the stored results of the project's engines. Engines that the catalogue does not know are left out;
/// one without results has an empty column. A keyword that a later engine of a market has too moves to the
/// top.
EngineSummary GetEngineSummaryReport(ApplicationContext &app, const clsAccount &account,
                                     const ReportStatus &status);

/// The market that a table is headed by: that of its last engine.
QString headingOf(const MarketTable &table, const Collection<QString> &markets);

/// The summary as lines of fields, for the spreadsheet.
QString engineSummaryData(const EngineSummary &summary, const Collection<QString> &markets,
                          const ReportStatus &status);

} // namespace sondrel
