#include "automation/scheduler.h"

#include "automation/auto_run_state.h"
#include "core/text_fold.h"
#include "core/values.h"
#include "mail/clsSendMail.h"
#include "reports/html_report.h"
#include "reports/report_mail.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr int ScanInterval = 60000; // ms
constexpr int NextInterval = 1000;  // ms
constexpr int ScansBetweenReminders = 60;

bool isShown(const LookupSession &shown, const QString &project, const QString &engine)
{
    return equalsIgnoringCase(shown.AccountName(), project) && equalsIgnoringCase(shown.EngineName, engine);
}

} // namespace

Scheduler::Scheduler(ApplicationContext &app, SchedulerView &view, ReportSet &reports)
    : m_app(app),
      m_view(view),
      m_reports(reports),
      m_tmrScheduler(app.clock.createTimer(ScanInterval, [this] { scan(); })),
      m_tmrNext(app.clock.createTimer(NextInterval, [this] { onNext(); }))
{
}

Scheduler::~Scheduler() = default;

void Scheduler::setEnabled(bool enabled)
{
    if (m_tmrScheduler->isEnabled() != enabled)
        m_tmrScheduler->setEnabled(enabled);
}

void Scheduler::scan()
{
    reportFailure(m_app, u"tmrScheduler_Timer: "_s, [&] {
        if (m_autoRunning)
            remindOfRun();
        else
            findDueProject();
    });
}

// The first due project from where the last scan stopped to the end of the list.
void Scheduler::findDueProject()
{
    const QStringList projects = m_view.projects();
    if (projects.isEmpty())
        return;
    if (m_scanIndex >= projects.size())
        m_scanIndex = 0;
    while (m_scanIndex < projects.size()) {
        m_autoAccount = std::make_shared<clsAccount>(m_app);
        m_autoAccount->Name = projects.at(m_scanIndex);
        ++m_scanIndex;
        m_autoAccount->GetSettings();
        logOnce(*m_autoAccount);
        if (isDue(*m_autoAccount, m_app.clock.now()) && !ranTodayInVain(*m_autoAccount)) {
            StartAutoRun();
            return;
        }
        m_autoAccount.reset();
    }
}

void Scheduler::logOnce(const clsAccount &account)
{
    if (m_loggedOnce)
        return;
    m_loggedOnce = true;
    m_app.WriteErrorLog(u"Account '%1': SchedulerEnable=%2, NextLookup=%3, Time=%4"_s.arg(
        account.Name, booleanText(account.SchedulerEnable), shortDate(m_app.locale, account.NextLookup),
        account.StartTime));
}

// A run that hangs keeps the scheduler waiting; the log says for what.
void Scheduler::remindOfRun()
{
    if (++m_scansOnEngine % ScansBetweenReminders != 0 || !m_autoAccount || !m_session)
        return;
    m_app.WriteErrorLog(u"Scheduler waits for the look up of '%1' on '%2', which runs since %3"_s.arg(
        m_autoAccount->Name, m_session->EngineName, generalDate(m_app.locale, m_engineStart)));
}

// The date moves first: a crash in the run does not repeat it at the next start.
void Scheduler::StartAutoRun()
{
    moveDate(*m_autoAccount);
    m_autoEngineIndex = 0;
    startNextEngine();
}

// Where the disk is full or may not be written the date on it stays, and the project is due as before: once a
// day is enough then.
void Scheduler::moveDate(clsAccount &account)
{
    const QDate before = account.NextLookup;
    account.SetNextLookupDate(m_app.clock.today());
    clsAccount stored = account;
    stored.GetSettings();
    if (stored.NextLookup != account.NextLookup)
        m_unmoved.insert(folded(account.Name), {before, m_app.clock.today()});
    else
        m_unmoved.remove(folded(account.Name));
}

bool Scheduler::ranTodayInVain(const clsAccount &account) const
{
    const auto unmoved = m_unmoved.constFind(folded(account.Name));
    return unmoved != m_unmoved.constEnd() && unmoved->date == account.NextLookup &&
           unmoved->day == m_app.clock.today();
}

void Scheduler::startNextEngine()
{
    reportFailure(m_app, u"Scheduler_Error: "_s, [&] {
        m_app.WriteErrorLog(u"Scheduler start auto ranking at "_s +
                            generalDate(m_app.locale, m_app.clock.now()));
        if (!m_autoAccount)
            return;
        ++m_autoEngineIndex;
        const auto &engines = m_autoAccount->Engine;
        if (!engines || m_autoEngineIndex > engines->Count()) {
            ClearAutoBidAcct();
            return;
        }
        m_autoRunning = true;
        AutoBid(engines->at(m_autoEngineIndex));
    });
}

void Scheduler::AutoBid(const QString &engine)
{
    reportFailure(m_app, u"frmMain_AutoBid error:  "_s, [&] {
        m_app.WriteErrorLog(u"Start auto look up ...sEngine="_s + engine);
        m_app.LookupRequested = true;
        m_engineStart = m_app.clock.now();
        m_scansOnEngine = 0;
        m_session = std::make_unique<LookupSession>(m_app);
        m_session->Account = m_autoAccount;
        m_session->EngineName = engine;
        m_session->Schedle = true;
        LookupSession &session = *m_session;
        session.writeReport = [this, &session] {
            CreateHTMLReport(m_app, *session.Account, session.EngineName, session.Keywords->Keywords, {});
        };
        connect(&session, &LookupSession::Completed, this, [this] { m_tmrNext->setEnabled(true); });
        ShowAutoRunState();
        session.open();
        session.startSoon();
    });
}

void Scheduler::onNext()
{
    reportFailure(m_app, u"tmrNext_Timer error: "_s, [&] {
        m_tmrNext->setEnabled(false);
        refreshShown();
        if (m_session)
            m_session->unload();
        m_session.reset();
        startNextEngine();
    });
}

// What the run has found is shown where the user looks at the same engine.
void Scheduler::refreshShown()
{
    LookupSession *shown = m_view.shownSession();
    if (!m_session || !shown || !m_view.CurrentAccount() ||
        !equalsIgnoringCase(m_view.CurrentAccount()->Name, m_session->AccountName()) ||
        !isShown(*shown, m_session->AccountName(), m_session->EngineName))
        return;
    if (shown->Online())
        refreshWhenShownEnds(*shown);
    else
        m_view.showResults(m_autoAccount);
}

// Reading the results anew would take the rows away from under the run that fills them.
void Scheduler::refreshWhenShownEnds(LookupSession &shown)
{
    connect(
        &shown, &LookupSession::ended, this,
        [this, &shown, account = m_autoAccount, engine = m_session->EngineName] {
            if (&shown == m_view.shownSession() && !shown.Online() && isShown(shown, account->Name, engine))
                m_view.showResults(account);
        },
        Qt::SingleShotConnection);
}

void Scheduler::unload()
{
    m_tmrScheduler->setEnabled(false);
    m_tmrNext->setEnabled(false);
    if (m_session)
        m_session->unload();
    m_session.reset();
}

void Scheduler::ClearAutoBidAcct()
{
    const QString project = m_autoAccount ? m_autoAccount->Name : QString();
    reportFailure(m_app, u"frmMain_ClearAutoBidAcct error: "_s, [&] {
        m_autoRunning = false;
        if (m_autoAccount)
            finishProject(*m_autoAccount);
        m_autoAccount.reset();
        ShowAutoRunState();
    });
    Q_EMIT runFinished(project);
}

void Scheduler::finishProject(clsAccount &account)
{
    writeReportSet(account);
    account.SetNextLookupDate(m_app.clock.today());
    if (account.SentReport)
        SentReport(account);
}

// The details pages show the stored pages of the keywords that the window shows; of a project that is not on
// show its own are taken.
void Scheduler::writeReportSet(const clsAccount &account)
{
    const LookupSession *shown = m_view.shownSession();
    if (shown && equalsIgnoringCase(shown->AccountName(), account.Name)) {
        m_reports.writePages(account, shown->Keywords->Keywords);
    } else {
        clsKeywords keywords(m_app);
        keywords.AccountName = account.Name;
        keywords.LoadKeywords();
        m_reports.writePages(account, keywords.Keywords);
    }
    m_reports.CreateHTMLReportIndex(account.Name);
}

void Scheduler::ShowAutoRunState()
{
    reportFailure(m_app, u"frmMain_ShowAutoRunState error: "_s, [&] {
        const std::shared_ptr<clsAccount> current = m_view.CurrentAccount();
        if (!current)
            return;
        const bool isLookedUp = m_autoAccount && m_session &&
                                equalsIgnoringCase(m_autoAccount->Name, current->Name) &&
                                equalsIgnoringCase(m_session->EngineName, m_view.CurrentEngine());
        if (const auto text = autoRunText(m_app, *current, isLookedUp))
            m_view.showAutoRun(*text);
    });
}

void Scheduler::SentReport(const clsAccount &account)
{
    std::unique_ptr<clsSendMail> mail = newReportMail(m_app, account);
    if (!mail)
        return;
    clsSendMail *sending = mail.release();
    sending->setParent(this);
    ++m_mails;
    connect(sending, &clsSendMail::SendMailError, this,
            [this](qint32, const QString &text) { m_app.WriteErrorLog(u"SentReport_Error: "_s + text); });
    connect(sending, &clsSendMail::Completed, this, [this, sending](qint32 number, const QString &text) {
        if (number != 0)
            m_app.WriteErrorLog(u"SentReport_Error: "_s + text);
        sending->deleteLater();
        if (--m_mails == 0)
            Q_EMIT mailsFinished();
    });
    sending->SendMail();
}

} // namespace sondrel
