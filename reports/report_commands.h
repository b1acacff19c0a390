// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "reports/excel_report.h"
#include "reports/report_set.h"

namespace sondrel {

enum class ReportFormat { Html = 1, Text = 2, Excel = 3 };

/// What the Report menu's commands report on: the project and engine on show.
struct ShownRanking
{
    const clsAccount &account;
    const QString &engineName;
    const Collection<clsKeyword> &keywords;
    std::vector<GridCells> grid = {};
};

/// Says that reports are coming, and lets the window show it. Events run: what is on show may change here.
void announceReports(ApplicationContext &app, const ReportStatus &status);

/// The commands of the Report menu: writes the set's pages when a lookup has been started since they were
/// written last, and the index unless a workbook is wanted; then opens the index, or writes and opens the
/// text report or the workbook.
void giveReport(ApplicationContext &app, ReportSet &set, ReportFormat format, const ShownRanking &shown,
                const ReportStatus &status);

/// Opens the project's index page; a message tells when there is none.
void openReportIndex(ApplicationContext &app, const QString &project);

} // namespace sondrel
