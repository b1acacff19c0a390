// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "lookup/fetched_page.h"
#include "project/clsAccount.h"
#include "project/clsKeywords.h"

namespace sondrel {

class TrackedAddresses;
struct Listing;

/// One keyword of a run: turns each fetched page into stored results, and finds the address of the next page.
class clsSearchKeyword
{
public:
    explicit clsSearchKeyword(ApplicationContext &app);

    QString URL; // of the page being fetched
    QString SubmitMethod;
    QString PostData;
    QString Keyword; // as the user keeps it
    const clsAccount *Account = nullptr;
    const Collection<clsURL> *RankingURL = nullptr; // all tracked URLs, in project order
    QString EngineKey;
    QString ResultStartString;
    QString ResultEndString;
    QString SectionStart;
    QString SectionEnd;
    QString beginTitle;
    QString endTitle;
    QString beginURL;
    QString endURL;
    QString beginMatches;
    QString endMatches;
    QString NextPage1;
    QString NextPage2;
    QString NextPage3;
    QString NextPage4;
    qint16 Links = 0;
    qint16 Pages = 0;          // analysed so far
    qint16 LastLinksCount = 0; // LinksCount when the previous page was done
    qint16 MatchCount = 0;
    QString ResultsPath;
    QString ReportsPath;

    /// The rows that results go to; also takes over their engine's name. They outlive this object.
    void setKeywordsObject(clsKeywords *keywords);
    /// Listings numbered so far. Setting it also sets MatchCount to 0.
    qint16 LinksCount() const { return m_linksCount; }
    void setLinksCount(qint16 count);

    /// Analyses one page and writes the three files of the keyword.
    void GetResult(const FetchedPage &page);
    /// The address of the next result page: that of the last link in front of the engine's next-page text, or
    /// the folder of the page when it has none. Empty, with a line in the log, when the engine has no such
    /// text.
    QString getNextURL(const PageText &page);

private:
    struct PageRecord;

    void analyse(const PageText &page, const QString &copyName, PageRecord &record);
    void beginRun(const PageText &page, PageRecord &record);
    void recordListing(const Listing &listing, const TrackedAddresses &tracked, PageRecord &record);
    void storePosition(const QString &url, const QString &page);
    QString nextLink(const PageText &page);
    QString completeAddress(QString link) const;

    ApplicationContext &m_app;
    clsKeywords *m_keywords = nullptr;
    QString m_engineName;
    qint16 m_linksCount = 0;
};

} // namespace sondrel
