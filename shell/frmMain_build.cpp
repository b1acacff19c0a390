// The building of the main window: menus, tool bar, panes and status bar.
#include "shell/frmMain.h"

#include "shell/program_icons.h"
#include "shell/status_panels.h"

#include <QAction>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QSplitter>
#include <QStackedWidget>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QToolButton *newPaneButton(QWidget *parent, QAction *action)
{
    auto *button = new QToolButton(parent);
    button->setDefaultAction(action);
    button->setToolButtonStyle(Qt::ToolButtonIconOnly);
    button->setAutoRaise(true);
    button->setAccessibleName(QString(action->text()).remove(u'&'));
    return button;
}

QString menuName(Menu menu)
{
    return u"mnu"_s + QString(menuTitle(menu)).remove(u'&');
}

} // namespace

void frmMain::buildMenus()
{
    QHash<Menu, QMenu *> menus;
    QHash<Menu, int> lastNumbers;
    m_engineMenu = new QMenu(this);
    m_engineMenu->setObjectName(u"mnuEnginePopup"_s);
    menus.insert(Menu::EnginePopup, m_engineMenu);
    for (const CommandText &text : commandTexts()) {
        QMenu *&menu = menus[text.menu];
        if (!menu) {
            menu = menuBar()->addMenu(menuTitle(text.menu));
            menu->setObjectName(menuName(text.menu));
            menu->setToolTipsVisible(true);
        }
        if (lastNumbers.value(text.menu, text.number) + 1 < text.number)
            menu->addSeparator();
        lastNumbers.insert(text.menu, text.number);
        QAction *item = menu->addAction(text.caption);
        item->setObjectName(u"action%1"_s.arg(static_cast<int>(text.command)));
        if (!text.icon.isEmpty())
            item->setIcon(programIcon(text.icon));
        if (!text.shortcut.isEmpty())
            item->setShortcut(QKeySequence(text.shortcut, QKeySequence::PortableText));
        item->setToolTip(text.tip);
        item->setStatusTip(QString());
        connect(item, &QAction::triggered, this, [this, command = text.command] { give(command); });
        m_actions.insert(static_cast<int>(text.command), item);
    }
    for (const Command ticked : {Command::ShowAll, Command::ShowOptimized})
        action(ticked)->setCheckable(true);
    action(Command::ShowOptimized)->setChecked(true);
    m_urlMenu = menus.value(Menu::Url);
}

QAction *frmMain::action(Command command) const
{
    return m_actions.value(static_cast<int>(command));
}

QToolButton *frmMain::addToolButton(const QString &name, Command command, const std::vector<Command> &items)
{
    auto *button = new QToolButton(m_toolBar);
    button->setObjectName(name);
    button->setDefaultAction(action(command));
    button->setToolButtonStyle(m_toolBar->toolButtonStyle());
    connect(m_toolBar, &QToolBar::toolButtonStyleChanged, button, &QToolButton::setToolButtonStyle);
    button->setFocusPolicy(Qt::TabFocus);
    if (!items.empty()) {
        auto *menu = new QMenu(button);
        for (const Command item : items)
            menu->addAction(action(item));
        button->setMenu(menu);
        button->setPopupMode(QToolButton::MenuButtonPopup);
    }
    m_toolBar->addWidget(button);
    return button;
}

// A button that no menu item stands behind.
QAction *frmMain::addOwnToolButton(const QString &name, const QString &icon, const QString &text,
                                   const QString &tip)
{
    auto *own = new QAction(programIcon(icon), text, m_toolBar);
    own->setToolTip(tip);
    auto *button = new QToolButton(m_toolBar);
    button->setObjectName(name);
    button->setDefaultAction(own);
    button->setToolButtonStyle(m_toolBar->toolButtonStyle());
    connect(m_toolBar, &QToolBar::toolButtonStyleChanged, button, &QToolButton::setToolButtonStyle);
    button->setFocusPolicy(Qt::TabFocus);
    m_toolBar->addWidget(button);
    return own;
}

void frmMain::buildToolBar()
{
    using C = Command;
    m_toolBar = addToolBar(tr("Tool bar"));
    m_toolBar->setObjectName(u"tlbToolbar"_s);
    m_toolBar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    m_toolBar->setIconSize({24, 24});
    m_toolBar->setMovable(false);
    const auto label = [](QToolButton *button, const QString &text) {
        // Shorter than the menu's caption; the action's own text stays in the menu.
        QAction *shown = new QAction(button->defaultAction()->icon(), text, button);
        QAction *given = button->defaultAction();
        shown->setToolTip(given->toolTip());
        shown->setEnabled(given->isEnabled());
        QObject::connect(given, &QAction::enabledChanged, shown, &QAction::setEnabled);
        QObject::connect(shown, &QAction::triggered, given, &QAction::trigger);
        button->setDefaultAction(shown);
        button->setAccessibleName(text);
    };
    label(addToolButton(u"NewAccount"_s, C::NewProject, {C::NewProject, C::EditProject, C::DeleteProject}),
          tr("Project"));
    label(addToolButton(u"AddKW"_s, C::AddKeywords, {}), tr("Add Keywords"));
    m_property = addOwnToolButton(u"Property"_s, u"save"_s, tr("Save"), tr("Save keywords and results now"));
    label(addToolButton(u"Show"_s, C::ShowAll, {C::ShowAll, C::ShowOptimized}), tr("Show"));
    m_toolBar->addSeparator();
    label(
        addToolButton(u"LookUp"_s, C::LookupSelected, {C::LookupSelected, C::LookupAll, C::LookupAllEngines}),
        tr("Look Up"));
    label(addToolButton(u"Stop"_s, C::Stop, {}), tr("Stop"));
    m_toolBar->addSeparator();
    label(addToolButton(u"Report"_s, C::HtmlReport, {C::HtmlReport, C::TextReport, C::ExcelReport}),
          tr("Report"));
    label(addToolButton(u"Optimizer"_s, C::Optimizer, {}), tr("Optimizer"));
    m_stats = addOwnToolButton(u"Stats"_s, u"statistics"_s, tr("Statistics"), tr("Open the site statistics"));
    m_toolBar->addSeparator();
    label(addToolButton(u"Help"_s, C::HelpContents, {}), tr("Help"));
}

void frmMain::buildLeftPane()
{
    auto *pane = new QWidget(this);
    auto *layout = new QVBoxLayout(pane);
    layout->setContentsMargins(6, 6, 0, 6);

    auto *title = new QLabel(u" Project"_s, pane);
    title->setObjectName(u"lblProjectTitle"_s);
    auto *projectRow = new QHBoxLayout;
    m_projects = new QComboBox(pane);
    m_projects->setObjectName(u"cboAccount"_s);
    m_projects->setAccessibleName(tr("Project"));
    m_projects->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_projects->setMinimumContentsLength(14);
    title->setBuddy(m_projects);
    projectRow->addWidget(m_projects, 1);
    projectRow->addWidget(newPaneButton(pane, action(Command::NewProject)));
    projectRow->addWidget(newPaneButton(pane, action(Command::EditProject)));

    m_tree = new QTreeWidget(pane);
    m_tree->setObjectName(u"tvwAccount"_s);
    m_tree->setAccessibleName(tr("Search engines of the project"));
    m_tree->setHeaderHidden(true);
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);

    auto *urlRow = new QHBoxLayout;
    auto *urlTitle = new QLabel(u"Tracking URLs"_s, pane);
    urlTitle->setObjectName(u"lblURLs"_s);
    m_arrow = new QToolButton(pane);
    m_arrow->setObjectName(u"cmdArrow"_s);
    m_arrow->setAccessibleName(tr("Show or hide the tracked URLs"));
    m_arrow->setToolTip(tr("Show or hide the tracked URLs"));
    m_arrow->setAutoRaise(true);
    urlRow->addWidget(urlTitle, 1);
    urlRow->addWidget(m_arrow);
    m_urls = new QTreeWidget(pane);
    m_urls->setHeaderHidden(true);
    m_urls->setRootIsDecorated(false);
    m_urls->setObjectName(u"lvwURLs"_s);
    m_urls->setAccessibleName(tr("Tracked URLs"));
    m_urls->setContextMenuPolicy(Qt::CustomContextMenu);
    m_urls->setTextElideMode(Qt::ElideMiddle);

    layout->addWidget(title);
    layout->addLayout(projectRow);
    layout->addWidget(m_tree, 3);
    layout->addLayout(urlRow);
    layout->addWidget(m_urls, 1);

    m_right = new QStackedWidget(this);
    auto *hintPage = new QWidget(m_right);
    auto *hintLayout = new QVBoxLayout(hintPage);
    m_hint = new QLabel(hintPage);
    m_hint->setObjectName(u"lblHint"_s);
    m_hint->setWordWrap(true);
    m_hint->setAlignment(Qt::AlignCenter);
    m_hint->setForegroundRole(QPalette::PlaceholderText);
    m_hintButton = new QToolButton(hintPage);
    m_hintButton->setObjectName(u"cmdHint"_s);
    m_hintButton->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    hintLayout->addStretch();
    hintLayout->addWidget(m_hint);
    hintLayout->addWidget(m_hintButton, 0, Qt::AlignCenter);
    hintLayout->addStretch();
    m_right->addWidget(hintPage);

    m_splitter = new QSplitter(Qt::Horizontal, this);
    m_splitter->setObjectName(u"picSpliterVertical"_s);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->addWidget(pane);
    m_splitter->addWidget(m_right);
    m_splitter->setStretchFactor(0, 0);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setSizes({260, 800});
    setCentralWidget(m_splitter);
}

void frmMain::buildStatusBar()
{
    m_panels = new StatusPanels(statusBar());
}

} // namespace sondrel
