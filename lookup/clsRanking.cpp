#include "lookup/clsRanking.h"

#include "core/text_fold.h"
#include "core/values.h"
#include "engines/clsEngine.h"
#include "lookup/ranking_query.h"

#include <QPointer>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

clsRanking::clsRanking(ApplicationContext &app) : m_app(app), m_pool(std::make_unique<frmRanking>(app))
{
    connect(m_pool.get(), &frmRanking::Completed, this, &clsRanking::onCompleted);
    connect(m_pool.get(), &frmRanking::Cancelled, this, &clsRanking::Cancelled);
}

clsRanking::~clsRanking()
{
    CloseHTTPForm();
}

void clsRanking::setKeywordsObject(clsKeywords *keywords)
{
    m_keywords = keywords;
    m_engineName = keywords->Engine;
}

void clsRanking::setAccount(const clsAccount *account)
{
    m_account = account;
}

void clsRanking::SetVariable(const QStringList &keywords)
{
    reportFailure(m_app, u"clsranking_SetVariable error:  "_s, [&] {
        for (const QString &keyword : keywords)
            m_searches.push_back(prepare(keyword));
    });
}

std::unique_ptr<clsSearchKeyword> clsRanking::prepare(const QString &keyword)
{
    if (!m_app.EngineCatalogue || !m_account)
        throw Failure(u"There is no engine catalogue or no project"_s);
    const clsEngine &catalogue = *m_app.EngineCatalogue;
    const EngineRow &row = catalogue.row(catalogue.GetEngineIndex(m_engineName));
    auto search = std::make_unique<clsSearchKeyword>(m_app);
    search->setKeywordsObject(m_keywords);
    search->Account = m_account;
    search->EngineKey = row.EngineKey;
    search->ResultStartString = row.ResultStartString;
    search->ResultEndString = row.ResultEndString;
    search->SectionStart = row.Sectionstart;
    search->SectionEnd = row.SectionEnd;
    search->beginTitle = row.beginTitle;
    search->endTitle = row.endTitle;
    search->beginURL = row.beginURL;
    search->endURL = row.endURL;
    search->beginMatches = row.beginMatches;
    search->endMatches = row.endMatches;
    search->Keyword = keyword;
    search->NextPage1 = row.NextPage1;
    search->NextPage2 = row.NextPage2;
    search->NextPage3 = row.NextPage3;
    search->NextPage4 = row.NextPage4;
    RankingQuery query = rankingQuery(m_app, m_engineName, keyword);
    search->URL = std::move(query.URL);
    search->PostData = std::move(query.PostData);
    search->SubmitMethod = std::move(query.SubmitMethod);
    search->RankingURL = m_account->URLs ? &*m_account->URLs : nullptr;
    return search;
}

void clsRanking::Connect()
{
    reportFailure(m_app, u"clsRanking_connect_Error: "_s, [&] {
        m_app.WriteErrorLog(u"Lookup Connect start ... at "_s + generalDate(m_app.locale, m_app.clock.now()));
        if (m_searches.empty()) {
            Q_EMIT Completed();
            return;
        }
        const QPointer<clsRanking> alive(this);
        Q_EMIT Progress();
        if (!alive || m_cancelled)
            return;
        const int slots = std::min(MaximumConnections, searchCount());
        m_slotKeyword.assign(static_cast<std::size_t>(slots) + 1, 0);
        m_nextIndex = slots + 1;
        m_pool->Connections = static_cast<qint16>(slots);
        m_pool->load();
        for (int slot = 1; slot <= slots; ++slot) {
            search(slot).Links = m_account->LinksNum;
            start(slot, slot);
        }
    });
}

void clsRanking::start(int slot, int number)
{
    clsSearchKeyword &next = search(number);
    next.Pages = 0;
    next.setLinksCount(0);
    m_slotKeyword[static_cast<std::size_t>(slot)] = number;
    m_pool->Connect(slot, next.URL, next.SubmitMethod, next.PostData);
}

void clsRanking::onCompleted(int slot, int errorCode, const QByteArray &data)
{
    reportFailure(m_app, u"clsRanking_m_frmRanking_Completed error:  "_s, [&] {
        if (!finish(search(m_slotKeyword.at(static_cast<std::size_t>(slot))), slot, errorCode, data))
            return;
        ++m_doneCount;
        const QPointer<clsRanking> alive(this);
        Q_EMIT Progress();
        if (!alive || m_cancelled)
            return;
        if (m_nextIndex <= searchCount())
            start(slot, m_nextIndex++);
        else if (m_doneCount == searchCount())
            Q_EMIT Completed();
    });
}

// True when the keyword is done, for good or ill; false when its next page is being fetched.
bool clsRanking::finish(clsSearchKeyword &search, int slot, int errorCode, const QByteArray &data)
{
    const QString keyword = trimBlanks(search.Keyword).toString();
    if (errorCode != 0) {
        m_app.WriteErrorLog(u"Look up '"_s + search.Keyword + u"' Fail. errorcode="_s +
                            QString::number(errorCode) + u"Error description="_s + m_app.fromBytes(data));
        m_keywords->UpdateObject(keyword, u"Status"_s, u"Failed"_s);
        return true;
    }
    if (data.isEmpty()) {
        m_app.WriteErrorLog(u"Look up '"_s + search.Keyword + u"' Fail. ResponseCode="_s +
                            QString::number(errorCode) + u", Return Data empty."_s);
        m_keywords->UpdateObject(keyword, u"Status"_s, u"Failed"_s);
        return true;
    }
    const FetchedPage page{data, PageText(data, m_app.codePage())};
    search.GetResult(page);
    if (!m_cancelled && continueWithNextPage(search, slot, page.text))
        return false;
    m_keywords->UpdateObject(keyword, u"Status"_s, m_app.today());
    return true;
}

bool clsRanking::continueWithNextPage(clsSearchKeyword &search, int slot, const PageText &page)
{
    if (search.LinksCount() >= m_account->LinksNum || search.LinksCount() <= search.LastLinksCount)
        return false;
    search.LastLinksCount = search.LinksCount();
    const QString next = nextAddress(search, page);
    if (next.isEmpty())
        return false;
    search.URL = next;
    m_pool->Connect(slot, search.URL, search.SubmitMethod, search.PostData);
    return true;
}

QString clsRanking::nextAddress(clsSearchKeyword &search, const PageText &page) const
{
    if (containsIgnoringCase(search.URL, u"espotting")) {
        // This engine is queried anew for each page; its address grows by each tail.
        search.SubmitMethod = u"GET"_s;
        return search.URL + u"?affiliateid=1&keyword="_s + QString(search.Keyword).replace(u' ', u'+') +
               replacedIgnoringCase(search.NextPage1, u"[PageNo]", QString::number(search.Pages + 1));
    }
    QString next = search.getNextURL(page);
    // The next link of this engine always names the same offset.
    if (containsIgnoringCase(next, u"anzwers"))
        return replacedIgnoringCase(next, u"b=200", u"b="_s + QString::number(search.LinksCount() + 1));
    return next;
}

void clsRanking::Disconnect()
{
    m_cancelled = true;
    if (m_pool)
        m_pool->Disconnect();
}

void clsRanking::CloseHTTPForm()
{
    m_pool.reset();
}

} // namespace sondrel
