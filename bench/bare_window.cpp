// The yardstick of the start: a window of the toolkit with the widgets of the main window, and nothing in
// them.
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QSplitter>
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
    constexpr std::array Items{7, 6, 2, 2, 4, 5, 4};
    for (const int count : Items) {
        QMenu *menu = window.menuBar()->addMenu(QStringLiteral("&Menu"));
        for (int i = 0; i < count; ++i)
            menu->addAction(QStringLiteral("Command"));
    }
}

void addToolBar(QMainWindow &window)
{
    constexpr std::array Menus{3, 0, 0, 2, 3, 0, 3, 0, 0, 0}; // items behind each button
    QToolBar *bar = window.addToolBar(QStringLiteral("Tools"));
    bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    for (const int items : Menus) {
        auto *button = new QToolButton;
        button->setText(QStringLiteral("Button"));
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
    layout->addWidget(new QLabel(QStringLiteral("URLs")));
    layout->addWidget(new QTreeWidget, 1);
    return pane;
}

QWidget *table(int columns)
{
    auto *view = new QTableView;
    view->setModel(new QStandardItemModel(0, columns, view));
    view->verticalHeader()->hide();
    return view;
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
    auto *whole = new QSplitter;
    whole->addWidget(leftPane());
    whole->addWidget(stack);
    window.setCentralWidget(whole);
    for (int i = 0; i < 4; ++i)
        window.statusBar()->addPermanentWidget(new QLabel);
    window.statusBar()->addPermanentWidget(new QProgressBar);
    window.resize(1100, 720);
    window.show();
    return QApplication::exec();
}
