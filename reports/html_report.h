// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/collection.h"
#include "project/clsAccount.h"
#include "project/clsKeyword.h"
#include "reports/report_status.h"

namespace sondrel {

/// File names of the two parts that the set's pages are put together from.
QString summaryFileName(const QString &engineName);
QString keywordUrlFileName(const QString &engineName);

/// Writes the summary and the matrix of one project on one engine, as a finished lookup leaves them.
void CreateHTMLReport(ApplicationContext &app, const clsAccount &account, const QString &engineName,
                      const Collection<clsKeyword> &keywords, const ReportStatus &status);

} // namespace sondrel
