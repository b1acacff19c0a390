#include "reports/report_mail.h"

#include "core/text_fold.h"
#include "reports/report_files.h"
#include "reports/report_pages.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr qint16 ThroughProxy = 2;
constexpr qint16 HighPriority = 1;

// A report's name as the index spells it.
QString linkedName(const QString &index, const QString &name)
{
    const qsizetype place = indexOfIgnoringCase(index, name);
    return place < 0 ? name : index.sliced(place, name.size());
}

class AttachmentList
{
public:
    AttachmentList(ApplicationContext &app, const QString &project)
        : m_app(app),
          m_project(project),
          m_index(app.fromBytes(readReport(app, project, indexFileName()).value_or(QByteArray())))
    {
        m_paths.append(reportFile(app, project, u"menu.html"_s));
    }

    /// False when there is no such file.
    bool add(const QString &name)
    {
        const QString linked = linkedName(m_index, name);
        if (!HostPath::isFileName(linked))
            return false;
        const QString path = reportFile(m_app, m_project, linked);
        if (!m_app.files.fileExists(path))
            return false;
        m_paths.append(path);
        return true;
    }
    const QStringList &paths() const { return m_paths; }

private:
    ApplicationContext &m_app;
    QString m_project;
    QString m_index; // its text
    QStringList m_paths;
};

QString automaticSender(const clsPreference &preference, const clsAccount &account)
{
    if (!preference.ReporterName.isEmpty())
        return u"\"%1\" <%2>"_s.arg(preference.ReporterName, preference.Email);
    return preference.Email.isEmpty() ? account.ReportTo : preference.Email;
}

} // namespace

QStringList reportAttachments(ApplicationContext &app, const clsAccount &account, const WantedReports &wanted,
                              KeywordReportOrder order)
{
    AttachmentList list(app, account.Name);
    if (wanted.engineSummary)
        list.add(u"enginesummary.html"_s);
    const auto addUrls = [&] {
        if (wanted.keywordUrl)
            list.add(order == KeywordReportOrder::UrlsFirst ? u"Keywordurl.html"_s : u"keywordurl.html"_s);
    };
    if (order == KeywordReportOrder::UrlsFirst)
        addUrls();
    if (wanted.keywordSummary)
        list.add(u"keywordsummary.html"_s);
    if (order == KeywordReportOrder::SummaryFirst)
        addUrls();
    if (wanted.rankingDetails && list.add(u"rankingdetail.html"_s) && account.Engine) {
        for (const QString &engine : *account.Engine)
            list.add(engine + u"Details.html"_s);
    }
    return list.paths();
}

void fillReportMail(clsSendMail &mail, const ReportMail &content, const clsPreference &preference)
{
    mail.setToRecipient(content.to);
    mail.CC = content.cc;
    mail.Subject = content.subject;
    mail.MsgFormat = u"text"_s;
    mail.BodyTEXT = content.body;
    mail.EmailToSend = content.to;
    mail.setPriority(HighPriority);
    mail.Attachment = content.attachments;
    if (!preference.Proxy.isEmpty() && preference.AccessType == ThroughProxy) {
        mail.Proxy = preference.Proxy;
        if (!preference.HTTPUserName.isEmpty()) {
            mail.Username = preference.HTTPUserName;
            mail.Password = preference.HTTPPassword;
        }
    }
    mail.Host = preference.SMTPServer;
    mail.Port = preference.SMTPPort;
    mail.Authentication = preference.SMTPAuthenticate != 0;
    if (mail.Authentication) {
        mail.SMTPUsername = preference.SMTPUsername;
        mail.SMTPPassword = preference.SMTPPassword;
    }
    mail.From = content.from;
}

QString defaultReportSubject(const clsAccount &account)
{
    return u"Sondrel Report for "_s + account.Name;
}

std::unique_ptr<clsSendMail> newReportMail(ApplicationContext &app, const clsAccount &account)
{
    std::unique_ptr<clsSendMail> mail;
    if (account.ReportTo.isEmpty())
        return mail;
    reportFailure(app, u"SentReport_Error: "_s, [&] {
        clsPreference preference;
        preference.GetSettings(app);
        const WantedReports wanted{account.EngineSummaryReport, account.KeywordURL,
                                   account.KeywordSummaryReport, account.RankingDetailReport};
        ReportMail content;
        content.to = account.ReportTo;
        content.cc = account.CC;
        content.subject = account.Subject.isEmpty() ? defaultReportSubject(account) : account.Subject;
        content.body =
            u"Your Sondrel reports have been attached. Please save all the attachment files in to a "
            "directory, and view your reports by opening the report menu file menu.html with your "
            "web browser."_s;
        content.from = automaticSender(preference, account);
        content.attachments = reportAttachments(app, account, wanted, KeywordReportOrder::UrlsFirst);
        auto composed = std::make_unique<clsSendMail>(app);
        fillReportMail(*composed, content, preference);
        mail = std::move(composed);
    });
    return mail;
}

} // namespace sondrel
