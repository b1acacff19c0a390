#include "shell/frmMain.h"

#include "core/clsPreference.h"
#include "shell/account_urls.h"
#include "shell/center_form.h"
#include "shell/frmSondrel.h"
#include "shell/program_icons.h"
#include "shell/project_tree.h"
#include "shell/shut_down.h"
#include "shell/status_panels.h"
#include "shell/tree_nodes.h"

#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QToolButton>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QTreeWidgetItem *newNode(const QString &key, const QString &text, const QString &icon)
{
    auto *node = new QTreeWidgetItem({text});
    setNodeKey(*node, key);
    node->setIcon(0, programIcon(icon));
    return node;
}

} // namespace

frmMain::frmMain(ApplicationContext &app, QWidget *parent) : QMainWindow(parent), m_app(app), m_reports(app, reportStatus())
{
    setObjectName(u"frmMain"_s);
    setWindowTitle(app.deployment.Title);
    setWindowIcon(applicationIcon());
    resize(1100, 720);
    buildMenus();
    buildToolBar();
    buildLeftPane();
    buildStatusBar();
    connectWidgets();
    connectCommands();
    openUrlBox(false);
    UpdateUI();
    showHint();
}

frmMain::~frmMain()
{
    delete m_child; // uses what goes before a QObject's children do
    if (m_state.Catalogue)
        releaseMainWindow(m_app, m_state);
}

void frmMain::connectWidgets()
{
    connect(m_projects, &QComboBox::activated, this, &frmMain::chooseProject);
    connect(m_tree, &QTreeWidget::currentItemChanged, this,
            [this](QTreeWidgetItem *node) { clickNode(node); });
    connect(m_tree, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem *node) {
        if (isEngineKey(nodeKey(node)))
            EditAccount();
    });
    connect(m_tree, &QWidget::customContextMenuRequested, this, [this](const QPoint &place) {
        const QTreeWidgetItem *node = m_tree->itemAt(place);
        if (node && isEngineKey(nodeKey(node)))
            m_engineMenu->popup(m_tree->viewport()->mapToGlobal(place));
    });
    connect(m_urls, &QTreeWidget::itemActivated, this, &frmMain::openUrl);
    connect(m_urls, &QTreeWidget::itemSelectionChanged, this, &frmMain::UpdateUI);
    connect(m_urls, &QWidget::customContextMenuRequested, this,
            [this](const QPoint &place) { m_urlMenu->popup(m_urls->viewport()->mapToGlobal(place)); });
    connect(m_arrow, &QToolButton::clicked, this, [this] { openUrlBox(!m_urlBoxOpen); });
    connect(m_property, &QAction::triggered, this, [this] {
        if (m_child)
            m_child->mnuKeywordsItemClick(9); // no command of its own: it saves
    });
    connect(m_stats, &QAction::triggered, this, &frmMain::openStatistics);
}

void frmMain::load()
{
    ResetReporter();
    loadMainWindow(m_app, *this, m_state);
    UpdateUI();
    showHint();
}

void frmMain::placeWindow(const MainWindowSettings &settings)
{
    openUrlBox(settings.urlBoxOpen);
    CenterForm(*this);
    if (!settings.place || isMaximized() || isMinimized())
        return;
    const QRect wanted(settings.place->left, settings.place->top, settings.place->width,
                       settings.place->height);
    // A screen may have gone since; a window that nobody can reach helps nobody.
    if (QGuiApplication::screenAt(wanted.center()))
        setGeometry(wanted);
}

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
        UpdateUI();
        showHint();
    });
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
        m_nodeKey.clear();
        const auto *engines = m_account && m_account->Engine ? &*m_account->Engine : nullptr;
        QTreeWidgetItem *chosen = nullptr;
        for (const MarketNode &market :
             projectTree(m_app, m_state.Catalogue->GetEngineNameMarketCol(), engines)) {
            auto *marketItem = newNode(marketKey(market.Market), market.Market, u"market"_s);
            m_tree->addTopLevelItem(marketItem);
            marketItem->setExpanded(true);
            for (const QString &engine : market.Engines) {
                auto *engineItem = newNode(engineKey(engine), engine, u"engine"_s);
                marketItem->addChild(engineItem);
                if (engine == m_engine)
                    chosen = engineItem;
            }
        }
        if (!chosen && m_tree->topLevelItemCount() > 0)
            chosen = m_tree->topLevelItem(0)->child(0);
        if (chosen) {
            m_tree->setCurrentItem(chosen);
            clickNode(chosen);
        }
    });
}

void frmMain::clickNode(QTreeWidgetItem *node)
{
    reportFailure(m_app, u"frmMain_tvwAccount_NodeClick error: "_s, [&] {
        if (!node || nodeKey(node) == m_nodeKey)
            return;
        if (lookupRuns()) {
            // From the event loop: the tree is still in the middle of its own change.
            QMetaObject::invokeMethod(this, &frmMain::selectCurrentNode, Qt::QueuedConnection);
            return;
        }
        m_nodeKey = nodeKey(node);
        if (isEngineKey(m_nodeKey)) {
            m_engine = node->text(0);
            MenuBid();
        } else {
            m_engine.clear();
        }
        UpdateUI();
        showHint();
    });
}

void frmMain::selectCurrentNode()
{
    const QSignalBlocker quiet(m_tree);
    for (QTreeWidgetItemIterator it(m_tree); *it; ++it) {
        if (nodeKey(*it) == m_nodeKey)
            m_tree->setCurrentItem(*it);
    }
}

void frmMain::MenuBid()
{
    reportFailure(m_app, u"frmMain_MenuBid error:  "_s, [&] {
        if (!m_account || m_account->Name.isEmpty())
            return;
        if (!m_child) {
            m_child = new frmSondrel(m_app, m_right);
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
    LookupSession &session = m_child->session();
    session.writeReport = [this] { writeEngineReport(); };
    connect(&session, &LookupSession::panelChanged, this,
            [this](LookupSession::Panel panel, const QString &text) {
                if (panel == LookupSession::Panel::First)
                    m_panels->setFirst(text);
                else
                    m_panels->setDescription(text);
            });
    connect(&session, &LookupSession::progressChanged, m_panels, &StatusPanels::setProgress);
    connect(&session, &LookupSession::ended, this, [this](bool finished) {
        m_panels->hideProgress();
        if (!finished)
            m_panels->setDescription({});
    });
    connect(&session, &LookupSession::stopping, this, [this] { action(Command::Stop)->setEnabled(false); });
}

// An empty program is an invitation.
void frmMain::showHint()
{
    const bool hasEngines = m_tree->topLevelItemCount() > 0;
    const bool shown = m_child && m_account && !m_engine.isEmpty() && hasEngines;
    m_right->setCurrentIndex(shown ? 1 : 0);
    if (shown)
        return;
    const Command next = hasProjects() ? Command::EditProject : Command::NewProject;
    m_hint->setText(
        !hasProjects() ? tr("There is no project yet. Make one to track where its sites stand.")
        : hasEngines
            ? tr("Choose a search engine on the left to see its keywords.")
            : tr("This project has no search engine that is in the catalogue. Edit it to choose some."));
    m_hintButton->setVisible(!hasProjects() || !hasEngines);
    m_hintButton->setDefaultAction(action(next));
}

void frmMain::UpdateUI()
{
    reportFailure(m_app, u"frmMain_UpdateUI error: "_s, [&] {
        CommandFacts facts;
        facts.hasProject = !m_projects->currentText().isEmpty();
        facts.hasEngine = !m_engine.isEmpty();
        facts.hasUrl = !selectedUrl().isEmpty();
        if (m_child)
            m_child->addFacts(facts);
        const CommandSet enabled = enabledCommands(facts);
        for (const CommandText &text : commandTexts())
            action(text.command)
                ->setEnabled(holds(enabled, text.command) && m_handlers.contains(text.command));
        m_property->setEnabled(m_child);
        if (m_child)
            m_panels->setKeywordCount(facts.dataRows);
        else
            m_panels->hideKeywordCount();
    });
}

void frmMain::readSettings()
{
    clsPreference preference;
    preference.GetSettings(m_app);
    setScheduler(preference.SchedulerEnable, schedulerStateText(preference.SchedulerEnable));
}

void frmMain::openUrlBox(bool open)
{
    m_urlBoxOpen = open;
    m_urls->setVisible(open);
    m_arrow->setArrowType(open ? Qt::DownArrow : Qt::UpArrow);
}

void frmMain::closeEvent(QCloseEvent *event)
{
    if (m_closing) {
        event->accept();
        return;
    }
    if (!mayClose(m_app, autoLookup())) {
        event->ignore();
        return;
    }
    m_closing = true;
    unload();
    event->accept();
    Q_EMIT closed();
}

void frmMain::unload()
{
    const QRect place = isMaximized() ? normalGeometry() : geometry();
    saveMainWindowSettings(m_app, {place.left(), place.top(), place.width(), place.height()}, m_urlBoxOpen,
                           isMinimized());
    releaseMainWindow(m_app, m_state);
    unloadAutoLookup();
    if (m_child) {
        m_child->unload();
        delete m_child;
        m_child = nullptr;
    }
}

void frmMain::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange && isMinimized())
        Q_EMIT minimised();
}

} // namespace sondrel
