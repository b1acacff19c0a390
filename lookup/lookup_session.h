// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "lookup/clsRanking.h"
#include "project/clsAccount.h"
#include "project/clsKeywords.h"

#include <QObject>
#include <QSet>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace sondrel {

/// A selected row of the keyword grid, as its cells read.
struct SelectedRow
{
    QString Keyword;
    bool Show = true;
};

/// The state and steps of looking one project's keywords up on one engine: which keywords go into a run, how
/// it is followed and stopped, and what happens to its results. A window shows it; the scheduler runs one
/// hidden. A handler of its signals may destroy it.
class LookupSession final : public QObject
{
    Q_OBJECT

public:
    explicit LookupSession(ApplicationContext &app);
    ~LookupSession() override;

    /// Panels of a status bar that a run writes to.
    enum class Panel { First, Description };
    enum class LookupKind : qint16 { None = 0, Selected = 1, All = 2 };

    std::shared_ptr<clsAccount> Account;
    QString EngineName;
    /// The rows of this project and engine; made anew by open().
    std::unique_ptr<clsKeywords> Keywords;
    /// True when the scheduler owns this session: nothing is said to a status bar then.
    bool Schedle = false;
    /// Runs between the redraw and Completed of a finished run, so that the engine's report shows its
    /// results.
    std::function<void()> writeReport;

    /// Loads the project's keywords and the engine's stored results.
    void open();
    QString AccountName() const;
    /// True while a run is under way.
    bool Online() const { return m_inSearch > 0; }
    LookupKind lookupKind() const { return m_lookupKind; }
    /// First keyword of the run; the grid scrolls back to it.
    QString FirstKeyword() const { return m_firstKeyword; }
    int progressValue() const { return m_progressValue; }
    int progressMaximum() const { return m_progressMaximum; }

    /// Looks the selected rows up that are shown and no further hits. hasRows tells whether the grid has any.
    void LookUpSelectedKeyword(bool hasRows, const std::vector<SelectedRow> &selection);
    /// Looks every keyword up, after dropping the further hits of the last run.
    void LookupALLKeyword();
    /// Starts the prepared run, unless one is under way or none is prepared.
    void connect();
    /// Removes the rows of further hits.
    void DeleteAllDuplicateKeywords();
    /// Stops the run; cancelled follows.
    void Disconnect();
    /// Starts LookupALLKeyword in a second, from the event loop.
    void startSoon();
    /// Lets go of a run before the session is destroyed.
    void unload();

Q_SIGNALS:
    /// A run over all keywords has ended, or a run could not begin.
    void Completed();
    /// Rows have changed; the row of FirstKeyword is to be selected again.
    void rowsChanged();
    void progressChanged(int value, int maximum);
    void panelChanged(sondrel::LookupSession::Panel panel, const QString &text);
    /// What may be done has changed: a run has begun or ended.
    void stateChanged();
    /// A stop is under way; it need not be asked for again.
    void stopping();
    /// A run has ended: finished (true) or stopped.
    void ended(bool finished);

private:
    void refuse(const QString &title, MessageIcon icon, const QString &text);
    void CreateRanking(const QStringList &keywords);
    void onProgress();
    void onCompleted();
    void onCancelled();
    void onSchedulerTick();
    void takeForeignResults();
    void takeForeignRow(const clsKeyword &row);

    ApplicationContext &m_app;
    std::unique_ptr<clsRanking> m_ranking; // kept until the next run
    std::unique_ptr<ClockTimer> m_tmrScheduler;
    qint16 m_inSearch = 0;
    LookupKind m_lookupKind = LookupKind::None;
    QString m_firstKeyword;
    QSet<QString> m_inRun;         // the keywords of the run, folded
    Collection<clsKeyword> m_read; // the rows as this session has last read or saved them
    int m_progressValue = 0;
    int m_progressMaximum = 0;
};

} // namespace sondrel
