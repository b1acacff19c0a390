#include "shell/account_urls.h"
#include "shell/all_engines.h"
#include "shell/center_form.h"
#include "shell/text_ex.h"
#include "shell/tree_nodes.h"
#include "shell/url_list_view.h"
#include "tests/shell/dialog_test.h"
#include "tests/support/picture.h"

#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTextEdit>
#include <QTreeWidget>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

TEST(CenterForm, centresADialogOnItsScreen)
{
    QDialog dialog;
    dialog.resize(300, 200);
    CenterForm(dialog);
    const QRect screen = dialog.screen()->geometry();
    EXPECT_EQ(dialog.pos(), QPoint(screen.left() + (screen.width() - 300) / 2,
                                   screen.top() + (screen.height() * 9 / 10 - 200) / 2));
}

TEST(CenterForm, keepsTheTitleBarOfALargeDialogInReach)
{
    QDialog dialog;
    dialog.resize(dialog.screen()->size() * 2);
    CenterForm(dialog);
    EXPECT_EQ(dialog.pos(), dialog.screen()->geometry().topLeft());
}

TEST(AddRootNode, addsATopLevelNodeWithItsKey)
{
    QTreeWidget tree;
    const QTreeWidgetItem *node = AddRootNode(u"Global"_s, tree);
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->text(0), u"Global"_s);
    EXPECT_EQ(nodeKey(node), u"RootGlobal"_s);
    EXPECT_EQ(tree.topLevelItem(0), node);
}

TEST(AddRootNode, givesNothingForAKeyThatIsThere)
{
    QTreeWidget tree;
    AddRootNode(u"Global"_s, tree);
    EXPECT_EQ(AddRootNode(u"GLOBAL"_s, tree), nullptr);
    EXPECT_EQ(tree.topLevelItemCount(), 1);
}

TEST(BoxDelegate, showsItsBoxesOnADarkGround)
{
    UrlListView list;
    QPalette dark = list.palette();
    dark.setColor(QPalette::Base, QColor(27, 30, 32));
    dark.setColor(QPalette::AlternateBase, QColor(27, 30, 32));
    dark.setColor(QPalette::Window, QColor(42, 46, 50));
    dark.setColor(QPalette::Text, Qt::white);
    list.setPalette(dark);
    auto *row = new QTreeWidgetItem(&list, {QString()});
    row->setCheckState(0, Qt::Unchecked);
    list.show();
    const QImage picture = list.viewport()->grab(list.visualItemRect(row)).toImage();
    EXPECT_GT(lightestOf(picture), 90);
}

TEST(TextEx, showsWhatTheCodePageHolds)
{
    QLineEdit control;
    TextEx(control, u"中文é"_s, 936);
    EXPECT_EQ(control.text(), u"中文é"_s);
    TextEx(control, u"中é"_s, 1252);
    EXPECT_EQ(control.text(), u"?é"_s);
}

TEST(TextEx, setsEveryKindOfTextControl)
{
    QLabel label;
    QPlainTextEdit plain;
    QTextEdit rich;
    QPushButton button;
    for (QWidget *control : std::initializer_list<QWidget *>{&label, &plain, &rich, &button})
        TextEx(*control, u"<b>中</b>"_s, 936);
    EXPECT_EQ(label.text(), u"<b>中</b>"_s);
    EXPECT_EQ(plain.toPlainText(), u"<b>中</b>"_s);
    EXPECT_EQ(rich.toPlainText(), u"<b>中</b>"_s);
    EXPECT_EQ(button.text(), u"<b>中</b>"_s);
}

TEST(TextEx, stopsAtANullAndKnowsNoTextOfAnUnknownPage)
{
    QLineEdit control;
    TextEx(control, u"ab"_s + QChar(0) + u"c"_s, 1252);
    EXPECT_EQ(control.text(), u"ab"_s);
    TextEx(control, u"ab"_s, 77777);
    EXPECT_EQ(control.text(), QString());
}

class AccountUrls : public testing::Test
{
protected:
    World world;
    UrlListView list;
};

TEST_F(AccountUrls, fillTheListAnew)
{
    Collection<clsURL> urls;
    urls.Add({u"a.example"_s, false}, u"a.example"_s);
    urls.Add({u"b.example"_s, true}, u"b.example"_s);
    list.addTopLevelItem(new QTreeWidgetItem({u"old"_s}));
    PopulateAccountURLs(world.app, &urls, list);
    ASSERT_EQ(list.topLevelItemCount(), 2);
    EXPECT_EQ(list.topLevelItem(0)->text(0), u"a.example"_s);
    EXPECT_EQ(nodeKey(list.topLevelItem(1)), u"b.example"_s);
    EXPECT_FALSE(isCompetitor(*list.topLevelItem(0)));
    EXPECT_TRUE(isCompetitor(*list.topLevelItem(1)));
}

TEST_F(AccountUrls, clearTheListWhenThereAreNone)
{
    list.addTopLevelItem(new QTreeWidgetItem({u"old"_s}));
    PopulateAccountURLs(world.app, nullptr, list);
    EXPECT_EQ(list.topLevelItemCount(), 0);
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(AccountUrls, logARowThatIsThereAlready)
{
    Collection<clsURL> urls;
    urls.Add({u"a.example"_s, false});
    urls.Add({u"A.example"_s, false});
    urls.Add({u"b.example"_s, false});
    PopulateAccountURLs(world.app, &urls, list);
    EXPECT_EQ(world.takeLog(), u"PopulateAccountURLs_Error: The list has this URL already: A.example"_s);
    EXPECT_EQ(list.topLevelItemCount(), 1);
}

class AllEngines : public testing::Test
{
protected:
    World world;
    QListWidget list;
};

TEST_F(AllEngines, areListedUpToTheFirstGap)
{
    world.writeEngineData("[Engines]\r\n1=Alpha\r\n2=Beta\r\n4=Delta\r\n");
    list.addItem(u"old"_s);
    PopulateAllEngine(world.app, list, ListBoxes::None);
    ASSERT_EQ(list.count(), 2);
    EXPECT_EQ(list.item(0)->text(), u"Alpha"_s);
    EXPECT_EQ(list.item(1)->data(Qt::UserRole).toString(), u"KeyBeta"_s);
    EXPECT_FALSE(list.item(0)->data(Qt::CheckStateRole).isValid());
}

TEST_F(AllEngines, areCheckedUnlessSwitchedOff)
{
    world.writeEngineData("[Engines]\r\n1=Alpha\r\n2=Beta\r\n");
    world.settings.createKey(world.app.RegEngine);
    world.settings.setValue(world.app.RegEngine, u"Alpha"_s, u"0"_s);
    PopulateAllEngine(world.app, list, ListBoxes::CheckBoxes);
    EXPECT_EQ(list.item(0)->checkState(), Qt::Unchecked);
    EXPECT_EQ(list.item(1)->checkState(), Qt::Checked);
}

TEST_F(AllEngines, areMissedWithAMessage)
{
    list.addItem(u"old"_s);
    PopulateAllEngine(world.app, list, ListBoxes::None);
    ASSERT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_EQ(world.desktop.boxes[0],
              (MessageBox{
                  u"Error"_s,
                  u"Engine data file is corrupted or missing, you need to download the new engine data file "
                  "from our web site by click on the 'File/Update Engine Data' menu item from the main menu "
                  "bar and following the instruction on the screen."_s,
                  MessageIcon::Information, MessageButtons::Ok}));
    EXPECT_EQ(list.count(), 1);
}

} // namespace
} // namespace sondrel
