// The projects of the main window, their engines and URLs.
#include "shell/frmMain.h"

#include "shell/account_urls.h"
#include "shell/frmAccount.h"
#include "shell/frmSondrel.h"
#include "shell/program_icons.h"
#include "shell/project_tree.h"
#include "shell/status_panels.h"
#include "shell/tree_nodes.h"

#include <QAction>
#include <QComboBox>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

void frmMain::showProjects()
{
    m_projects->clear();
    m_projects->addItems(m_state.Projects);
}

void frmMain::selectProject(int index)
{
    m_projects->setCurrentIndex(index);
    chooseProject();
}

bool frmMain::hasProjects() const
{
    return m_projects->count() > 0;
}

bool frmMain::lookupRuns() const
{
    return m_child && m_child->Online();
}

// Not while a project without engines is chosen: the grid stands behind, with what another one left in it.
bool frmMain::showsChild() const
{
    return m_child && m_account && m_child->AccountName() == m_account->Name &&
           m_tree->topLevelItemCount() > 0;
}

QStringList frmMain::projects() const
{
    QStringList names;
    for (int i = 0; i < m_projects->count(); ++i)
        names.append(m_projects->itemText(i));
    return names;
}

QString frmMain::selectedUrl() const
{
    const QTreeWidgetItem *item = m_urls->currentItem();
    return item ? item->text(0) : QString();
}

void frmMain::chooseProject()
{
    reportFailure(m_app, u"frmMain_cboAccount_Click error: "_s, [&] {
        if (lookupRuns()) { // the project under lookup stays
            m_projects->setCurrentText(m_account ? m_account->Name : QString());
            return;
        }
        m_account = std::make_shared<clsAccount>(m_app);
        m_account->Name = m_projects->currentText();
        m_account->GetSettings();
        showUrls();
        PopulateEngine();
        if (m_tree->topLevelItemCount() == 0) // else the chosen engine has told already
            ShowAutoRunState();
    });
    UpdateUI();
    showHint();
}

void frmMain::showUrls()
{
    PopulateAccountURLs(m_app, m_account && m_account->URLs ? &*m_account->URLs : nullptr, *m_urls);
}

void frmMain::PopulateEngine()
{
    reportFailure(m_app, u"frmMain_PopulateEngine error: "_s, [&] {
        const QSignalBlocker quiet(m_tree);
        m_tree->clear();
        if (!lookupRuns()) // the engine under lookup stays the chosen one
            m_nodeKey.clear();
        const auto *engines = m_account && m_account->Engine ? &*m_account->Engine : nullptr;
        if (!m_app.EngineCatalogue)
            return;
        for (const MarketNode &market :
             projectTree(m_app, m_app.EngineCatalogue->GetEngineNameMarketCol(), engines)) {
            QTreeWidgetItem *marketNode = AddRootNode(market.Market, *m_tree);
            if (!marketNode) // named before, with other markets in between
                marketNode = findNode(*m_tree, marketKey(market.Market));
            marketNode->setIcon(0, programIcon(u"market"_s));
            marketNode->setExpanded(true);
            for (const QString &engine : market.Engines) {
                auto *node = new QTreeWidgetItem(marketNode, {engine});
                setNodeKey(*node, engineKey(engine));
                node->setIcon(0, programIcon(u"engine"_s));
            }
        }
        QTreeWidgetItem *chosen = m_engine.isEmpty() ? nullptr : findNode(*m_tree, engineKey(m_engine));
        if (!chosen && m_tree->topLevelItemCount() > 0)
            chosen = m_tree->topLevelItem(0)->child(0);
        if (!chosen)
            return;
        m_tree->setCurrentItem(chosen);
        m_tree->scrollToItem(chosen);
        clickNode(chosen);
    });
}

void frmMain::clickNode(QTreeWidgetItem *node)
{
    reportFailure(m_app, u"frmMain_tvwAccount_NodeClick error: "_s, [&] {
        if (!node)
            return;
        if (lookupRuns()) {
            // From the event loop: the tree is still in the middle of its own change.
            QMetaObject::invokeMethod(this, &frmMain::selectCurrentNode, Qt::QueuedConnection);
            return;
        }
        if (nodeKey(node) == m_nodeKey)
            return;
        m_nodeKey = nodeKey(node);
        if (isEngineKey(m_nodeKey)) {
            m_engine = node->text(0);
            ShowAutoRunState();
            MenuBid();
        } else {
            m_engine.clear();
        }
    });
    UpdateUI();
    showHint();
}

void frmMain::selectCurrentNode()
{
    const QSignalBlocker quiet(m_tree);
    if (QTreeWidgetItem *node = findNode(*m_tree, m_nodeKey))
        m_tree->setCurrentItem(node);
}

void frmMain::MenuBid()
{
    reportFailure(m_app, u"frmMain_MenuBid error:  "_s, [&] {
        if (!m_account || m_account->Name.isEmpty())
            return;
        if (!m_child) {
            m_child = new frmSondrel(
                m_app,
                {action(Command::AddKeywords), action(Command::ShowAll), action(Command::LookupSelected)},
                m_right);
            connectChild();
            m_right->addWidget(m_child);
        } else if (m_child->AccountName() == m_account->Name && m_child->EngineName() == m_engine) {
            m_child->setAccount(m_account);
            m_child->HightLightResultURL();
            return;
        } else if (m_child->Online()) {
            return;
        }
        m_child->setAccount(m_account);
        m_child->setEngineName(m_engine);
        m_child->ResetForm();
    });
}

void frmMain::connectChild()
{
    connect(m_child, &frmSondrel::factsChanged, this, &frmMain::UpdateUI);
    for (const Command command : {Command::DeleteKeywords, Command::CopyKeywords, Command::PasteKeywords})
        m_child->addGridAction(action(command));
    LookupSession &session = m_child->session();
    session.writeReport = [this] { writeEngineReport(); };
    connect(&session, &LookupSession::Completed, m_scheduler.get(), &Scheduler::onShownSessionCompleted);
    connect(&session, &LookupSession::panelChanged, this,
            [this](LookupSession::Panel panel, const QString &text) {
                if (panel == LookupSession::Panel::First)
                    m_panels->setFirst(text);
                else
                    m_panels->setDescription(text);
            });
    connect(&session, &LookupSession::progressChanged, this, [this](int value, int maximum) {
        if (value == 0) // a run begins; what the last one said is past
            m_panels->setFirst({});
        m_panels->setProgress(value, maximum);
    });
    connect(&session, &LookupSession::ended, this, [this](bool finished) {
        m_panels->hideProgress();
        if (!finished)
            m_panels->setDescription({});
        UpdateUI(); // whatever failed at the end, the lookup is over
    });
    connect(&session, &LookupSession::stopping, this, [this] { action(Command::Stop)->setEnabled(false); });
}

// After a start that failed before it reached the projects, the list is still to be read: without it a new
// project would take the place of all others.
void frmMain::loadProjectList()
{
    if (m_state.Main)
        return;
    m_state.Main = std::make_unique<clsMain>(m_app);
    m_state.Main->loadAccount(m_state.Projects);
    showProjects();
}

void frmMain::AddAccount()
{
    reportFailure(m_app, u"frmMain_AddAccount error: "_s, [&] {
        if (lookupRuns())
            return;
        loadProjectList();
        const auto account = std::make_shared<clsAccount>(m_app);
        frmAccount dialog(m_app, isVisible() ? this : nullptr);
        dialog.setAccount(account);
        dialog.exec();
        if (!dialog.Cancelled()) {
            m_projects->addItem(account->Name);
            selectProject(m_projects->count() - 1);
            ShowAutoRunState();
        }
        m_state.Main->SaveAccount(projects());
    });
}

void frmMain::EditAccount()
{
    reportFailure(m_app, u"frmMain_EditAccount error: "_s, [&] {
        if (lookupRuns() || m_projects->currentText().isEmpty() || !m_account)
            return;
        frmAccount dialog(m_app, this);
        dialog.setAccount(m_account);
        dialog.exec();
        if (!dialog.Cancelled()) {
            m_projects->setItemText(m_projects->currentIndex(), m_account->Name);
            showUrls();
            PopulateEngine();
            UpdateUI();
            showHint();
        }
        ShowAutoRunState();
        m_state.Main->SaveAccount(projects());
    });
}

void frmMain::DeleteAccount()
{
    reportFailure(m_app, u"frmMain_DeleteAccount error: "_s, [&] {
        if (lookupRuns() || m_projects->currentIndex() < 0 || !m_account)
            return;
        const MessageAnswer answer = m_app.desktop.showMessage(
            {u"Delete Keyword"_s, u"Are you sure you want to delete selected Account?"_s,
             MessageIcon::Question, MessageButtons::YesNo});
        if (answer != MessageAnswer::Yes)
            return;
        m_account->DeleteFile();
        m_projects->removeItem(m_projects->currentIndex());
        if (hasProjects())
            selectProject(0);
        else
            showNoProject();
        m_state.Main->SaveAccount(projects());
    });
}

void frmMain::showNoProject()
{
    if (m_child) {
        m_child->unload();
        delete m_child;
        m_child = nullptr;
    }
    ShowOrOptimized(textOf(Command::ShowOptimized).number); // as the next grid will come up
    const QSignalBlocker quiet(m_tree);
    m_tree->clear();
    m_urls->clear();
    m_account.reset();
    m_engine.clear();
    m_nodeKey.clear();
    m_panels->setDescription({});
    UpdateUI();
    showHint();
}

} // namespace sondrel
