#include "lookup/clsSearchKeyword.h"

#include "core/modCommon.h"
#include "core/values.h"
#include "lookup/address_match.h"
#include "lookup/keyword_files.h"
#include "lookup/listing_walk.h"

#include <QStringBuilder>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

qint16 oneMore(qint16 count)
{
    return roundToInt16(count + 1.0);
}

} // namespace

// What one page adds to the listing and the report.
struct clsSearchKeyword::PageRecord
{
    static constexpr qsizetype UsualSize = 4096;

    QString page; // its number
    QString listing;
    QString report;
};

clsSearchKeyword::clsSearchKeyword(ApplicationContext &app)
    : ResultsPath(app.AppPath + u"\\Results\\"_s), ReportsPath(app.AppPath + u"\\Reports\\"_s), m_app(app)
{
}

void clsSearchKeyword::setKeywordsObject(clsKeywords *keywords)
{
    m_keywords = keywords;
    m_engineName = keywords->Engine;
}

void clsSearchKeyword::setLinksCount(qint16 count)
{
    m_linksCount = count;
    MatchCount = 0;
}

void clsSearchKeyword::GetResult(const FetchedPage &page)
{
    const QString tag = u"clsRanking_GetResult: Engine Name = "_s + m_engineName + u"Error= "_s;
    std::optional<KeywordFiles> files;
    const bool begun = reportFailure(m_app, tag, [&] {
        if (!m_keywords || !Account)
            throw Failure(u"There are no keyword rows or no project"_s);
        files.emplace(m_app, ResultsPath, ReportsPath, m_engineName, Account->Name, Keyword);
        const qint16 number = oneMore(Pages);
        files->savePage(number, page.bytes);
        if (Pages == 0)
            files->openAnew();
        else
            files->open();
        Pages = number;
    });
    if (!begun)
        return;
    PageRecord record;
    reportFailure(m_app, tag, [&] { analyse(page.text, files->pageName(Pages), record); });
    // What was found before a failure is kept.
    reportFailure(m_app, tag, [&] { files->append(record.listing, record.report); });
}

void clsSearchKeyword::analyse(const PageText &page, const QString &copyName, PageRecord &record)
{
    record.page = QString::number(Pages);
    record.listing.reserve(PageRecord::UsualSize);
    record.report.reserve(PageRecord::UsualSize);
    if (Pages == 1)
        beginRun(page, record);
    record.report += "<br><b>Page "_L1 % record.page % ": </b><a href="_L1 % copyName %
                     ">View full search results for this page on local PC</a> or <a href="_L1 % URL %
                     ">View full search results for this page online</a><br><br>\r\n<ol>\r\n"_L1;
    Piece rest = page.all();
    const Piece block = page.takeSection(rest, Needle(ResultStartString), Needle(ResultEndString));
    ListingWalk walk(
        m_app, {m_engineName, EngineKey, SectionStart, SectionEnd, beginTitle, endTitle, beginURL, endURL},
        page, block);
    const TrackedAddresses tracked(m_app, RankingURL);
    while (const auto listing = walk.next())
        recordListing(*listing, tracked, record);
    record.report += "</ol><br>\r\n"_L1;
}

// The first page of a run: the old position becomes the last one, and the keyword counts as lost until it is
// found.
void clsSearchKeyword::beginRun(const PageText &page, PageRecord &record)
{
    record.report += "<table  border =0 width = 100% cellspacing=0 cellpadding=0><tr bgcolor=#c12457>"
                     "<td><b><font color=#FFFFFF  face=arial size=2><a name="_L1 %
                     m_engineName % u'>' % m_engineName % "</a> ->: "_L1 % Keyword %
                     "</font></b></td></tr><tr><td><font face=arial size=2>"_L1;
    const QString count =
        clsConnect(m_app).GetMatchesCounts(page, page.all(), Needle(beginMatches), Needle(endMatches));
    if (IsNumberText(count))
        m_keywords->UpdateObject(Keyword, u"Count"_s, count);
    m_keywords->UpdateObject(Keyword, u"LastPos"_s, QString());
    m_keywords->UpdateObject(Keyword, u"CurPos"_s, QString());
}

void clsSearchKeyword::recordListing(const Listing &listing, const TrackedAddresses &tracked,
                                     PageRecord &record)
{
    record.listing += listing.URL % ";#"_L1 % listing.Title % ";#"_L1 % record.page % "\r\n"_L1;
    if (!listing.URL.isEmpty()) {
        m_linksCount = oneMore(m_linksCount);
        // A listing that belongs to two tracked addresses is two matches.
        for (int matches = tracked.countOf(listing.URL); matches > 0; --matches) {
            storePosition(listing.URL, record.page);
            record.report += "<br><font color=#c12457><b>Position: "_L1 % QString::number(m_linksCount) %
                             " Page: "_L1 % record.page % "<br>Matched URL: "_L1 % listing.URL %
                             "</b></font><br><br>\r\n"_L1;
        }
    }
    record.report += "<li><a href="_L1 % listing.URL % u'>' % listing.Title %
                     "</b></a> <font color=#999999>("_L1 % listing.URL % ")</font><br>\r\n"_L1;
}

// The first match of a run is the keyword's position; further ones have rows of their own, unless only the
// top position counts.
void clsSearchKeyword::storePosition(const QString &url, const QString &page)
{
    const QString position = QString::number(m_linksCount);
    if (MatchCount > 0 && Account->TopPosOnly) {
        clsKeyword &row = m_keywords->Keywords.at(Keyword);
        if (row.CurPos.isEmpty() || m_linksCount < leadingNumber(row.CurPos))
            row.CurPos = position;
    } else {
        const QString name = MatchCount == 0 ? Keyword : Keyword + u'(' + QString::number(MatchCount) + u')';
        m_keywords->UpdateObject(name, u"CurPos"_s, position);
        m_keywords->UpdateObject(name, u"URL"_s, url);
        m_keywords->UpdateObject(name, u"Page"_s, page);
    }
    MatchCount = oneMore(MatchCount);
}

} // namespace sondrel
