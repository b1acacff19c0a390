#include "shell/send_report_form.h"

#include "core/text_fold.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// With line ends as every mail has them. Encoding a text drops what stands behind its last line end.
QString mailText(QString text)
{
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\n', u"\r\n"_s);
    const bool plain = std::ranges::all_of(text, [](QChar c) { return c.unicode() < 128; });
    return plain || text.endsWith(u'\n') ? text : text + u"\r\n"_s;
}

} // namespace

SendReportForm loadSendReport(const clsPreference &preference, const clsAccount &account)
{
    SendReportForm form;
    form.from = preference.ReporterName.isEmpty()
                    ? preference.Email
                    : preference.ReporterName + u"<"_s + preference.Email + u">"_s;
    form.email = account.ReportTo;
    form.subject = account.Subject;
    form.cc = account.CC;
    form.message = u"Your Sondrel reports have been attached. Please save all the attachment files  in to a "
                   "directory, and view your reports by opening the report menu file menu.html with your web "
                   "browser."_s;
    form.wanted.engineSummary = account.EngineSummaryReport;
    form.wanted.keywordSummary = account.KeywordSummaryReport;
    form.wanted.rankingDetails = account.RankingDetailReport;
    form.removeUnranked = account.ExcludeUnRanking;
    return form;
}

ReportMail reportMailOf(ApplicationContext &app, const clsAccount &account, const SendReportForm &form)
{
    const QString subject = trimBlanks(form.subject).toString();
    ReportMail mail;
    mail.to = form.email;
    mail.cc = form.cc;
    mail.subject = subject.isEmpty() ? defaultReportSubject(account) : subject;
    mail.body = mailText(form.message);
    mail.from = form.from;
    mail.attachments = reportAttachments(app, account, form.wanted, KeywordReportOrder::SummaryFirst);
    return mail;
}

} // namespace sondrel
