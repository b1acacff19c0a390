// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "project/clsAccount.h"
#include "reports/report_mail.h"

namespace sondrel {

/// What the dialog that mails the reports shows.
struct SendReportForm
{
    QString from;
    QString email;
    QString subject;
    QString cc;
    QString message;
    WantedReports wanted;
    bool removeUnranked = false;

    bool operator==(const SendReportForm &) const = default;
};

/// The controls as they come up; which reports of keywords and URLs are wanted is no setting of a project.
SendReportForm loadSendReport(const clsPreference &preference, const clsAccount &account);

/// The mail that the controls describe.
ReportMail reportMailOf(ApplicationContext &app, const clsAccount &account, const SendReportForm &form);

} // namespace sondrel
