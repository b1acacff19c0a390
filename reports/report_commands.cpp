#include "reports/report_commands.h"

#include "reports/report_files.h"
#include "reports/report_pages.h"
#include "reports/text_report.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

void announceReports(ApplicationContext &app, const ReportStatus &status)
{
    status.setPanel(u"Please wait while generating reports ..."_s);
    app.desktop.runPendingEvents();
}

void giveReport(ApplicationContext &app, ReportSet &set, ReportFormat format, const ShownRanking &shown,
                const ReportStatus &status)
{
    {
        const WaitCursor wait(app.desktop);
        if (!set.ReportsFresh) {
            set.writePages(shown.account, shown.keywords);
            set.ReportsFresh = true;
        }
        if (format != ReportFormat::Excel)
            set.CreateHTMLReportIndex(shown.account.Name);
    }
    switch (format) {
    case ReportFormat::Html:
        openReportIndex(app, shown.account.Name);
        break;
    case ReportFormat::Text:
        CreateTextReport(app, shown.account, shown.engineName, shown.keywords, status);
        break;
    case ReportFormat::Excel:
        // A copy of everything: events run while the workbook is made.
        ExcelReport(app, {shown.account.Name, shown.engineName, shown.account, shown.keywords, shown.grid},
                    status);
        break;
    }
    status.setPanel({});
}

void openReportIndex(ApplicationContext &app, const QString &project)
{
    if (const auto path = existingReport(app, project, indexFileName()))
        openReport(app, *path, ShowMode::Normal);
    else
        app.desktop.showMessage({u"Report"_s,
                                 u"Report template file is missing. You need to re-store the report "
                                 "template file by re-install the program."_s});
}

} // namespace sondrel
