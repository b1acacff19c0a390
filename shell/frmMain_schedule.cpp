// What the main window shows and asks of the scheduler.
#include "shell/frmMain.h"

#include "shell/frmSondrel.h"
#include "shell/status_panels.h"
#include "shell/tree_nodes.h"

#include <QSignalBlocker>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

namespace sondrel {

void frmMain::makeScheduler()
{
    SchedulerView &view = *this;
    m_scheduler = std::make_unique<Scheduler>(m_app, view, m_reports);
    connect(m_scheduler.get(), &Scheduler::runFinished, this, &frmMain::restoreProgress);
}

void frmMain::setScheduler(bool enabled, const QString &panelText)
{
    m_scheduler->setEnabled(enabled);
    m_panels->setAutoRun(panelText);
}

LookupSession *frmMain::shownSession() const
{
    return m_child ? &m_child->session() : nullptr;
}

void frmMain::showResults(const std::shared_ptr<clsAccount> &account)
{
    m_account = account;
    m_child->setAccount(account);
    m_child->ResetForm();
}

void frmMain::showAutoRun(const QString &text)
{
    m_panels->setAutoRun(text);
}

QList<QTreeWidgetItem *> frmMain::nodes() const
{
    QList<QTreeWidgetItem *> nodes;
    for (QTreeWidgetItemIterator it(m_tree); *it; ++it)
        nodes.append(*it);
    return nodes;
}

QStringList frmMain::nodeKeys() const
{
    QStringList keys;
    for (const QTreeWidgetItem *node : nodes())
        keys.append(nodeKey(node));
    return keys;
}

void frmMain::openNode(int position)
{
    QTreeWidgetItem *node = nodes().at(position - 1);
    {
        const QSignalBlocker quiet(m_tree);
        m_tree->setCurrentItem(node);
    }
    clickNode(node);
}

// The reports of a run have had the bar for their own progress.
void frmMain::restoreProgress()
{
    if (lookupRuns())
        m_panels->setProgress(m_child->session().progressValue(), m_child->session().progressMaximum());
    else if (!m_reporting)
        m_panels->hideProgress();
}

// Asked only when the first question has been answered: a run may begin and end meanwhile.
AutoLookup frmMain::autoLookup()
{
    return {[this] { return m_scheduler->autoSession() && m_scheduler->autoSession()->Online(); },
            [this] {
                if (LookupSession *session = m_scheduler->autoSession())
                    session->Disconnect();
            }};
}

} // namespace sondrel
