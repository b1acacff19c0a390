// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/clsPreference.h"
#include "mail/clsSendMail.h"
#include "project/clsAccount.h"

#include <QStringList>

#include <memory>

namespace sondrel {

/// The reports that a mail is to carry beside the index.
struct WantedReports
{
    bool engineSummary = false;
    bool keywordUrl = false;
    bool keywordSummary = false;
    bool rankingDetails = false;

    bool operator==(const WantedReports &) const = default;
};

enum class KeywordReportOrder { UrlsFirst, SummaryFirst };

/// Paths of the index and of the wanted reports that exist. Each is spelled as the index links to it, so that
/// its links lead somewhere wherever the files are saved.
QStringList reportAttachments(ApplicationContext &app, const clsAccount &account, const WantedReports &wanted,
                              KeywordReportOrder order);

/// What a mail of reports says.
struct ReportMail
{
    QString to;
    QString cc;
    QString subject;
    QString body;
    QString from;
    QStringList attachments;
};

/// Gives a mail its content, and the server of the settings.
void fillReportMail(clsSendMail &mail, const ReportMail &content, const clsPreference &preference);

/// The subject of a project's reports when nobody gave one.
QString defaultReportSubject(const clsAccount &account);

/// The mail of a project's reports, ready to be sent; null when the project names no recipient, or when it
/// fails, which is logged.
std::unique_ptr<clsSendMail> newReportMail(ApplicationContext &app, const clsAccount &account);

} // namespace sondrel
