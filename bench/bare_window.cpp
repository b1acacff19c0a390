// The yardstick of the start: a window of the toolkit with the widgets of the main window, and nothing in
// them.
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QSplitter>
#include <QStackedLayout>
#include <QStackedWidget>
#include <QStandardItemModel>
#include <QStatusBar>
#include <QTableView>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <array>

namespace {

void addMenus(QMainWindow &window)
{
    constexpr std::array Items{7, 6, 2, 2, 4, 5, 4, 2};
    constexpr std::size_t Popup = 7; // of the tree, which the bar does not show
    for (std::size_t number = 0; number < Items.size(); ++number) {
        auto *menu = new QMenu(QStringLiteral("&Menu"), &window);
        if (number != Popup)
            window.menuBar()->addMenu(menu);
        for (int i = 0; i < Items[number]; ++i)
            menu->addAction(QStringLiteral("Command"));
    }
}

void addToolBar(QMainWindow &window)
{
    constexpr std::array Menus{3, 0, 0, 2, 3, 0, 3, 0, 0, 0}; // items behind each button
    QToolBar *bar = window.addToolBar(QStringLiteral("Tools"));
    bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    for (const int items : Menus) {
        auto *button = new QToolButton(bar);
        button->setDefaultAction(new QAction(QStringLiteral("Button"), bar));
        button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        if (items > 0) {
            auto *menu = new QMenu(button);
            for (int i = 0; i < items; ++i)
                menu->addAction(QStringLiteral("Command"));
            button->setMenu(menu);
            button->setPopupMode(QToolButton::MenuButtonPopup);
        }
        bar->addWidget(button);
    }
}

QWidget *leftPane()
{
    auto *pane = new QWidget;
    auto *layout = new QVBoxLayout(pane);
    auto *row = new QHBoxLayout;
    row->addWidget(new QComboBox, 1);
    row->addWidget(new QToolButton);
    row->addWidget(new QToolButton);
    layout->addWidget(new QLabel(QStringLiteral("Project")));
    layout->addLayout(row);
    layout->addWidget(new QTreeWidget, 3);
    auto *urlRow = new QHBoxLayout;
    urlRow->addWidget(new QLabel(QStringLiteral("URLs")), 1);
    urlRow->addWidget(new QToolButton);
    layout->addLayout(urlRow);
    layout->addWidget(new QTreeWidget, 2);
    return pane;
}

// What an empty area shows instead of its list.
QWidget *hint()
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(new QLabel);
    layout->addWidget(new QToolButton);
    return page;
}

QWidget *table(int columns)
{
    auto *place = new QWidget;
    auto *stack = new QStackedLayout(place);
    auto *view = new QTableView;
    view->setModel(new QStandardItemModel(0, columns, view));
    view->verticalHeader()->hide();
    stack->addWidget(view);
    stack->addWidget(hint());
    return place;
}

void addPanels(QStatusBar &bar)
{
    bar.addWidget(new QLabel);
    bar.addWidget(new QLabel, 1);
    bar.addPermanentWidget(new QLabel);
    bar.addPermanentWidget(new QProgressBar);
    bar.addPermanentWidget(new QLabel);
    bar.addPermanentWidget(new QLabel);
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Bare window"));
    addMenus(window);
    addToolBar(window);
    auto *right = new QSplitter(Qt::Vertical);
    right->addWidget(table(9));
    right->addWidget(table(3));
    auto *stack = new QStackedWidget;
    stack->addWidget(right);
    stack->addWidget(hint());
    auto *whole = new QSplitter;
    whole->addWidget(leftPane());
    whole->addWidget(stack);
    window.setCentralWidget(whole);
    addPanels(*window.statusBar());
    window.resize(1100, 720);
    window.show();
    return QApplication::exec();
}
