// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/collection.h"
#include "project/clsAccount.h"
#include "project/clsKeyword.h"
#include "reports/clsReporter.h"
#include "reports/engine_summary.h"
#include "reports/report_files.h"
#include "reports/report_pages.h"
#include "reports/report_status.h"

namespace sondrel {

/// Writes the pages that a project's report consists of when it leaves the program, from what the lookups of
/// its engines have left on disk. A page that fails leaves its line in the error log, and the others are
/// written.
class ReportSet
{
public:
    explicit ReportSet(ApplicationContext &app, ReportStatus status = {});

    /// Who the pages say they come from. Empty until ResetReporter.
    clsReporter Reporter;
    /// True when nothing has been looked up since the pages were written.
    bool ReportsFresh = false;

    /// Takes the reporter from the settings.
    void ResetReporter();

    /// The four pages below; the keywords are those of the engine on show.
    void writePages(const clsAccount &account, const Collection<clsKeyword> &keywords);

    /// EngineSummary.html and EngineSummary.dat, unless the project has no engine that the catalogue knows.
    void CreateEngineSummaryReport(const clsAccount &account);
    void EngineSummaryReportHTML(const clsAccount &account, const EngineSummary &summary);
    void EngineSummaryReportExcel(const clsAccount &account, const EngineSummary &summary);
    /// keywordurl.html
    void CreateKeywordURLReport(const clsAccount &account);
    /// keywordsummary.html
    void CreateKeywordSummaryReport(const clsAccount &account);
    /// rankingdetail.html and a page of details for each engine, with the stored pages of these keywords.
    void CreateRankingDetailsReport(const clsAccount &account, const Collection<clsKeyword> &keywords);
    /// menu.html, from the template beside the program.
    void CreateHTMLReportIndex(const QString &project);

private:
    template <typename Step>
    void run(const QString &tag, Step &&step);
    QString date() const;
    QByteArray keywordPage(ReportPage page, const clsAccount &account) const;
    void addStoredPages(QByteArray &bytes, const QString &project, const QString &engine,
                        const Collection<clsKeyword> &keywords, ReportNames &names) const;

    ApplicationContext &m_app;
    ReportStatus m_status;
};

} // namespace sondrel
