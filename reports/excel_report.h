// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/collection.h"
#include "project/clsAccount.h"
#include "project/clsKeyword.h"
#include "reports/report_status.h"

#include <array>
#include <vector>

namespace sondrel {

/// The cells of a row of the keyword grid: keyword, position, page, last position, change, URL and status.
using GridCells = std::array<QString, 7>;

/// What the workbook reports on. A copy: what is on show may change while the workbook is made.
struct ExcelSubject
{
    QString AccountName;
    QString EngineName;
    clsAccount Account;
    Collection<clsKeyword> Keywords;
    std::vector<GridCells> Grid;
};

/// Makes the workbook of one project on one engine from its template and opens it. A message tells when that
/// fails, and an older workbook stays.
void ExcelReport(ApplicationContext &app, const ExcelSubject &subject, const ReportStatus &status);

} // namespace sondrel
