#include "shell/frmMain.h"

#include "core/registry.h"
#include "shell/frmAccount.h"
#include "shell/status_panels.h"
#include "tests/shell/main_window_test.h"

#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QScreen>
#include <QToolButton>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

void checkEngine(const frmAccount &dialog, const QString &engine)
{
    for (QTreeWidgetItem *node : control<QTreeWidget>(dialog, u"tvwEngine"_s)
                                     .findItems(engine, Qt::MatchExactly | Qt::MatchRecursive))
        node->setCheckState(0, Qt::Checked);
}

class MainWindow : public MainWindowTest
{
protected:
    QString hint() { return control<QLabel>(*window, u"lblHint"_s).text(); }
    bool hintShows() { return control<QLabel>(*window, u"lblHint"_s).isVisible(); }
    QString preference(const QString &name)
    {
        return GetRegistryText(world.app, world.app.RegPreference, name, u"absent"_s);
    }
    QString panel(const QString &name) { return control<QLabel>(*window, name).text(); }

    const MessageBox deleteQuestion{u"Delete Keyword"_s,
                                    u"Are you sure you want to delete selected Account?"_s,
                                    MessageIcon::Question, MessageButtons::YesNo};
    const MessageBox exitQuestion{u"Exit Sondrel"_s, u"Are you sure you want to exit?"_s,
                                  MessageIcon::Question, MessageButtons::YesNo};
};

QString focused()
{
    const QWidget *widget = QApplication::focusWidget();
    return widget ? widget->objectName() : QString();
}

TEST_F(MainWindow, beginsAtTheOfferOfAnEmptyProgram)
{
    whenModal<frmAccount>([](frmAccount &dialog) { dialog.reject(); });
    open();
    EXPECT_EQ(focused(), u"cmdHint"_s);
}

TEST_F(MainWindow, beginsAtTheOfferOfAnEmptyProjectAndGoesOnInTheGrid)
{
    writeProject(u"Shop"_s, {u"Zeta"_s});
    open();
    EXPECT_EQ(focused(), u"cmdGridHint"_s);
    child().AddKeywordColToGrid({u"shoes"_s});
    EXPECT_EQ(focused(), u"grdBidsManage"_s);
}

TEST_F(MainWindow, goesOnByTabAsTheEyeDoes)
{
    writeShop();
    open();
    click(*window, u"cmdArrow"_s);
    tree().setFocus();
    QStringList order;
    for (int stop = 0; stop < 3; ++stop) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        order.append(focused());
    }
    EXPECT_EQ(order.join(u' '), u"cmdArrow lvwURLs grdBidsManage"_s);
}

TEST_F(MainWindow, showsTheFirstProjectAtStart)
{
    writeShop();
    open();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(projects().currentText(), u"Shop"_s);
    ASSERT_EQ(tree().topLevelItemCount(), 2);
    EXPECT_EQ(tree().topLevelItem(0)->text(0), u"Global"_s);
    EXPECT_TRUE(tree().topLevelItem(0)->isExpanded());
    EXPECT_EQ(tree().topLevelItem(1)->child(0)->text(0), u"Gamma"_s);
    EXPECT_EQ(window->CurrentEngine(), u"Zeta"_s);
    ASSERT_NE(window->child(), nullptr);
    EXPECT_EQ(window->windowTitle(), u"Shop - Zeta - Marovia Sondrel V4"_s);
    EXPECT_EQ(grid().model()->rowCount(), 3);
    EXPECT_EQ(panel(u"panelKeywordCount"_s), u"3 keywords"_s);
    EXPECT_EQ(panel(u"lblProjectTitle"_s), u" Project"_s);
    EXPECT_EQ(panel(u"lblURLs"_s), u"Tracking URLs"_s);
}

TEST_F(MainWindow, listsTheTrackedUrls)
{
    writeShop();
    open();
    click(*window, u"cmdArrow"_s);
    EXPECT_EQ(urls().headerItem()->text(0), u"URLS"_s);
    ASSERT_EQ(urls().topLevelItemCount(), 2);
    EXPECT_EQ(urls().topLevelItem(1)->text(0), u"rival.example"_s);
}

TEST_F(MainWindow, foldsTheUrlBoxByItsArrow)
{
    writeShop();
    world.setPreference(u"URLBoxStatus"_s, u"True"_s);
    open();
    EXPECT_TRUE(urls().isVisible());
    click(*window, u"cmdArrow"_s);
    EXPECT_FALSE(urls().isVisible());
    window->close();
    EXPECT_EQ(preference(u"URLBoxStatus"_s), u"False"_s);
}

TEST_F(MainWindow, invitesToMakeAProject)
{
    whenModal<frmAccount>([](frmAccount &dialog) { dialog.reject(); });
    open();
    EXPECT_TRUE(hintShows());
    EXPECT_EQ(window->windowTitle(), u"Marovia Sondrel V4"_s);
    whenModal<frmAccount>([](frmAccount &dialog) { dialog.reject(); });
    click(*window, u"cmdHint"_s);
    EXPECT_EQ(world.read(u"project.dat"_s), "[Accounts]\r\nLast=0\r\n")
        << "cancelled, and the list is written";
}

TEST_F(MainWindow, invitesToChooseAnEngine)
{
    writeProject(u"Bare"_s, {});
    open();
    EXPECT_TRUE(hintShows());
    EXPECT_EQ(tree().topLevelItemCount(), 0);
    EXPECT_EQ(window->child(), nullptr);
    whenModal<frmAccount>([](frmAccount &dialog) { dialog.reject(); });
    click(*window, u"cmdHint"_s);
}

TEST_F(MainWindow, hidesTheGridOfAnotherProjectBehindTheHint)
{
    writeShop();
    writeProject(u"Bare"_s, {});
    open();
    chooseProject(1);
    EXPECT_EQ(window->CurrentAccount()->Name, u"Bare"_s);
    EXPECT_TRUE(hintShows());
    EXPECT_FALSE(enabled(Command::LookupAll));
    chooseProject(0);
    EXPECT_TRUE(grid().isVisible());
    EXPECT_TRUE(enabled(Command::LookupAll));
}

TEST_F(MainWindow, keepsTheEngineWhenTheNextProjectHasIt)
{
    writeShop();
    writeProject(u"Other"_s, {u"Alpha"_s, u"Gamma"_s}, {u"hats"_s});
    open();
    clickNode(u"China"_s, u"Gamma"_s);
    chooseProject(1);
    EXPECT_EQ(window->CurrentEngine(), u"Gamma"_s);
    EXPECT_EQ(child().windowTitle(), u"Other - Gamma"_s);
    EXPECT_EQ(grid().model()->rowCount(), 1);
}

TEST_F(MainWindow, takesTheFirstEngineWhenTheNextProjectLacksIt)
{
    writeShop();
    writeProject(u"Other"_s, {u"Alpha"_s}, {u"hats"_s});
    open();
    chooseProject(1);
    EXPECT_EQ(window->CurrentEngine(), u"Alpha"_s);
    EXPECT_EQ(child().windowTitle(), u"Other - Alpha"_s);
}

TEST_F(MainWindow, showsTheEngineThatIsClicked)
{
    writeShop();
    open();
    clickNode(u"China"_s, u"Gamma"_s);
    EXPECT_EQ(window->CurrentEngine(), u"Gamma"_s);
    EXPECT_EQ(child().EngineName(), u"Gamma"_s);
}

TEST_F(MainWindow, doesNotReloadTheEngineThatIsChosenAlready)
{
    writeShop();
    open();
    const int waits = world.desktop.waits;
    clickNode(u"Global"_s, u"Zeta"_s);
    EXPECT_EQ(world.desktop.waits, waits) << "loading shows the hourglass";
}

TEST_F(MainWindow, hasNoEngineWhenAMarketIsClicked)
{
    writeShop();
    open();
    clickNode(u"China"_s);
    EXPECT_EQ(window->CurrentEngine(), QString());
    EXPECT_FALSE(enabled(Command::EnginePage));
    EXPECT_TRUE(grid().isVisible()) << "the grid stays with what it shows";
    clickNode(u"Global"_s, u"Zeta"_s);
    EXPECT_EQ(window->CurrentEngine(), u"Zeta"_s);
}

TEST_F(MainWindow, addsAProjectAsTheLastOne)
{
    writeShop();
    open();
    whenModal<frmAccount>([](frmAccount &dialog) {
        type(dialog, u"txtAccountName"_s, u"New"_s);
        new QTreeWidgetItem(&control<QTreeWidget>(dialog, u"lvwURLs"_s), {u"new.example"_s});
        checkEngine(dialog, u"Alpha"_s);
        click(dialog, u"cmdOK"_s);
    });
    QTest::keyClick(window.get(), Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(projects().currentText(), u"New"_s);
    EXPECT_EQ(projects().currentIndex(), 1);
    EXPECT_EQ(window->CurrentAccount()->Name, u"New"_s);
    EXPECT_EQ(world.read(u"project.dat"_s), "[Accounts]\r\n1=Shop\r\nLast=2\r\n2=New\r\n");
}

TEST_F(MainWindow, editsTheProjectOfADoubleClickedEngine)
{
    writeShop();
    open();
    bool seen = false;
    whenModal<frmAccount>([&](frmAccount &dialog) {
        seen = dialog.Account() == window->CurrentAccount();
        dialog.reject();
    });
    QTreeWidgetItem *node = tree().topLevelItem(0)->child(0);
    clickNode(node);
    QTest::mouseDClick(tree().viewport(), Qt::LeftButton, {}, tree().visualItemRect(node).center());
    EXPECT_TRUE(seen);
}

TEST_F(MainWindow, editsTheProjectOfADoubleClickOnTheList)
{
    writeShop();
    open();
    bool seen = false;
    QMouseEvent event(QEvent::MouseButtonDblClick, {5, 5}, projects().mapToGlobal(QPointF(5, 5)),
                      Qt::LeftButton, Qt::LeftButton, {});
    QApplication::sendEvent(&projects(), &event);
    whenModal<frmAccount>([&](frmAccount &dialog) {
        seen = true;
        dialog.reject();
    });
    QApplication::processEvents();
    EXPECT_TRUE(seen);
}

TEST_F(MainWindow, showsWhatAnEditHasChanged)
{
    writeShop();
    open();
    whenModal<frmAccount>([](frmAccount &dialog) {
        checkEngine(dialog, u"Alpha"_s);
        delete control<QTreeWidget>(dialog, u"lvwURLs"_s).takeTopLevelItem(1);
        click(dialog, u"cmdOK"_s);
    });
    window->give(Command::EditProject);
    EXPECT_EQ(tree().topLevelItem(0)->childCount(), 2);
    EXPECT_EQ(urls().topLevelItemCount(), 1);
    EXPECT_EQ(window->CurrentEngine(), u"Zeta"_s);
}

TEST_F(MainWindow, asksBeforeItDeletesAProject)
{
    writeShop();
    open();
    world.desktop.answers = {MessageAnswer::No};
    window->give(Command::DeleteProject);
    ASSERT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_EQ(world.desktop.boxes[0], deleteQuestion);
    EXPECT_EQ(projects().count(), 1);
    EXPECT_TRUE(world.has(u"Projects/Shop/Shop.dat"_s));
}

TEST_F(MainWindow, logsADeletionThatCannotBeAskedFor)
{
    writeShop();
    open();
    world.desktop.failing = true;
    window->give(Command::DeleteProject);
    EXPECT_TRUE(world.takeLog().startsWith(u"frmMain_DeleteAccount error: "));
    EXPECT_EQ(projects().count(), 1);
    world.desktop.failing = false;
}

TEST_F(MainWindow, selectsTheFirstProjectAfterADeletion)
{
    writeShop();
    writeProject(u"Other"_s, {u"Alpha"_s}, {u"hats"_s});
    open();
    chooseProject(1);
    window->give(Command::DeleteProject);
    EXPECT_EQ(projects().currentText(), u"Shop"_s);
    EXPECT_EQ(child().AccountName(), u"Shop"_s);
    EXPECT_FALSE(world.has(u"Projects/Other/Other.dat"_s));
    EXPECT_TRUE(world.read(u"project.dat"_s).endsWith("Last=1\r\n"));
}

TEST_F(MainWindow, isEmptyWithoutItsLastProject)
{
    writeShop();
    open();
    window->give(Command::ShowAll);
    window->give(Command::DeleteProject);
    EXPECT_EQ(window->child(), nullptr);
    EXPECT_EQ(window->CurrentAccount(), nullptr);
    EXPECT_EQ(tree().topLevelItemCount(), 0);
    EXPECT_EQ(urls().topLevelItemCount(), 0);
    EXPECT_EQ(window->windowTitle(), u"Marovia Sondrel V4"_s);
    for (const Command command : {Command::DeleteKeywords, Command::ExportKeywords, Command::ShowAll,
                                  Command::LookupAll, Command::HtmlReport, Command::EditProject})
        EXPECT_FALSE(enabled(command)) << static_cast<int>(command);
    EXPECT_TRUE(window->action(Command::ShowOptimized)->isChecked()) << "as the next grid comes up";
    EXPECT_TRUE(world.read(u"project.dat"_s).endsWith("Last=0\r\n"));
    EXPECT_TRUE(hintShows());
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(MainWindow, comesUpEmptyWithoutACatalogueAndKeepsTheProjects)
{
    writeShop();
    world.app.files.remove(world.app.EngineDataFile);
    open();
    ASSERT_FALSE(world.desktop.boxes.empty());
    EXPECT_EQ(world.desktop.boxes.back().icon, MessageIcon::Critical);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(projects().count(), 0);
    whenModal<frmAccount>([](frmAccount &dialog) { dialog.reject(); });
    window->give(Command::NewProject);
    EXPECT_EQ(world.read(u"project.dat"_s), "[Accounts]\r\n1=Shop\r\nLast=1\r\n");
    world.writeEngineData("[Markets]\r\n1=Global\r\n[Global]\r\n1=Zeta\r\n"
                          "[Zeta]\r\nEngineURL=http://zeta.example/find\r\n");
    whenModal<QDialog>([](QDialog &dialog) { dialog.reject(); });
    window->give(Command::UpdateEngineData);
    EXPECT_EQ(projects().count(), 1) << "once, although the list has been read twice";
    EXPECT_TRUE(enabled(Command::LookupAll));
}

TEST_F(MainWindow, staysUntilBothQuestionsOfItsEndAreAnswered)
{
    writeShop();
    open();
    world.desktop.answers = {MessageAnswer::No, MessageAnswer::No};
    int ends = 0;
    QObject::connect(window.get(), &frmMain::closed, window.get(), [&] { ++ends; });
    EXPECT_FALSE(window->close());
    EXPECT_FALSE(window->close());
    EXPECT_EQ(world.desktop.boxes, (std::vector<MessageBox>{exitQuestion, exitQuestion}));
    EXPECT_TRUE(window->isVisible());
    EXPECT_NE(window->child(), nullptr);
    EXPECT_EQ(preference(u"MainFormPos"_s), u"absent"_s);
    QTest::keyClick(window.get(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(ends, 1);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(window->child(), nullptr);
    EXPECT_EQ(world.app.EngineCatalogue, nullptr);
}

TEST_F(MainWindow, comesBackWhereItStood)
{
    writeShop();
    open();
    window->setGeometry(20, 30, 700, 500);
    window->close();
    EXPECT_EQ(preference(u"MainFormPos"_s), u"20,30,700,500"_s);
    open();
    EXPECT_EQ(window->geometry(), QRect(20, 30, 700, 500));
}

TEST_F(MainWindow, keepsItsStoredPlaceWhenItEndsMinimised)
{
    writeShop();
    world.setPreference(u"MainFormPos"_s, u"1,2,640,480"_s);
    open();
    window->setGeometry(20, 30, 700, 500);
    window->showMinimized();
    window->close();
    EXPECT_EQ(preference(u"MainFormPos"_s), u"1,2,640,480"_s);
    EXPECT_EQ(preference(u"URLBoxStatus"_s), u"absent"_s);
}

TEST_F(MainWindow, comesUpNoLargerThanTheScreen)
{
    writeShop();
    open();
    const QSize room = window->screen()->availableSize();
    EXPECT_LE(window->width(), room.width());
    EXPECT_LE(window->height(), room.height());
    constexpr QSize SmallScreen(768, 432); // a common one at 250 %
    EXPECT_EQ(window->minimumSizeHint().boundedTo(SmallScreen), window->minimumSizeHint());
}

TEST_F(MainWindow, staysOnAScreenThatIsThere)
{
    writeShop();
    world.setPreference(u"MainFormPos"_s, u"90000,90000,640,480"_s);
    open();
    EXPECT_TRUE(window->screen()->geometry().intersects(window->geometry()));
}

TEST_F(MainWindow, tellsOnceItHasStayedMinimised)
{
    writeShop();
    open();
    world.clock.advance(1000);
    int times = 0;
    QObject::connect(window.get(), &frmMain::minimised, window.get(), [&] { ++times; });
    window->showMinimized();
    QApplication::processEvents();
    EXPECT_EQ(times, 0);
    world.clock.advance(200);
    EXPECT_EQ(times, 1);
    world.clock.advance(5000);
    EXPECT_EQ(times, 1);
}

TEST_F(MainWindow, doesNotMindBeingRestoredAtOnce)
{
    writeShop();
    open();
    world.clock.advance(1000);
    int times = 0;
    QObject::connect(window.get(), &frmMain::minimised, window.get(), [&] { ++times; });
    window->showMinimized();
    window->showNormal();
    world.clock.advance(1000);
    EXPECT_EQ(times, 0);
}

TEST_F(MainWindow, tellsOfTheScheduler)
{
    writeShop();
    world.setPreference(u"SchedulerEnable"_s, u"False"_s);
    open();
    EXPECT_FALSE(panel(u"panelAutoRun"_s).isEmpty());
}

} // namespace
} // namespace sondrel
