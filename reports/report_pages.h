// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/collection.h"
#include "project/clsAccount.h"
#include "reports/clsReporter.h"
#include "reports/engine_summary.h"

#include <QString>

#include <vector>

// The pages of a project's report set, as text. Dates are given as they are to be shown; nothing is escaped.

namespace sondrel {

/// The pages that share a head and a foot. The details pages of the engines are as the ranking details.
enum class ReportPage { KeywordUrl, KeywordSummary, RankingDetails };

QString reportHead(ReportPage page, const clsAccount &account, const clsReporter &reporter,
                   const QString &date);
QString reportFoot(ReportPage page, const clsReporter &reporter, const QString &date);

/// What follows an engine's part on the two keyword pages.
QString engineMark(ReportPage page, const QString &engineName);

QString detailsFileName(const QString &engineName);
/// The links to the engines' details pages, a column for each run of engines of one market.
QString engineLinks(const Collection<QString> &engines, const Collection<QString> &markets);

QString engineSummaryPage(const clsAccount &account, const clsReporter &reporter, const QString &date,
                          const EngineSummary &summary, const Collection<QString> &markets,
                          const ReportStatus &status);

QString indexFileName();
/// The index page: a template with its placeholders filled.
QString indexPage(QString text, const QString &project, const clsReporter &reporter, const QString &date);

} // namespace sondrel
