// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "project/clsAccount.h"
#include "reports/report_commands.h"
#include "reports/report_set.h"
#include "shell/commands.h"
#include "shell/shut_down.h"
#include "shell/start_up.h"

#include <QHash>
#include <QMainWindow>

#include <functional>
#include <map>
#include <memory>

class QAction;
class QComboBox;
class QLabel;
class QMenu;
class QProgressBar;
class QSplitter;
class QStackedWidget;
class QToolBar;
class QToolButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace sondrel {

class frmSondrel;
class StatusPanels;

/// The frame of the program: projects, engines and tracked URLs on the left, the keyword grid of the chosen
/// engine on the right, menus, tool bar and status bar. It routes commands to the grid and to dialogs.
class frmMain final : public QMainWindow, private MainWindowSteps
{
    Q_OBJECT

public:
    explicit frmMain(ApplicationContext &app, QWidget *parent = nullptr);
    ~frmMain() override;

    /// Fills the window and shows it: settings, catalogue, projects.
    void load();

    /// What the window shows.
    const std::shared_ptr<clsAccount> &CurrentAccount() const { return m_account; }
    QString CurrentEngine() const { return m_engine; }
    frmSondrel *child() const { return m_child; }
    bool hasProjects() const;
    bool isClosing() const { return m_closing; }

    /// What a command does. One that nothing has been said about stays disabled.
    void setHandler(Command command, std::function<void()> handler);
    /// Gives a command as its menu item does.
    void give(Command command);
    QAction *action(Command command) const;
    StatusPanels &panels() { return *m_panels; }

    void ResetReporter() { m_reports.ResetReporter(); }

Q_SIGNALS:
    /// The window has been closed for good; the program ends.
    void closed();
    /// The window has been minimised.
    void minimised();
    /// Steps of the start that other windows take.
    void splashHidden();
    void splashShown();
    void splashUnloaded();
    void trayWanted();

protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void placeWindow(const MainWindowSettings &settings) override;
    void setHelpFile(const QString &path) override { m_helpFile = path; }
    void buildURLColumn() override {}
    void setScheduler(bool enabled, const QString &panelText) override;
    void hideSplash() override { Q_EMIT splashHidden(); }
    void showSplash() override { Q_EMIT splashShown(); }
    void unloadSplash() override { Q_EMIT splashUnloaded(); }
    void updateEngines() override {}
    void giveTreeItsImages() override {}
    void showProjects() override;
    void selectProject(int index) override;
    void AddAccount() override;
    void showMainWindow() override { show(); }
    void loadTrayIcon() override { Q_EMIT trayWanted(); }

    void connectCommands();
    void buildMenus();
    void buildToolBar();
    void buildLeftPane();
    void buildStatusBar();
    QToolButton *addToolButton(const QString &name, Command command, const std::vector<Command> &items);

    QAction *addOwnToolButton(const QString &name, const QString &icon, const QString &text,
                              const QString &tip);
    void connectWidgets();

    void chooseProject();
    void showUrls();
    void PopulateEngine();
    void clickNode(QTreeWidgetItem *node);
    void selectCurrentNode();
    void MenuBid();
    void connectChild();
    void UpdateUI();
    void showHint();
    void EditAccount();
    void DeleteAccount();
    void Config();
    void ShowAutoRunState();
    std::optional<AutoLookup> autoLookup();
    void unloadAutoLookup();
    void passToChild(Command command);
    void LookUp(int item);
    void ShowOrOptimized(int item);
    void ShowURLPosition();
    void openUrl();
    void openEnginePage(bool login);
    void openStatistics();
    void openDealerPage(bool support);
    void Report(ReportFormat format);
    ReportStatus reportStatus();
    void showReportProgress(int value, int maximum);
    void writeEngineReport();
    void showNoProject();
    void helpContents();
    void about();
    void readSettings();
    void openUrlBox(bool open);
    void unload();
    bool lookupRuns() const;
    QStringList projects() const;
    QString selectedUrl() const;

    ApplicationContext &m_app;
    MainWindowState m_state;
    std::map<Command, std::function<void()>> m_handlers;
    ReportSet m_reports;
    QString m_helpFile;
    std::shared_ptr<clsAccount> m_account;
    QString m_engine;
    QString m_nodeKey; // of the selected tree node
    frmSondrel *m_child = nullptr;
    QHash<int, QAction *> m_actions;
    QMenu *m_engineMenu = nullptr;
    QMenu *m_urlMenu = nullptr;
    QToolBar *m_toolBar = nullptr;
    QAction *m_property = nullptr;
    QAction *m_stats = nullptr;
    QComboBox *m_projects = nullptr;
    QTreeWidget *m_tree = nullptr;
    QTreeWidget *m_urls = nullptr;
    QToolButton *m_arrow = nullptr;
    QSplitter *m_splitter = nullptr;
    QStackedWidget *m_right = nullptr;
    QLabel *m_hint = nullptr;
    QToolButton *m_hintButton = nullptr;
    StatusPanels *m_panels = nullptr;
    int m_shownFilter = 2; // item of the Show menu that is ticked
    bool m_urlBoxOpen = false;
    bool m_closing = false;
    bool m_reporting = false; // a report command is under way
};

} // namespace sondrel
