// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "lookup/lookup_session.h"
#include "project/clsAccount.h"
#include "reports/report_set.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QStringList>

#include <memory>

namespace sondrel {

/// The window whose projects the scheduler looks after.
class SchedulerView
{
public:
    virtual ~SchedulerView() = default;

    virtual QStringList projects() const = 0;
    /// The project on show, the engine that is selected of it, and the session of both; null when there is
    /// none.
    virtual std::shared_ptr<clsAccount> CurrentAccount() const = 0;
    virtual QString CurrentEngine() const = 0;
    virtual LookupSession *shownSession() const = 0;
    /// Shows the project anew, with the results on disk.
    virtual void showResults(const std::shared_ptr<clsAccount> &account) = 0;
    /// What the panel "AutoRun" says.
    virtual void showAutoRun(const QString &text) = 0;
    /// Keys of all nodes of the tree of engines, in order.
    virtual QStringList nodeKeys() const = 0;
    /// Opens a node as a click does; counted from 1.
    virtual void openNode(int position) = 0;
};

/// Looks due projects up by itself, one after the other, each on its engines in turn, in a session that
/// nobody sees; then writes and mails their reports. Runs the project on show over all of its engines, too.
class Scheduler final : public QObject
{
    Q_OBJECT

public:
    /// The view and the reports outlive it.
    Scheduler(ApplicationContext &app, SchedulerView &view, ReportSet &reports);
    ~Scheduler() override;

    /// Switches the scan for due projects on or off; a run goes on.
    void setEnabled(bool enabled);
    bool isEnabled() const { return m_tmrScheduler->isEnabled(); }
    /// One scan, as once a minute.
    void scan();

    /// True while a project is being looked up.
    bool AutoRunning() const { return m_autoRunning; }
    const std::shared_ptr<clsAccount> &AutoAccount() const { return m_autoAccount; }
    /// The session of the run; null between two engines.
    LookupSession *autoSession() const { return m_session.get(); }
    /// Lets go of the session of the run, as the program ends.
    void unload();

    void ShowAutoRunState();

    /// Looks all keywords of the project on show up on each of its engines.
    void startAllEngines();
    /// "St&op" has been asked for.
    void requestStop() { m_stopRequested = true; }
    /// The session on show has completed.
    void onShownSessionCompleted();
    bool AllEngineMode() const { return m_allEngineMode; }
    bool StopRequested() const { return m_stopRequested; }

    /// Mails the project's reports, if it names a recipient.
    void SentReport(const clsAccount &account);
    bool isMailing() const { return m_mails > 0; }

Q_SIGNALS:
    /// A scheduled run is over, its reports written; a mail may still be under way.
    void runFinished(const QString &project);
    /// The last mail is over.
    void mailsFinished();

private:
    void findDueProject();
    void logOnce(const clsAccount &account);
    bool ranTodayInVain(const clsAccount &account) const;
    void StartAutoRun();
    void moveDate(clsAccount &account);
    void startNextEngine();
    void AutoBid(const QString &engine);
    void ClearAutoBidAcct();
    void finishProject(clsAccount &account);
    void onNext();
    void refreshShown();
    void refreshWhenShownEnds(LookupSession &shown);
    void remindOfRun();
    void writeReportSet(const clsAccount &account);
    void LookupAllKeywordForAllEngine();
    int nextEngineNode();
    void finishAllEngines();

    ApplicationContext &m_app;
    SchedulerView &m_view;
    ReportSet &m_reports;
    std::unique_ptr<ClockTimer> m_tmrScheduler;
    std::unique_ptr<ClockTimer> m_tmrNext;
    std::shared_ptr<clsAccount> m_autoAccount;
    std::unique_ptr<LookupSession> m_session;
    bool m_autoRunning = false;
    bool m_loggedOnce = false;
    int m_scanIndex = 0;
    qint16 m_autoEngineIndex = 0;
    /// A date that could not be moved on disk, and the day on which the project ran all the same.
    struct Unmoved
    {
        QDate date;
        QDate day;
    };
    QHash<QString, Unmoved> m_unmoved; // by the project's name, folded
    QDateTime m_engineStart;
    int m_scansOnEngine = 0; // while the present engine is looked up

    bool m_allEngineMode = false;
    bool m_stopRequested = false;
    qint16 m_nodeIndex = 0;
    int m_mails = 0;
};

} // namespace sondrel
