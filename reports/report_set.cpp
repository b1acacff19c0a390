#include "reports/report_set.h"

#include "core/text_fold.h"
#include "core/values.h"
#include "reports/html_report.h"
#include "reports/report_files.h"
#include "reports/report_pages.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr auto SummaryDataFile = "EngineSummary.dat"_L1;
constexpr auto IndexTemplate = "menutemplate.html"_L1;

// Writes a page that others link to by this name, whatever the case of the file that it replaces.
void writePage(ApplicationContext &app, const QString &project, const QString &name, QByteArrayView bytes)
{
    writeReport(app, project, name, bytes);
    app.files.linkBeside(reportFile(app, project, name), name);
}

// A second spelling that pages and mails use, for readers who mind the case.
void linkSpelling(ApplicationContext &app, const QString &project, const QString &name,
                  const QString &spelling)
{
    app.files.linkBeside(reportFile(app, project, name), spelling);
}

// Where a browser takes the link to an engine's details to end, which has no quotation marks.
QString linkedPart(const QString &engine)
{
    return detailsFileName(engine).section(u' ', 0, 0);
}

bool isOnlyLinkTo(const QString &part, const Collection<QString> &engines)
{
    int links = 0;
    for (const QString &engine : engines)
        links += equalsIgnoringCase(linkedPart(engine), part) ? 1 : 0;
    return links == 1;
}

const Collection<QString> &enginesOf(const clsAccount &account)
{
    static const Collection<QString> none;
    return account.Engine ? *account.Engine : none;
}

QString fragmentName(ReportPage page, const QString &engine)
{
    return page == ReportPage::KeywordUrl ? keywordUrlFileName(engine) : summaryFileName(engine);
}

} // namespace

ReportSet::ReportSet(ApplicationContext &app, ReportStatus status) : m_app(app), m_status(std::move(status))
{
}

template <typename Step>
void ReportSet::run(const QString &tag, Step &&step)
{
    if (!reportFailure(m_app, tag, [&] {
            const WaitCursor wait(m_app.desktop);
            step();
        }))
        m_app.desktop.resetPointer();
}

QString ReportSet::date() const
{
    return longDate(m_app.locale, m_app.clock.today());
}

void ReportSet::ResetReporter()
{
    Reporter = SetReporter(m_app);
}

void ReportSet::writePages(const clsAccount &account, const Collection<clsKeyword> &keywords)
{
    CreateEngineSummaryReport(account);
    CreateKeywordURLReport(account);
    CreateKeywordSummaryReport(account);
    CreateRankingDetailsReport(account, keywords);
}

void ReportSet::CreateEngineSummaryReport(const clsAccount &account)
{
    run(u"frmMain_CreateEngineSummaryReport error: "_s, [&] {
        const EngineSummary summary = GetEngineSummaryReport(m_app, account, m_status);
        if (summary.empty())
            return;
        EngineSummaryReportHTML(account, summary);
        EngineSummaryReportExcel(account, summary);
    });
}

void ReportSet::EngineSummaryReportHTML(const clsAccount &account, const EngineSummary &summary)
{
    run(u"frmMain_EngineSummaryReportHTML error: "_s, [&] {
        const QString name = u"EngineSummary.html"_s;
        const QString text =
            engineSummaryPage(account, Reporter, date(), summary, GetMarketArray(m_app), m_status);
        makeReportFolder(m_app, account.Name);
        writeReportText(m_app, account.Name, name, text);
        linkSpelling(m_app, account.Name, name, u"enginesummary.html"_s);
    });
}

void ReportSet::EngineSummaryReportExcel(const clsAccount &account, const EngineSummary &summary)
{
    run(u"frmmain_EngineSummaryReportExcel error: "_s, [&] {
        const QString text = engineSummaryData(summary, GetMarketArray(m_app), m_status);
        makeReportFolder(m_app, account.Name);
        writeReportText(m_app, account.Name, SummaryDataFile, text);
        m_status.setProgress(0, 1);
    });
}

QByteArray ReportSet::keywordPage(ReportPage page, const clsAccount &account) const
{
    // Bytes throughout: the engines' parts are pasted as they are.
    QByteArray bytes = m_app.toBytes(reportHead(page, account, Reporter, date()));
    const Collection<QString> &engines = enginesOf(account);
    qsizetype position = 0;
    for (const QString &engine : engines) {
        m_status.setProgress(++position, engines.Count());
        if (const auto fragment = readReport(m_app, account.Name, fragmentName(page, engine))) {
            bytes += *fragment;
            bytes += m_app.toBytes(engineMark(page, engine));
        }
    }
    bytes += m_app.toBytes(reportFoot(page, Reporter, date()));
    bytes += "\r\n";
    return bytes;
}

void ReportSet::CreateKeywordURLReport(const clsAccount &account)
{
    run(u"frmMain_CreateKeywordURLReport Error: "_s, [&] {
        const QString name = u"keywordurl.html"_s;
        makeReportFolder(m_app, account.Name);
        writePage(m_app, account.Name, name, keywordPage(ReportPage::KeywordUrl, account));
        linkSpelling(m_app, account.Name, name, u"Keywordurl.html"_s);
    });
}

void ReportSet::CreateKeywordSummaryReport(const clsAccount &account)
{
    run(u"CreateKeywordSummaryReport_Error: "_s, [&] {
        makeReportFolder(m_app, account.Name);
        writePage(m_app, account.Name, u"keywordsummary.html"_s,
                  keywordPage(ReportPage::KeywordSummary, account));
    });
}

// Adds the stored pages that bear the keywords' own names, neither escaped nor without the mark of a further
// hit.
void ReportSet::addStoredPages(QByteArray &bytes, const QString &project, const QString &engine,
                               const Collection<clsKeyword> &keywords, ReportNames &names) const
{
    qsizetype position = 0;
    for (const clsKeyword &row : keywords) {
        m_status.setProgress(++position, keywords.Count());
        const QString name = engine + u'_' + QString(row.Keyword).replace(u' ', u'_') + ".html"_L1;
        if (!names.has(name))
            continue;
        if (const auto page = readReport(m_app, project, name))
            bytes += *page;
    }
}

void ReportSet::CreateRankingDetailsReport(const clsAccount &account, const Collection<clsKeyword> &keywords)
{
    run(u"CreateRankingDetailsReport_Error: "_s, [&] {
        const QByteArray head =
            m_app.toBytes(reportHead(ReportPage::RankingDetails, account, Reporter, date()));
        const QByteArray foot = m_app.toBytes(reportFoot(ReportPage::RankingDetails, Reporter, date()));
        makeReportFolder(m_app, account.Name);
        const Collection<QString> &engines = enginesOf(account);
        // As they are before the first page is written: what follows adds none of a keyword.
        ReportNames names(m_app, account.Name);
        for (const QString &engine : engines) {
            const QString name = detailsFileName(engine);
            QByteArray page = head;
            addStoredPages(page, account.Name, engine, keywords, names);
            page += foot;
            writePage(m_app, account.Name, name, page);
            if (const QString part = linkedPart(engine); isOnlyLinkTo(part, engines))
                linkSpelling(m_app, account.Name, name, part);
        }
        const QString links = engineLinks(engines, GetMarketArray(m_app));
        writePage(m_app, account.Name, u"rankingdetail.html"_s, head + m_app.toBytes(links) + foot);
    });
}

void ReportSet::CreateHTMLReportIndex(const QString &project)
{
    run(u"CreateHTMLReportIndex_Error: "_s, [&] {
        const QString path = m_app.appFile({IndexTemplate});
        if (!m_app.files.fileExists(path))
            throw Failure(u"The report template file is missing: "_s + path);
        const QString text = m_app.fromBytes(m_app.files.readAll(path));
        makeReportFolder(m_app, project);
        writeReportText(m_app, project, indexFileName(), indexPage(text, project, Reporter, date()));
    });
}

} // namespace sondrel
