#include "reports/excel_report.h"

#include "reports/clsMaroviaExcel.h"
#include "reports/excel_sheets.h"
#include "reports/report_files.h"
#include "reports/workbook_lock.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr int Steps = 5; // the program, three sheets, the file

void tellMissingTemplate(ApplicationContext &app)
{
    app.desktop.showMessage({u"Excel Report"_s, missingTemplateText(app)});
}

void tellFailure(ApplicationContext &app, const QString &text, bool targetInUse)
{
    QString message = u"ExcelReport_Error: "_s + text;
    app.WriteErrorLog(message);
    if (targetInUse)
        message += u"\r\n\r\nReport file is already opened by MS Excel. Please close your previoues excel "
                   u"report file "
                   "in MS Excel and try again."_s;
    app.desktop.showMessage({app.deployment.Title, message, MessageIcon::Critical, MessageButtons::Ok});
}

// A copy over a workbook that is open would be lost when that one is saved.
struct TargetInUse : Failure
{
    using Failure::Failure;
};

void fill(clsMaroviaExcel &excel, ApplicationContext &app, const ExcelSubject &subject,
          const ReportStatus &status)
{
    const ExcelSheets sheets{app, excel, subject, SetReporter(app)};
    status.setProgress(1, Steps);
    sheets.ExcelKeywordSummaryReport();
    status.setProgress(2, Steps);
    sheets.writeKeywordUrls();
    status.setProgress(3, Steps);
    sheets.writeEngineSummary();
    status.setProgress(4, Steps);
    excel.SetActiveSheet(u"Keyword Summary"_s);
    excel.ExcelPreview();
    status.setProgress(Steps, Steps);
}

} // namespace

void ExcelReport(ApplicationContext &app, const ExcelSubject &subject, const ReportStatus &status)
{
    if (subject.Grid.empty())
        return;
    clsMaroviaExcel excel(app, app.Spreadsheets);
    try {
        const WaitCursor wait(app.desktop);
        status.setProgress(0, Steps);
        const QString source = app.appFile({u"report.xlt"_s});
        if (!app.files.fileExists(source)) {
            tellMissingTemplate(app);
            return;
        }
        makeReportFolder(app, subject.AccountName);
        const QString workbook = reportFile(app, subject.AccountName, subject.EngineName + u".xls"_s);
        if (isWorkbookOpenElsewhere(app, workbook))
            throw TargetInUse(u"Permission denied: "_s + workbook);
        if (excel.ConnectExcel(workbook, true, source))
            fill(excel, app, subject, status);
        status.setPanel({});
    } catch (const std::exception &error) {
        excel.ExcelClose();
        tellFailure(app, errorText(error), dynamic_cast<const TargetInUse *>(&error) != nullptr);
    }
}

} // namespace sondrel
