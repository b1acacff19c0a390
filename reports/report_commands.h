// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "reports/report_set.h"

namespace sondrel {

enum class ReportFormat { Html = 1, Text = 2 };

/// What the Report menu's commands report on: the project and engine on show.
struct ShownRanking
{
    const clsAccount &account;
    const QString &engineName;
    const Collection<clsKeyword> &keywords;
};

/// Report > HTML Format and Text Format: writes the set's pages when a lookup has been started since they
/// were written last, and the index; then opens the index, or writes and opens the text report. The ranking
/// stays while pending events run.
void giveReport(ApplicationContext &app, ReportSet &set, ReportFormat format, const ShownRanking &shown,
                const ReportStatus &status);

/// Opens the project's index page; a message tells when there is none.
void openReportIndex(ApplicationContext &app, const QString &project);

} // namespace sondrel
