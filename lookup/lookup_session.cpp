#include "lookup/lookup_session.h"

#include "core/modUtilit.h"
#include "core/text_fold.h"
#include "core/values.h"

#include <QPointer>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr int SchedulerInterval = 1000; // ms

bool isFurtherHit(QString keyword)
{
    return StripRowSuffix(keyword);
}

bool haveSameResults(const clsKeyword &one, clsKeyword other)
{
    other.Optimize = one.Optimize;
    return one == other;
}

} // namespace

LookupSession::LookupSession(ApplicationContext &app)
    : Keywords(std::make_unique<clsKeywords>(app)),
      m_app(app),
      m_tmrScheduler(app.clock.createTimer(SchedulerInterval, [this] { onSchedulerTick(); }))
{
}

LookupSession::~LookupSession() = default;

QString LookupSession::AccountName() const
{
    return Account ? Account->Name : QString();
}

void LookupSession::open()
{
    Keywords = std::make_unique<clsKeywords>(m_app);
    Keywords->AccountName = AccountName();
    Keywords->LoadKeywords();
    Keywords->Engine = EngineName;
    Keywords->FillKeywordsLookupValue();
    m_read = Keywords->Keywords;
}

void LookupSession::refuse(const QString &title, MessageIcon icon, const QString &text)
{
    m_app.desktop.showMessage({title, text, icon, MessageButtons::Ok});
}

void LookupSession::LookUpSelectedKeyword(bool hasRows, const std::vector<SelectedRow> &selection)
{
    reportFailure(m_app, u"frmSondrel_LookUpSelectedKeyword error: "_s, [&] {
        if (!hasRows) {
            refuse(
                u"Look Up"_s, MessageIcon::Exclamation,
                u"There is no keyword in the Keyword list. Please clicking the 'Load Keyword' button on the "
                "Toolbar to retrieve keywords from your search engine account."_s);
            return;
        }
        if (selection.empty()) {
            refuse(u"Keyword Look Up"_s, MessageIcon::Information,
                   u"Please select(or highlight) the keywords you want to look up in the keyword list"_s);
            return;
        }
        if (!Account || !Account->URLs || Account->URLs->isEmpty()) {
            refuse(u"Keyword Look Up"_s, MessageIcon::Information,
                   u"Please specify a web site URL for your account."_s);
            return;
        }
        QStringList keywords;
        for (const SelectedRow &row : selection) {
            if (row.Show && !isFurtherHit(row.Keyword))
                keywords.append(row.Keyword);
        }
        if (keywords.isEmpty())
            return;
        m_firstKeyword = keywords.first();
        m_lookupKind = LookupKind::Selected;
        CreateRanking(keywords);
    });
}

void LookupSession::DeleteAllDuplicateKeywords()
{
    reportFailure(m_app, u"frmSondrel_DeleteAllDuplicateKeywords error :  "_s, [&] {
        Keywords->Keywords.removeIf([](const clsKeyword &row) { return isFurtherHit(row.Keyword); });
    });
}

void LookupSession::LookupALLKeyword()
{
    reportFailure(m_app, u"frmSondrel_LookupALLKeyword error:  "_s, [&] {
        DeleteAllDuplicateKeywords();
        QStringList keywords;
        for (const clsKeyword &row : std::as_const(Keywords->Keywords))
            keywords.append(row.Keyword);
        if (keywords.isEmpty()) {
            Q_EMIT Completed();
            return;
        }
        m_lookupKind = LookupKind::All;
        m_app.LookupRequested = true;
        m_firstKeyword = keywords.first();
        CreateRanking(keywords);
    });
}

void LookupSession::CreateRanking(const QStringList &keywords)
{
    reportFailure(m_app, u"CreateRanking_Error: "_s, [&] {
        m_app.WriteErrorLog(u"Start ranking at "_s + generalDate(m_app.locale, m_app.clock.now()));
        if (keywords.isEmpty() || m_inSearch != 0) {
            Q_EMIT Completed();
            return;
        }
        m_inRun.clear();
        for (const QString &keyword : keywords)
            m_inRun.insert(folded(keyword));
        m_progressValue = 0;
        m_progressMaximum = static_cast<int>(keywords.size()) + 1;
        const QPointer<LookupSession> alive(this);
        Q_EMIT progressChanged(m_progressValue, m_progressMaximum);
        if (!alive)
            return;
        m_ranking = std::make_unique<clsRanking>(m_app);
        QObject::connect(m_ranking.get(), &clsRanking::Progress, this, &LookupSession::onProgress);
        QObject::connect(m_ranking.get(), &clsRanking::Completed, this, &LookupSession::onCompleted);
        QObject::connect(m_ranking.get(), &clsRanking::Cancelled, this, &LookupSession::onCancelled);
        m_ranking->setKeywordsObject(Keywords.get());
        m_ranking->setAccount(Account.get());
        m_ranking->SetVariable(keywords);
        connect();
    });
}

void LookupSession::connect()
{
    reportFailure(m_app, u"connect_Error: "_s, [&] {
        if (!m_ranking || m_inSearch != 0) {
            m_app.WriteErrorLog(u"connect_Error: m_oRanking is not setted or m_bInsearch is true"_s);
            return;
        }
        m_inSearch = 1;
        const QPointer<LookupSession> alive(this);
        m_ranking->Connect();
        if (alive)
            Q_EMIT stateChanged();
    });
}

void LookupSession::onProgress()
{
    if (Schedle || m_progressValue >= m_progressMaximum)
        return;
    const QPointer<LookupSession> alive(this);
    Q_EMIT panelChanged(Panel::Description,
                        u"Please wait while retrieving search results from the internet ..."_s);
    if (alive)
        Q_EMIT progressChanged(++m_progressValue, m_progressMaximum);
}

// Another session may have looked other keywords up in the meantime: what it has stored is newer than what
// this one has read, and is not to be lost when the file is written anew.
void LookupSession::takeForeignResults()
{
    clsKeywords stored(m_app);
    stored.AccountName = Keywords->AccountName;
    stored.LoadKeywords();
    stored.Engine = Keywords->Engine;
    stored.FillKeywordsLookupValue();
    for (const clsKeyword &row : std::as_const(stored.Keywords)) {
        QString keyword = row.Keyword;
        StripRowSuffix(keyword);
        if (!m_inRun.contains(folded(keyword)) && !m_inRun.contains(folded(row.Keyword)))
            takeForeignRow(row);
    }
}

// Only where the other one has written and this one has not: a row that is as it was read was left or taken
// away here, and one that has changed here too is the result of a stopped run.
void LookupSession::takeForeignRow(const clsKeyword &row)
{
    const clsKeyword *read = std::as_const(m_read).find(row.Keyword);
    clsKeyword *known = Keywords->Keywords.find(row.Keyword);
    if (!known) {
        if (!read)
            Keywords->AddKeyword(row, -1);
        return;
    }
    clsKeyword before;
    before.Keyword = known->Keyword;
    if (read)
        before = *read;
    if (haveSameResults(before, row) || !haveSameResults(before, *known))
        return;
    const bool optimize = known->Optimize;
    *known = row;
    known->Optimize = optimize;
}

void LookupSession::onCompleted()
{
    const QPointer<LookupSession> alive(this);
    reportFailure(m_app, u"frmMain_LookUpComplete: "_s, [&] {
        m_inSearch = 0;
        takeForeignResults();
        Keywords->SaveKeywordResults();
        m_read = Keywords->Keywords;
        Q_EMIT rowsChanged();
        if (alive && writeReport)
            writeReport();
        if (alive && m_lookupKind == LookupKind::All)
            Q_EMIT Completed();
        if (alive && !Schedle)
            Q_EMIT panelChanged(Panel::Description, u"Look up completed"_s);
        if (alive && !Schedle)
            Q_EMIT stateChanged();
    });
    if (alive)
        Q_EMIT ended(true);
}

void LookupSession::onCancelled()
{
    const QPointer<LookupSession> alive(this);
    reportFailure(m_app, u"frmSondrel_m_oRanking_Cancelled error: "_s, [&] {
        m_inSearch = 0;
        Q_EMIT rowsChanged();
        if (alive && !Schedle)
            Q_EMIT panelChanged(Panel::First, u"stop"_s);
        if (alive && !Schedle)
            Q_EMIT stateChanged();
    });
    if (alive)
        Q_EMIT ended(false);
}

void LookupSession::Disconnect()
{
    reportFailure(m_app, u"frmAuto_Disconnect error :  "_s, [&] {
        if (m_inSearch != 1 || !m_ranking)
            return;
        const QPointer<LookupSession> alive(this);
        Q_EMIT stopping();
        if (alive && m_ranking)
            m_ranking->Disconnect();
    });
}

void LookupSession::startSoon()
{
    m_tmrScheduler->setEnabled(true);
}

void LookupSession::onSchedulerTick()
{
    reportFailure(m_app, u"frmSondrel_tmrScheduler timer event error:  "_s, [&] {
        m_tmrScheduler->setEnabled(false);
        m_app.WriteErrorLog(u"Scheduler timer start ..."_s);
        if (m_inSearch == 0)
            LookupALLKeyword();
        else
            Q_EMIT Completed();
    });
}

void LookupSession::unload()
{
    if (Online()) {
        const QPointer<LookupSession> alive(this);
        Disconnect();
        m_app.desktop.runPendingEvents();
        if (!alive)
            return;
    }
    m_ranking.reset();
    m_inSearch = 0;
}

} // namespace sondrel
