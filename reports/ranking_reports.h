// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "core/collection.h"
#include "project/clsAccount.h"
#include "project/clsKeyword.h"

#include <optional>
#include <vector>

// The reports of one project on one engine, as parts of HTML pages: no page of their own, nothing escaped.

namespace sondrel {

/// What the matrix of keywords and tracked URLs says of one keyword.
struct ReportColumn
{
    QString Keyword;
    /// Empty when the engine's count is no number.
    QString Count;
    /// The best position of each tracked URL, in the project's order; empty where there is none.
    std::vector<QString> Positions;

    bool operator==(const ReportColumn &) const = default;
};

/// The matrix, further hits gathered under their keyword. A keyword that a further hit has changed stands
/// behind those that none has. Nothing when it failed.
std::optional<std::vector<ReportColumn>> GetReportcol(ApplicationContext &app, const clsAccount &account,
                                                      const Collection<clsKeyword> &keywords);

/// One table row for each stored row, with a link to the keyword's page. Empty when it failed.
QString SummaryReport(ApplicationContext &app, const clsAccount &account, const QString &engineName,
                      const Collection<clsKeyword> &keywords);

/// The matrix as a table under a list of the tracked URLs. Empty without URLs or keywords, and when it
/// failed.
QString KeywordURLReport(ApplicationContext &app, const clsAccount &account, const QString &engineName,
                         const Collection<clsKeyword> &keywords);

} // namespace sondrel
