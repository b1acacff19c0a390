#include "reports/html_report.h"

#include "reports/ranking_reports.h"
#include "reports/report_files.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// Each text is let go once it is written: either may be large.

void writeSummary(ApplicationContext &app, const clsAccount &account, const QString &engineName,
                  const Collection<clsKeyword> &keywords)
{
    const QString text = SummaryReport(app, account, engineName, keywords);
    makeReportFolder(app, account.Name);
    writeReportText(app, account.Name, summaryFileName(engineName), text);
}

void writeMatrix(ApplicationContext &app, const clsAccount &account, const QString &engineName,
                 const Collection<clsKeyword> &keywords)
{
    const QString text = KeywordURLReport(app, account, engineName, keywords);
    writeReportText(app, account.Name, keywordUrlFileName(engineName), text);
}

} // namespace

QString summaryFileName(const QString &engineName)
{
    return engineName + u".html"_s;
}

QString keywordUrlFileName(const QString &engineName)
{
    return engineName + u"ku.html"_s;
}

void CreateHTMLReport(ApplicationContext &app, const clsAccount &account, const QString &engineName,
                      const Collection<clsKeyword> &keywords, const ReportStatus &status)
{
    if (reportFailure(app, u"CreateReport_Error: "_s, [&] {
            const WaitCursor wait(app.desktop);
            status.setPanel(u"Please wait while generating HTML report ...."_s);
            writeSummary(app, account, engineName, keywords);
            writeMatrix(app, account, engineName, keywords);
            status.setPanel({});
        }))
        return;
    status.setPanel(u"Error occur while create ranking report"_s);
    app.desktop.resetPointer();
}

} // namespace sondrel
