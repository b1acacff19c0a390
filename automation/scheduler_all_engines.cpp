// The project on show, looked up on each of its engines.
#include "automation/scheduler.h"

#include "core/text_fold.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

void Scheduler::startAllEngines()
{
    m_app.LookupRequested = true;
    m_reports.ReportsFresh = false;
    m_nodeIndex = 0;
    m_allEngineMode = true;
    LookupAllKeywordForAllEngine();
}

void Scheduler::LookupAllKeywordForAllEngine()
{
    reportFailure(m_app, u"frmMain_LookupAllKeywordForAllEngine error: "_s, [&] {
        const int node = nextEngineNode();
        if (node == 0) {
            finishAllEngines();
            return;
        }
        m_view.openNode(node);
        if (LookupSession *shown = m_view.shownSession())
            shown->startSoon();
    });
}

// The next node of an engine, counted from 1; 0 behind the last one.
int Scheduler::nextEngineNode()
{
    const QStringList keys = m_view.nodeKeys();
    for (++m_nodeIndex; m_nodeIndex <= keys.size(); ++m_nodeIndex) {
        if (containsIgnoringCase(keys.at(m_nodeIndex - 1), u"Engine"))
            return m_nodeIndex;
    }
    return 0;
}

void Scheduler::finishAllEngines()
{
    m_allEngineMode = false;
    const std::shared_ptr<clsAccount> account = m_view.CurrentAccount();
    if (!account)
        return;
    writeReportSet(*account);
    m_reports.ReportsFresh = true;
    if (account->SentReport)
        SentReport(*account);
    m_app.desktop.beep();
}

void Scheduler::onShownSessionCompleted()
{
    if (m_allEngineMode && !m_stopRequested)
        LookupAllKeywordForAllEngine();
    else
        m_stopRequested = false;
}

} // namespace sondrel
