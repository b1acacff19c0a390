#include "shell/frmMain.h"

#include "optimizer/frmOptimizer.h"
#include "shell/center_form.h"
#include "shell/frmSondrel.h"
#include "shell/hint_page.h"
#include "shell/program_icons.h"
#include "shell/status_panels.h"

#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QGuiApplication>
#include <QScreen>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolButton>
#include <QTreeWidget>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr int FirstTrayWait = 100; // ms
constexpr int TrayWait = 200;      // ms

} // namespace

frmMain::frmMain(ApplicationContext &app, QWidget *parent)
    : QMainWindow(parent),
      m_app(app),
      m_reports(app, reportStatus()),
      m_tmrTrayIcon(app.clock.createTimer(FirstTrayWait, [this] { watchForMinimising(); }))
{
    setObjectName(u"frmMain"_s);
    setWindowTitle(app.deployment.Title);
    setWindowIcon(applicationIcon());
    buildMenus();
    buildToolBar();
    buildPanes();
    m_panels = new StatusPanels(statusBar());
    makeScheduler();
    connectWidgets();
    connectCommands();
    ShowOrOptimized(textOf(Command::ShowOptimized).number);
    openUrlBox(false);
    resize(fontMetrics().averageCharWidth() * 180, fontMetrics().height() * 42);
    UpdateUI();
    showHint();
}

frmMain::~frmMain()
{
    delete m_child; // uses what goes before a QObject's children do
    if (m_state.Catalogue)
        releaseMainWindow(m_app, m_state);
}

void frmMain::load()
{
    ResetReporter();
    loadMainWindow(m_app, *this, m_state);
    m_tmrTrayIcon->setEnabled(true);
    UpdateUI();
    showHint();
    // Where the arrow keys choose at once, or Enter does what comes next; a tool button would be first
    // otherwise.
    m_right->currentWidget()->setFocus();
}

void frmMain::placeWindow(const MainWindowSettings &settings)
{
    openUrlBox(settings.urlBoxOpen);
    resize(size().boundedTo(screen()->availableSize()));
    CenterForm(*this);
    if (!settings.place || isMaximized() || isMinimized())
        return;
    const QRect wanted(settings.place->left, settings.place->top, settings.place->width,
                       settings.place->height);
    // A screen may have gone since; a window that nobody can reach helps nobody.
    if (QGuiApplication::screenAt(wanted.center()))
        setGeometry(wanted);
}

void frmMain::UpdateUI()
{
    const QString tag = m_child ? u"frmSondrel_UpdateUI error: "_s : u"frmMain_UpdateUI error: "_s;
    reportFailure(m_app, tag, [&] {
        CommandFacts facts;
        facts.hasProject = !m_projects->currentText().isEmpty();
        facts.hasEngine = !m_engine.isEmpty() && m_tree->topLevelItemCount() > 0;
        facts.hasUrl = !selectedUrl().isEmpty();
        if (showsChild())
            m_child->addFacts(facts);
        const CommandSet enabled = enabledCommands(facts);
        for (const auto &[command, item] : m_actions)
            item->setEnabled(holds(enabled, command) && m_handlers.contains(command));
        m_property->setEnabled(facts.hasGrid);
        if (facts.hasGrid)
            m_panels->setKeywordCount(facts.dataRows);
        else
            m_panels->hideKeywordCount();
    });
}

// An empty program is an invitation.
void frmMain::showHint()
{
    m_right->setCurrentWidget(showsChild() ? static_cast<QWidget *>(m_child) : m_hint);
    setWindowTitle(showsChild() ? m_child->windowTitle() + u" - "_s + m_app.deployment.Title
                                : m_app.deployment.Title);
    if (!hasProjects())
        m_hint->setHint(tr("There is no project yet. Make one to see where its sites stand."),
                        action(Command::NewProject));
    else
        m_hint->setHint(tr("This project has no search engine that is known here. Edit it to choose some."),
                        action(Command::EditProject));
}

void frmMain::openUrlBox(bool open)
{
    reportFailure(m_app, u"frmMain_resizeControl error : "_s, [&] {
        m_urlBoxOpen = open;
        m_urls->setVisible(open);
        m_arrow->setIcon(programIcon(open ? u"arrow-down"_s : u"arrow-up"_s));
    });
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
    m_tmrTrayIcon->setEnabled(false);
    const QRect place = isMaximized() ? normalGeometry() : geometry();
    saveMainWindowSettings(m_app, {place.left(), place.top(), place.width(), place.height()}, m_urlBoxOpen,
                           isMinimized());
    releaseMainWindow(m_app, m_state);
    if (m_optimizer)
        m_optimizer->close();
    m_scheduler->unload();
    if (m_child) {
        m_child->unload();
        delete m_child;
        m_child = nullptr;
    }
}

void frmMain::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange && isMinimized() && !m_closing)
        m_tmrTrayIcon->setEnabled(true);
    if (event->type() == QEvent::StyleChange && m_toolBar)
        followToolButtonStyle();
}

void frmMain::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
    if (m_panels)
        m_panels->fitTo(width());
}

// Some desktops minimise and restore in one go; only what stays minimised counts.
void frmMain::watchForMinimising()
{
    m_tmrTrayIcon->setEnabled(false);
    m_tmrTrayIcon->setInterval(TrayWait);
    m_app.desktop.runPendingEvents();
    if (isMinimized())
        Q_EMIT minimised();
}

} // namespace sondrel
