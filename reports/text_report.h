// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/clsPreference.h"
#include "core/collection.h"
#include "project/clsAccount.h"
#include "project/clsKeyword.h"
#include "reports/report_status.h"

namespace sondrel {

/// The rows of one project on one engine as plain text for a fixed-width reading, signed as the settings say.
/// Empty when it failed.
QString TextReport(ApplicationContext &app, const clsAccount &account, const QString &engineName,
                   const Collection<clsKeyword> &keywords, const clsPreference &preference);

/// Writes the text report and opens it.
void CreateTextReport(ApplicationContext &app, const clsAccount &account, const QString &engineName,
                      const Collection<clsKeyword> &keywords, const ReportStatus &status);

} // namespace sondrel
