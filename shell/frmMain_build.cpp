// The building of the main window: menus, tool bar and panes, and what their parts are connected with.
#include "shell/frmMain.h"

#include "shell/frmSondrel.h"
#include "shell/hint_page.h"
#include "shell/program_icons.h"
#include "shell/project_tree.h"
#include "shell/tree_nodes.h"
#include "shell/unwritten_bar.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QShortcut>
#include <QSplitter>
#include <QStackedWidget>
#include <QStyle>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QToolButton *newPaneButton(QWidget *parent, const QString &name, QAction *action)
{
    auto *button = new QToolButton(parent);
    button->setObjectName(name);
    button->setDefaultAction(action);
    button->setToolButtonStyle(Qt::ToolButtonIconOnly);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setAccessibleName(action->text().remove(u'&'));
    return button;
}

QString menuName(Menu menu)
{
    return menu == Menu::EnginePopup ? u"mnuEnginePopup"_s : u"mnu"_s + menuTitle(menu).remove(u'&');
}

QTreeWidget *newList(QWidget *parent, const QString &name, const QString &accessibleName)
{
    auto *list = new QTreeWidget(parent);
    list->setObjectName(name);
    list->setAccessibleName(accessibleName);
    list->setContextMenuPolicy(Qt::CustomContextMenu);
    list->setUniformRowHeights(true);
    return list;
}

} // namespace

void frmMain::buildMenus()
{
    std::map<Menu, int> lastNumbers;
    for (const CommandText &text : commandTexts()) {
        QMenu *&menu = m_menus[text.menu];
        if (!menu) {
            menu = new QMenu(menuTitle(text.menu), this);
            menu->setObjectName(menuName(text.menu));
            menu->setToolTipsVisible(true);
            if (text.menu != Menu::EnginePopup)
                menuBar()->addMenu(menu);
            lastNumbers[text.menu] = text.number;
        }
        if (lastNumbers[text.menu] + 1 < text.number)
            menu->addSeparator();
        lastNumbers[text.menu] = text.number;
        QAction *item = menu->addAction(text.caption);
        item->setObjectName(menu->objectName() + QString::number(text.number));
        if (!text.icon.isEmpty())
            item->setIcon(programIcon(text.icon));
        if (!text.shortcut.isEmpty())
            item->setShortcut(QKeySequence(text.shortcut, QKeySequence::PortableText));
        item->setToolTip(text.tip);
        connect(item, &QAction::triggered, this, [this, command = text.command] { give(command); });
        m_actions[text.command] = item;
    }
    for (const Command ticked : {Command::ShowAll, Command::ShowOptimized})
        action(ticked)->setCheckable(true);
}

QAction *frmMain::action(Command command) const
{
    return m_actions.at(command);
}

QToolButton *frmMain::addToolButton(const QString &name, QAction *action)
{
    auto *button = new QToolButton(m_toolBar);
    button->setObjectName(name);
    button->setDefaultAction(action);
    button->setAccessibleName(action->text());
    button->setToolButtonStyle(m_toolBar->toolButtonStyle());
    button->setIconSize(m_toolBar->iconSize());
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    connect(m_toolBar, &QToolBar::toolButtonStyleChanged, button, &QToolButton::setToolButtonStyle);
    m_toolBar->addWidget(button);
    return button;
}

// A button does what a menu item does, under a shorter text.
QToolButton *frmMain::addToolButton(const QString &name, const QString &text, Command command,
                                    const std::vector<Command> &items)
{
    QAction *given = action(command);
    auto *shown = new QAction(given->icon(), text, m_toolBar);
    shown->setToolTip(given->toolTip());
    shown->setEnabled(given->isEnabled());
    connect(given, &QAction::enabledChanged, shown, &QAction::setEnabled);
    connect(shown, &QAction::triggered, given, &QAction::trigger);
    QToolButton *button = addToolButton(name, shown);
    if (items.empty())
        return button;
    auto *menu = new QMenu(button);
    menu->setToolTipsVisible(true);
    for (const Command item : items)
        menu->addAction(action(item));
    button->setMenu(menu);
    button->setPopupMode(QToolButton::MenuButtonPopup);
    return button;
}

void frmMain::buildToolBar()
{
    using C = Command;
    m_toolBar = addToolBar(tr("Tool bar"));
    m_toolBar->setObjectName(u"tlbToolbar"_s);
    followToolButtonStyle();
    m_toolBar->setIconSize({24, 24});
    m_toolBar->setMovable(false);
    m_toolBar->setContextMenuPolicy(Qt::PreventContextMenu); // it could only hide the bar
    // The toolkit's own picture of what has no room is as dark as a dark bar.
    if (auto *more = m_toolBar->findChild<QToolButton *>(u"qt_toolbar_ext_button"_s))
        more->setIcon(programIcon(u"more"_s));
    m_property = new QAction(programIcon(u"save"_s), tr("Save"), m_toolBar);
    m_property->setToolTip(tr("Save keywords and results now"));
    m_stats = new QAction(programIcon(u"statistics"_s), tr("Statistics"), m_toolBar);
    m_stats->setToolTip(tr("Open the site statistics in the browser"));

    addToolButton(u"NewAccount"_s, tr("Project"), C::NewProject,
                  {C::NewProject, C::EditProject, C::DeleteProject});
    addToolButton(u"AddKW"_s, tr("Add Keywords"), C::AddKeywords);
    addToolButton(u"Property"_s, m_property);
    addToolButton(u"Show"_s, tr("Show"), C::ShowAll, {C::ShowAll, C::ShowOptimized});
    m_toolBar->addSeparator();
    addToolButton(u"LookUp"_s, tr("Look Up"), C::LookupSelected,
                  {C::LookupSelected, C::LookupAll, C::LookupAllEngines});
    addToolButton(u"Stop"_s, tr("Stop"), C::Stop);
    m_toolBar->addSeparator();
    addToolButton(u"Report"_s, tr("Report"), C::HtmlReport,
                  {C::HtmlReport, C::TextReport, C::ExcelReport, C::SendReport});
    addToolButton(u"Optimizer"_s, tr("Optimizer"), C::Optimizer);
    addToolButton(u"Stats"_s, m_stats);
    m_toolBar->addSeparator();
    addToolButton(u"Help"_s, tr("Help"), C::HelpContents);
}

// The text under the icon, unless the desktop has something to say. Bare icons are what the toolkit gives
// where it has nothing.
void frmMain::followToolButtonStyle()
{
    const auto wanted =
        static_cast<Qt::ToolButtonStyle>(style()->styleHint(QStyle::SH_ToolButtonStyle, nullptr, this));
    m_toolBar->setToolButtonStyle(wanted == Qt::ToolButtonIconOnly ? Qt::ToolButtonTextUnderIcon : wanted);
}

QWidget *frmMain::newLeftPane()
{
    auto *pane = new QWidget;
    auto *title = new QLabel(u" Project"_s, pane);
    title->setObjectName(u"lblProjectTitle"_s);
    m_projects = new QComboBox(pane);
    m_projects->setObjectName(u"cboAccount"_s);
    m_projects->setAccessibleName(tr("Project"));
    m_projects->setToolTip(tr("The project on show; a double click edits it"));
    m_projects->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_projects->setMinimumContentsLength(14);
    title->setBuddy(m_projects);
    auto *projectRow = new QHBoxLayout;
    projectRow->addWidget(m_projects, 1);
    projectRow->addWidget(newPaneButton(pane, u"cmdNewProject"_s, action(Command::NewProject)));
    projectRow->addWidget(newPaneButton(pane, u"cmdEditProject"_s, action(Command::EditProject)));

    m_tree = newList(pane, u"tvwAccount"_s, tr("Search engines of the project"));
    m_tree->setHeaderHidden(true);
    m_urls = newList(pane, u"lvwURLs"_s, tr("Tracked URLs"));
    m_urls->setRootIsDecorated(false);
    m_urls->setTextElideMode(Qt::ElideMiddle);
    auto *urlTitle = new QLabel(u"Tracking URLs"_s, pane);
    urlTitle->setObjectName(u"lblURLs"_s);
    urlTitle->setBuddy(m_urls);
    m_arrow = new QToolButton(pane);
    m_arrow->setObjectName(u"cmdArrow"_s);
    m_arrow->setAccessibleName(tr("Show or hide the tracked URLs"));
    m_arrow->setToolTip(tr("Show or hide the tracked URLs"));
    m_arrow->setAutoRaise(true);
    m_arrow->setFocusPolicy(Qt::TabFocus);
    auto *urlRow = new QHBoxLayout;
    urlRow->addWidget(urlTitle, 1);
    urlRow->addWidget(m_arrow);

    auto *layout = new QVBoxLayout(pane);
    layout->setContentsMargins(6, 6, 0, 6);
    layout->addWidget(title);
    layout->addLayout(projectRow);
    layout->addWidget(m_tree, 3);
    layout->addLayout(urlRow);
    layout->addWidget(m_urls, 2);
    QWidget::setTabOrder(m_arrow, m_urls);
    return pane;
}

void frmMain::buildPanes()
{
    m_splitter = new QSplitter(Qt::Horizontal, this);
    m_splitter->setObjectName(u"picSpliterVertical"_s);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->addWidget(newLeftPane());
    m_right = new QStackedWidget(m_splitter);
    m_hint = new HintPage(u"lblHint"_s, u"cmdHint"_s, m_right);
    m_right->addWidget(m_hint);
    m_splitter->addWidget(m_right);
    m_splitter->setStretchFactor(0, 0);
    m_splitter->setStretchFactor(1, 1);
    const int unit = fontMetrics().averageCharWidth();
    m_splitter->setSizes({unit * 38, unit * 140});
    auto *centre = new QWidget;
    m_centre = new QVBoxLayout(centre);
    m_centre->setContentsMargins(0, 0, 0, 0);
    m_centre->setSpacing(0);
    m_centre->addWidget(m_splitter, 1);
    setCentralWidget(centre);
}

void frmMain::tellUnwritten(const QString &problem)
{
    if (!m_unwritten) {
        m_unwritten = new UnwrittenBar;
        m_centre->insertWidget(0, m_unwritten);
    }
    m_unwritten->tell(problem);
}

void frmMain::buildURLColumn()
{
    m_urls->setHeaderLabels({u"URLS"_s});
    m_urls->header()->setStretchLastSection(true);
}

void frmMain::connectWidgets()
{
    connect(m_projects, &QComboBox::activated, this, &frmMain::chooseProject);
    m_projects->installEventFilter(this);
    m_projects->view()->parentWidget()->installEventFilter(this);
    connect(m_tree, &QTreeWidget::currentItemChanged, this,
            [this](QTreeWidgetItem *node) { clickNode(node); });
    // A node that was refused during a lookup may be the current one already.
    connect(m_tree, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem *node) { clickNode(node); });
    connect(m_tree, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem *node) {
        if (isEngineKey(nodeKey(node)))
            EditAccount();
    });
    connect(m_tree, &QWidget::customContextMenuRequested, this, [this](const QPoint &place) {
        const QTreeWidgetItem *node = m_tree->itemAt(place);
        if (node && isEngineKey(nodeKey(node)))
            m_menus.at(Menu::EnginePopup)->popup(m_tree->viewport()->mapToGlobal(place));
    });
    connect(m_urls, &QTreeWidget::itemDoubleClicked, this, &frmMain::openUrl);
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto *open = new QShortcut(QKeySequence(key), m_urls, nullptr, nullptr, Qt::WidgetShortcut);
        connect(open, &QShortcut::activated, this, &frmMain::openUrl);
    }
    connect(m_urls, &QTreeWidget::itemSelectionChanged, this, &frmMain::UpdateUI);
    connect(m_urls, &QWidget::customContextMenuRequested, this, [this](const QPoint &place) {
        m_menus.at(Menu::Url)->popup(m_urls->viewport()->mapToGlobal(place));
    });
    connect(m_arrow, &QToolButton::clicked, this, [this] { openUrlBox(!m_urlBoxOpen); });
    connect(m_property, &QAction::triggered, this, [this] {
        if (m_child)
            m_child->mnuKeywordsItemClick(9); // no command of its own: it saves
    });
    connect(m_stats, &QAction::triggered, this, [this] { openDealerPage(&clsDealerProfile::SiteStatsURL); });
}

// The second press of a double click on the closed list goes to the list that the first one has opened.
bool frmMain::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonDblClick && hasProjects()) {
        const auto *mouse = static_cast<QMouseEvent *>(event);
        const QPoint place = m_projects->mapFromGlobal(mouse->globalPosition().toPoint());
        if (m_projects->rect().contains(place)) {
            m_projects->hidePopup();
            QMetaObject::invokeMethod(this, &frmMain::EditAccount, Qt::QueuedConnection);
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

} // namespace sondrel
