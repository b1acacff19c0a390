// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "automation/scheduler.h"
#include "project/clsAccount.h"
#include "reports/report_commands.h"
#include "reports/report_set.h"
#include "shell/commands.h"
#include "shell/shut_down.h"
#include "shell/start_up.h"

#include <QMainWindow>

#include <functional>
#include <map>
#include <memory>

class QAction;
class QComboBox;
class QMenu;
class QSplitter;
class QStackedWidget;
class QToolBar;
class QToolButton;
class QTreeWidget;
class QTreeWidgetItem;
class QVBoxLayout;

namespace sondrel {

class frmOptimizer;
class frmSondrel;
class HintPage;
class StatusPanels;
class UnwrittenBar;

/// The frame of the program: projects, engines and tracked URLs on the left, the keyword grid of the chosen
/// engine on the right, menus, tool bar and status bar. It routes commands to the grid and to dialogs.
class frmMain final : public QMainWindow, private MainWindowSteps, private SchedulerView
{
    Q_OBJECT

public:
    explicit frmMain(ApplicationContext &app, QWidget *parent = nullptr);
    ~frmMain() override;

    /// Fills the window and shows it: settings, catalogue, projects.
    void load();

    /// What the window shows.
    std::shared_ptr<clsAccount> CurrentAccount() const override { return m_account; }
    QString CurrentEngine() const override { return m_engine; }
    frmSondrel *child() const { return m_child; }
    bool hasProjects() const;
    bool isClosing() const { return m_closing; }

    /// What a command does. One that nothing has been said about stays disabled.
    void setHandler(Command command, std::function<void()> handler);
    /// Gives a command as its menu item does.
    void give(Command command);
    QAction *action(Command command) const;
    StatusPanels &panels() { return *m_panels; }
    Scheduler &scheduler() { return *m_scheduler; }

    /// Shows that a change could not be stored, and why.
    void tellUnwritten(const QString &problem);

    void ResetReporter() { m_reports.ResetReporter(); }

Q_SIGNALS:
    /// The window has been closed for good; the program ends.
    void closed();
    /// The window has been minimised, and has stayed so for a moment.
    void minimised();
    /// Steps of the start that other windows take.
    void splashHidden();
    void splashShown();
    void splashUnloaded();
    void trayWanted();

protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // Steps of the start.
    void placeWindow(const MainWindowSettings &settings) override;
    void setHelpFile(const QString &) override {} // looked for anew whenever help is asked for
    void buildURLColumn() override;
    void setScheduler(bool enabled, const QString &panelText) override;
    void hideSplash() override { Q_EMIT splashHidden(); }
    void showSplash() override { Q_EMIT splashShown(); }
    void unloadSplash() override { Q_EMIT splashUnloaded(); }
    void updateEngines() override;
    void giveTreeItsImages() override {} // each node has its own
    void showProjects() override;
    void selectProject(int index) override;
    void AddAccount() override;
    void showMainWindow() override { show(); }
    void loadTrayIcon() override { Q_EMIT trayWanted(); }

    // Building.
    void buildMenus();
    void buildToolBar();
    void followToolButtonStyle();
    QWidget *newLeftPane();
    void buildPanes();
    QToolButton *addToolButton(const QString &name, QAction *action);
    QToolButton *addToolButton(const QString &name, const QString &text, Command command,
                               const std::vector<Command> &items = {});
    void connectWidgets();
    void connectCommands();
    void connectChild();

    // Projects, engines, URLs.
    void chooseProject();
    void showUrls();
    void PopulateEngine();
    bool reloadCatalogue();
    void UpdateEngineData();
    void BuildEngines();
    void clickNode(QTreeWidgetItem *node);
    void selectCurrentNode();
    void MenuBid();
    void EditAccount();
    void DeleteAccount();
    void showNoProject();
    void loadProjectList();
    bool lookupRuns() const;
    bool showsChild() const;
    QStringList projects() const override;
    QString selectedUrl() const;

    // What can be done, and what to do next.
    void UpdateUI();
    void showHint();
    void openUrlBox(bool open);
    void unload();
    void watchForMinimising();

    // The scheduler's part.
    LookupSession *shownSession() const override;
    void showResults(const std::shared_ptr<clsAccount> &account) override;
    void showAutoRun(const QString &text) override;
    QStringList nodeKeys() const override;
    void openNode(int position) override;
    QList<QTreeWidgetItem *> nodes() const;
    void makeScheduler();
    void restoreProgress();
    void ShowAutoRunState() { m_scheduler->ShowAutoRunState(); }
    AutoLookup autoLookup();
    void SendReport();

    // Commands.
    void passToChild(Command command);
    void Config();
    void LookUp(int item);
    void ShowOrOptimized(int item);
    void Report(ReportFormat format);
    ReportStatus reportStatus();
    std::vector<GridCells> gridCells() const;
    void showReportProgress(int value, int maximum);
    void writeEngineReport();
    void ShowURLPosition();
    void openUrl();
    void openEnginePage(bool login);
    void openDealerPage(QString clsDealerProfile::*address);
    void about();
    void showOptimizer();

    ApplicationContext &m_app;
    MainWindowState m_state;
    std::map<Command, std::function<void()>> m_handlers;
    ReportSet m_reports;
    std::unique_ptr<Scheduler> m_scheduler;
    std::shared_ptr<clsAccount> m_account;
    QString m_engine;
    QString m_nodeKey; // of the selected tree node
    frmSondrel *m_child = nullptr;
    std::map<Command, QAction *> m_actions;
    std::map<Menu, QMenu *> m_menus;
    QToolBar *m_toolBar = nullptr;
    QAction *m_property = nullptr;
    QAction *m_stats = nullptr;
    QComboBox *m_projects = nullptr;
    QTreeWidget *m_tree = nullptr;
    QTreeWidget *m_urls = nullptr;
    QToolButton *m_arrow = nullptr;
    QSplitter *m_splitter = nullptr;
    QVBoxLayout *m_centre = nullptr;
    UnwrittenBar *m_unwritten = nullptr; // above the panes, once there is something to tell
    QStackedWidget *m_right = nullptr;
    HintPage *m_hint = nullptr;
    StatusPanels *m_panels = nullptr;
    std::unique_ptr<ClockTimer> m_tmrTrayIcon;
    int m_shownFilter = 0; // item of the Show menu that is ticked
    bool m_urlBoxOpen = false;
    bool m_closing = false;
    frmOptimizer *m_optimizer = nullptr; // while it is loaded
    bool m_reporting = false;            // a report command is under way
};

} // namespace sondrel
